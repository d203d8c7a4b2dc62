#include "status/interrupts.h"

#include "driver/patience.h"

#include <array>
#include <cstdio>

namespace trevik
{
namespace
{

void Trace(const char *format, std::uintptr_t value)
{
    std::array<char, 64> line{};
    // NOLINTNEXTLINE(clang-diagnostic-format-nonliteral): the formats stand below
    std::snprintf(line.data(), line.size(), format, static_cast<unsigned long>(value));
    os::OutputDebugStringA(line.data());
}

// The card number as the first byte, then the name: card 0 has an event without a name.
os::HANDLE OpenIrqEvent(std::uint8_t card_number)
{
    std::array<char, 9> name = {" TrevikA"};
    name[0] = static_cast<char>(card_number);
    const os::HANDLE event = os::OpenEventA(os::EventAllAccess, 1, name.data());
    return event != nullptr ? event : os::CreateEventA(nullptr, 0, 0, name.data());
}

bool ToldToEnd(const CallbackThread &thread)
{
    return thread.number < thread.card->Link.ended_below;
}

// Tells all threads of the links before this one to end.
void EndBelow(CallbackLink &link, std::uint32_t number)
{
    std::uint32_t before = link.ended_below;
    while (before < number && !link.ended_below.compare_exchange_weak(before, number)) {
    }
}

// A signal after the card was disabled ends all of its threads, whatever is enabled then. A link that comes meanwhile
// is not among them: it is counted only when the card is no longer disabled.
void HeedDisabled(CardState &card)
{
    const std::uint32_t next = card.Link.next;
    if (card.IrqIdle == 1)
        EndBelow(card.Link, next);
}

// Waits for the driver. False: the thread has to end, also when its wait fails for good. Whoever wakes by a signal
// that is not for a callback passes it on: older threads may wait on the same event.
bool NextInterrupt(const CallbackThread &thread)
{
    const CallbackLink &link = thread.card->Link;
    while (!ToldToEnd(thread)) {
        const os::HANDLE event = link.LinkEvent;
        const os::DWORD wait = os::WaitForSingleObject(event, os::Infinite);
        if (wait != os::WaitObject0 && wait != os::WaitTimeout)
            return false;
        const bool replaced = event != link.LinkEvent;
        if (!replaced)
            HeedDisabled(*thread.card);
        if (!replaced && !ToldToEnd(thread))
            return true;
        os::SetEvent(event);
    }
    return false;
}

// Unless an older thread may wait on it: then it is left to the card's next link.
void CloseOwnEvent(CallbackThread &thread)
{
    CallbackLink &link = thread.card->Link;
    os::HANDLE event = thread.event;
    if (event == nullptr || link.oldest != thread.number || !link.LinkEvent.compare_exchange_strong(event, nullptr))
        return;
    thread.event = nullptr;
    os::CloseHandle(event);
}

os::DWORD TREVIK_CALL CallbackLoop(void *parameter)
{
    CallbackThread &thread = *static_cast<CallbackThread *>(parameter);
    const CallbackLink &link = thread.card->Link;
    Trace("current thread id = %lx", os::GetCurrentThreadId());
    while (NextInterrupt(thread)) {
        os::OutputDebugStringA("thread dddddddddddddd-------------");
        const UserCallback callback = link.Callback;
        callback(link.CardNumber);
    }
    os::OutputDebugStringA("thread close-------------");
    CloseOwnEvent(thread);
    thread.left = true;
    return 0;
}

bool Ended(const CallbackThread &thread)
{
    return thread.IrqThread == nullptr || os::WaitForSingleObject(thread.IrqThread, 0) != os::WaitTimeout;
}

// A thread that was told to end gets a second for it, and no longer at idle priority: others may keep the processor
// busy. While a Windows library is unloaded no thread can end; there it is enough that it runs no code of the library
// any more, which a thread that has said so leaves within some instructions.
bool EndsSoon(const CallbackThread &thread)
{
    constexpr int long_past_ms = 20;
    int left_ms = 0;
    os::SetThreadPriority(thread.IrqThread, os::ThreadPriorityNormal);
    return HappensSoon([&] {
        left_ms += thread.left ? 1 : 0;
        return Ended(thread) || left_ms > long_past_ms;
    });
}

void CloseIfOpen(os::HANDLE handle)
{
    if (handle != nullptr)
        os::CloseHandle(handle);
}

// Closes what ended threads have left, the oldest first: a thread waits only on its own event or a newer one.
void CloseEnded(CallbackLink &link, bool (&ended)(const CallbackThread &))
{
    for (; link.oldest != link.next; link.oldest = link.oldest + 1) {
        CallbackThread &thread = link.thread(link.oldest);
        if (!ended(thread))
            return;
        os::HANDLE event = thread.event;
        if (event != nullptr)
            link.LinkEvent.compare_exchange_strong(event, nullptr);
        CloseIfOpen(thread.event);
        CloseIfOpen(thread.IrqThread);
    }
}

// Suspended until its handle is stored and its priority set.
void StartThread(CallbackThread &thread)
{
    thread.IrqThread = os::CreateThread(nullptr, 0, CallbackLoop, &thread, os::CreateSuspended, nullptr);
    os::SetThreadPriority(thread.IrqThread, os::ThreadPriorityIdle);
    os::ResumeThread(thread.IrqThread);
}

// The threads of earlier links go on with the new event, or end if they have been told to.
void ReplaceLinkEvent(CallbackLink &link, os::HANDLE event)
{
    const os::HANDLE former = link.LinkEvent.exchange(event);
    if (former != nullptr)
        os::SetEvent(former);
}

// Room for one more link. Threads that were disabled and not signalled since are ended for it.
bool MakeRoom(const CardState &state, CallbackLink &link)
{
    CloseEnded(link, Ended);
    if (state.IrqIdle == 1 && link.oldest != link.next) {
        EndBelow(link, link.next);
        ReplaceLinkEvent(link, nullptr);
    }
    if (link.full() && ToldToEnd(link.thread(link.oldest)))
        CloseEnded(link, EndsSoon);
    return !link.full();
}

} // namespace

Result IRQEnable(const Card &card)
{
    std::uint32_t event = 0;
    return IRQEnableEvent(card, &event);
}

Result IRQEnableEvent(const Card &card, std::uint32_t *event)
{
    if (event == nullptr)
        return Result::Param;
    CardState &state = card.state();
    state.IrqEvent = OpenIrqEvent(card.number());
    IrqEnableRequest(state.DriverHandle.get(), true);
    state.IrqIdle = std::uint8_t{0};
    *event = HandleNumber(state.IrqEvent);
    return Result::Ok;
}

Result IRQDisable(const Card &card)
{
    card.state().IrqIdle = std::uint8_t{1};
    return Result::Ok;
}

Result IRQProcessLink(const Card &card, UserCallback callback)
{
    if (callback == nullptr)
        return Result::Param;
    CardState &state = card.state();
    CallbackLink &link = state.Link;
    if (!MakeRoom(state, link))
        return Result::NoResources;
    state.IrqIdle = std::uint8_t{0};
    const os::HANDLE event = os::CreateEventA(nullptr, 0, 0, nullptr);
    IrqLinkRequest(state.DriverHandle.get(), os::GetCurrentProcessId(), event);
    link.CardNumber = card.number();
    link.Callback = callback;
    ReplaceLinkEvent(link, event);
    Trace("callbackAddr1 = %lx", reinterpret_cast<std::uintptr_t>(callback));
    CallbackThread &thread = link.thread(link.next);
    thread.card = &state;
    thread.number = link.next;
    thread.event = event;
    thread.left = false;
    link.next = link.next + 1;
    StartThread(thread);
    return Result::Ok;
}

void EndCallbacks(const Card &card)
{
    CallbackLink &link = card.state().Link;
    IRQDisable(card);
    EndBelow(link, link.next);
    ReplaceLinkEvent(link, nullptr);
    CloseEnded(link, Ended);
}

void JoinCallbacks(const Card &card)
{
    EndCallbacks(card);
    CloseEnded(card.state().Link, EndsSoon);
}

} // namespace trevik
