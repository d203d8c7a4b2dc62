#include "status/interrupts.h"

#include <array>
#include <cstdio>

namespace trevik
{
namespace
{

// For a callback thread that was told to end.
constexpr os::DWORD most_wait_ms = 1000;

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
    const CardState &card = *thread.card;
    return card.IrqIdle == 1 || thread.number < card.Link.ended_below;
}

// Waits for the driver. False: the thread has to end, also when its wait fails for good. Whoever wakes by a signal
// that is not for a callback passes it on: older threads may wait on the same event.
bool NextInterrupt(const CallbackThread &thread)
{
    const CallbackLink &link = thread.card->Link;
    for (;;) {
        const os::HANDLE event = link.LinkEvent;
        const os::DWORD wait = os::WaitForSingleObject(event, os::Infinite);
        if (wait != os::WaitObject0 && wait != os::WaitTimeout)
            return false;
        const bool end = ToldToEnd(thread);
        const bool replaced = event != link.LinkEvent;
        if (end || replaced)
            os::SetEvent(event);
        if (end)
            return false;
        if (!replaced)
            return true;
    }
}

os::DWORD TREVIK_CALL CallbackLoop(void *parameter)
{
    const CallbackThread &thread = *static_cast<const CallbackThread *>(parameter);
    const CallbackLink &link = thread.card->Link;
    Trace("current thread id = %lx", os::GetCurrentThreadId());
    while (NextInterrupt(thread)) {
        os::OutputDebugStringA("thread dddddddddddddd-------------");
        const UserCallback callback = link.Callback;
        callback(link.CardNumber);
    }
    os::OutputDebugStringA("thread close-------------");
    return 0;
}

bool Ended(const CallbackThread &thread, os::DWORD timeout_ms)
{
    return thread.IrqThread == nullptr || os::WaitForSingleObject(thread.IrqThread, timeout_ms) != os::WaitTimeout;
}

void CloseIfOpen(os::HANDLE handle)
{
    if (handle != nullptr)
        os::CloseHandle(handle);
}

// Closes what ended threads have left, the oldest first: a thread waits only on its own event or a newer one.
void CloseEnded(CallbackLink &link, os::DWORD timeout_ms)
{
    for (; link.oldest != link.next; link.oldest = link.oldest + 1) {
        CallbackThread &thread = link.thread(link.oldest);
        if (!Ended(thread, timeout_ms))
            return;
        if (link.LinkEvent == thread.event)
            link.LinkEvent = nullptr;
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

// The threads of earlier links go on with the new event, or end if they had been told to.
void ReplaceLinkEvent(CallbackLink &link, os::HANDLE event)
{
    const os::HANDLE former = link.LinkEvent;
    link.LinkEvent = event;
    if (former != nullptr)
        os::SetEvent(former);
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
    CloseEnded(link, link.full() ? most_wait_ms : 0); // threads that were disabled may be slow to end
    if (link.full())
        return Result::NoResources;
    if (state.IrqIdle == 1)
        link.ended_below = link.next;
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
    link.next = link.next + 1;
    StartThread(thread);
    return Result::Ok;
}

void EndCallbacks(const Card &card)
{
    CallbackLink &link = card.state().Link;
    IRQDisable(card);
    if (link.LinkEvent != nullptr)
        os::SetEvent(link.LinkEvent);
    CloseEnded(link, 0);
}

void JoinCallbacks(const Card &card)
{
    EndCallbacks(card);
    CloseEnded(card.state().Link, most_wait_ms);
}

} // namespace trevik
