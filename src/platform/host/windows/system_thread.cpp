#include "platform/host/system_thread.h"

#include "platform/host/immortal.h"
#include "platform/host/windows/unloading.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

#include <windows.h>

namespace trevik::host
{
namespace
{

struct Start {
    SystemThread::Main main;
    void *parameter;
};

struct RunningThreads {
    std::mutex mutex;
    std::vector<DWORD> ids;
};

RunningThreads &Running()
{
    static Immortal<RunningThreads> running;
    return running.get();
}

std::atomic<bool> unloading{false};

// A thread that ends in the usual way runs through the loader, which waits for the end of an unloading; one that ends
// itself does not.
void LeaveLoaderOut()
{
    if (unloading)
        TerminateThread(GetCurrentThread(), 0);
}

void NoteEnd()
{
    RunningThreads &running = Running();
    const std::lock_guard lock(running.mutex);
    std::erase(running.ids, GetCurrentThreadId());
}

DWORD WINAPI Begin(void *parameter)
{
    const Start start = *static_cast<Start *>(parameter);
    delete static_cast<Start *>(parameter);
    start.main(start.parameter);
    NoteEnd();
    LeaveLoaderOut();
    return 0;
}

HANDLE HandleOf(std::uintptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

// A thread that has not come to its end after this time is ended by force, but only when the library is unloaded.
constexpr DWORD patience_ms = 1000;

void WaitForEnd(HANDLE thread)
{
    if (unloading && WaitForSingleObject(thread, patience_ms) == WAIT_TIMEOUT)
        TerminateThread(thread, 0);
    WaitForSingleObject(thread, INFINITE);
}

} // namespace

bool SystemThread::start(Main main, void *parameter)
{
    auto *start = new Start{main, parameter};
    DWORD id = 0;
    HANDLE thread = CreateThread(nullptr, 0, Begin, start, CREATE_SUSPENDED, &id);
    if (thread == nullptr) {
        delete start;
        return false;
    }
    {
        RunningThreads &running = Running();
        const std::lock_guard lock(running.mutex);
        running.ids.push_back(id);
    }
    handle_ = reinterpret_cast<std::uintptr_t>(thread);
    ResumeThread(thread);
    return true;
}

void SystemThread::join()
{
    if (handle_ != 0 && GetThreadId(HandleOf(handle_)) != GetCurrentThreadId())
        WaitForEnd(HandleOf(handle_));
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
    NoteEnd();
    LeaveLoaderOut();
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

void EndRemainingThreads()
{
    RunningThreads &running = Running();
    const std::lock_guard lock(running.mutex);
    for (const DWORD id : running.ids) {
        HANDLE thread =
            id != GetCurrentThreadId() ? OpenThread(THREAD_TERMINATE | SYNCHRONIZE, FALSE, id) : nullptr;
        if (thread == nullptr)
            continue;
        TerminateThread(thread, 0);
        WaitForSingleObject(thread, INFINITE);
        CloseHandle(thread);
    }
}

} // namespace trevik::host
