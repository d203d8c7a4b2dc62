#include "platform/host/system_thread.h"

#include "platform/host/windows/unloading.h"

#include <algorithm>
#include <array>
#include <atomic>

#include <windows.h>

namespace trevik::host
{
namespace
{

// The threads of this library: 0, the id of a thread that was created, or with `begun` of one that runs the library's
// code. Ids are multiples of 4.
using Place = std::atomic<DWORD>;
constexpr DWORD begun = 1;
std::array<Place, 1024> places{};

std::atomic<bool> unloading{false};

struct Start {
    SystemThread::Main main;
    void *parameter;
    Place *place;
};

Place *TakePlace(DWORD id)
{
    for (Place &place : places)
        if (DWORD free = 0; place.compare_exchange_strong(free, id))
            return &place;
    return nullptr;
}

bool HasPlace(DWORD id)
{
    return std::any_of(places.begin(), places.end(), [id](const Place &place) { return (place & ~begun) == id; });
}

DWORD WINAPI Begin(void *parameter)
{
    const Start start = *static_cast<Start *>(parameter);
    delete static_cast<Start *>(parameter);
    start.place->fetch_or(begun);
    start.main(start.parameter);
    start.place->store(0); // the last step: nothing follows but the way out
    return 0;
}

HANDLE HandleOf(std::uintptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle); // NOLINT(performance-no-int-to-ptr)
}

const void *ModuleOf(const void *code)
{
    MEMORY_BASIC_INFORMATION found{};
    VirtualQuery(code, &found, sizeof found);
    return found.AllocationBase;
}

// True while the thread is at an instruction of this library.
bool RunsOwnCode(HANDLE thread)
{
    CONTEXT context{};
    context.ContextFlags = CONTEXT_CONTROL;
    if (SuspendThread(thread) == static_cast<DWORD>(-1))
        return false; // it has ended
    const bool known = GetThreadContext(thread, &context) != 0;
    ResumeThread(thread);
    const auto *at = reinterpret_cast<const void *>(context.Eip); // NOLINT(performance-no-int-to-ptr)
    return known && ModuleOf(at) == ModuleOf(reinterpret_cast<const void *>(&Begin));
}

// The loader lets the thread end only later. A thread that does not come back in time is left to StopRemainingThreads.
void WaitUntilLeft(HANDLE thread)
{
    constexpr ULONGLONG patience_ms = 1000;
    const ULONGLONG end_ms = GetTickCount64() + patience_ms;
    const DWORD id = GetThreadId(thread);
    while ((HasPlace(id) || RunsOwnCode(thread)) && GetTickCount64() < end_ms)
        Sleep(1);
}

// Between its creation and its first instruction a thread cannot be told to end: the time that this takes is waited
// for. Called while the loader is busy, by a DLL that is being loaded, it takes longer.
void WaitUntilBegun(const Place &place, DWORD id)
{
    constexpr ULONGLONG patience_ms = 100;
    const ULONGLONG end_ms = GetTickCount64() + patience_ms;
    while (place == id && GetTickCount64() < end_ms)
        Sleep(0);
}

void StopThread(DWORD id, bool has_begun)
{
    HANDLE thread = OpenThread(THREAD_TERMINATE | THREAD_SUSPEND_RESUME, FALSE, id);
    if (thread == nullptr)
        return;
    if (has_begun)
        SuspendThread(thread); // not ended by force: the loader would go on counting on it
    else
        TerminateThread(thread, 0); // the loader does not know it yet
    CloseHandle(thread);
}

} // namespace

bool SystemThread::start(Main main, void *parameter)
{
    DWORD id = 0;
    auto *start = new Start{main, parameter, nullptr};
    HANDLE thread = CreateThread(nullptr, 0, Begin, start, CREATE_SUSPENDED, &id);
    start->place = thread != nullptr ? TakePlace(id) : nullptr;
    if (start->place == nullptr) {
        if (thread != nullptr)
            TerminateThread(thread, 0);
        delete start;
        return false;
    }
    const Place &place = *start->place;
    handle_ = reinterpret_cast<std::uintptr_t>(thread);
    ResumeThread(thread);
    WaitUntilBegun(place, id);
    return true;
}

void SystemThread::join()
{
    HANDLE thread = HandleOf(handle_);
    if (handle_ != 0 && GetThreadId(thread) != GetCurrentThreadId()) {
        if (unloading)
            WaitUntilLeft(thread);
        else
            WaitForSingleObject(thread, INFINITE);
    }
    detach();
}

void SystemThread::detach()
{
    if (handle_ != 0)
        CloseHandle(HandleOf(handle_));
    handle_ = 0;
}

void SystemThread::exit()
{
    for (Place &place : places)
        if ((place & ~begun) == GetCurrentThreadId())
            place = 0;
    ExitThread(0);
}

int OwnSystemId()
{
    return static_cast<int>(GetCurrentThreadId());
}

// Nothing: Windows runs no thread of a low priority while another one spins on what it holds.
void GiveWay(int) {}

void BeginUnloading()
{
    unloading = true;
}

void StopRemainingThreads()
{
    for (const Place &place : places)
        if (const DWORD thread = place; thread != 0)
            StopThread(thread & ~begun, (thread & begun) != 0);
}

} // namespace trevik::host
