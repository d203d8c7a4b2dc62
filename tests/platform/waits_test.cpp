#include "platform/host/handles.h"
#include "platform/os.h"

#include <doctest/doctest.h>

#include <atomic>
#include <thread>

using namespace trevik;

namespace
{

std::uint32_t Low32(os::HANDLE handle)
{
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(handle));
}

bool Signalled(os::HANDLE handle)
{
    return os::WaitForSingleObject(handle, 0) == os::WaitObject0;
}

struct ThreadJob {
    os::HANDLE go = os::CreateEventA(nullptr, 0, 0, nullptr);
    os::HANDLE done = os::CreateEventA(nullptr, 0, 0, nullptr);
    std::atomic<os::DWORD> id{0};
    std::atomic<bool> past_exit{false};
};

os::DWORD TREVIK_CALL WaitAndExit(void *parameter)
{
    ThreadJob &job = *static_cast<ThreadJob *>(parameter);
    job.id = os::GetCurrentThreadId();
    os::WaitForSingleObject(job.go, os::Infinite);
    os::SetEvent(job.done);
    os::ExitThread(3);
    job.past_exit = true;
    return 0;
}

} // namespace

TEST_SUITE("host waits")
{
    TEST_CASE("reset and initial state of events")
    {
        for (const bool manual_reset : {false, true}) {
            for (const bool initial : {false, true}) {
                CAPTURE(manual_reset);
                CAPTURE(initial);
                os::HANDLE event = os::CreateEventA(nullptr, manual_reset, initial, nullptr);
                CHECK(Signalled(event) == initial);
                CHECK(TrevikHost_event_signal(Low32(event)) == 0);
                CHECK(TrevikHost_event_signal(Low32(event)) == 0); // signals do not add up
                CHECK(Signalled(event));
                CHECK(Signalled(event) == manual_reset);
                os::CloseHandle(event);
                CHECK(TrevikHost_event_signal(Low32(event)) == os::ErrorInvalidHandle);
                CHECK(os::WaitForSingleObject(event, 0) == os::WaitFailed);
            }
        }
    }

    TEST_CASE("named events are shared, and gone with their last handle")
    {
        CHECK(os::OpenEventA(os::EventAllAccess, 1, "\x01\xFE*") == nullptr);
        CHECK(os::GetLastError() == os::ErrorFileNotFound);
        os::HANDLE made = os::CreateEventA(nullptr, 0, 0, "\x01\xFE*");
        os::HANDLE opened = os::OpenEventA(os::EventAllAccess, 1, "\x01\xFE*");
        os::HANDLE again = os::CreateEventA(nullptr, 0, 0, "\x01\xFE*");
        CHECK(os::GetLastError() == os::ErrorAlreadyExists);
        os::HANDLE unnamed = os::CreateEventA(nullptr, 0, 0, "");
        CHECK(os::OpenEventA(os::EventAllAccess, 1, "") == nullptr);
        os::CloseHandle(made);
        os::SetEvent(opened);
        CHECK_FALSE(Signalled(unnamed));
        CHECK(Signalled(again));
        for (os::HANDLE handle : {opened, again, unnamed})
            CHECK(os::CloseHandle(handle) == 1);
        CHECK(os::OpenEventA(os::EventAllAccess, 1, "\x01\xFE*") == nullptr);
    }

    TEST_CASE("a suspended thread runs when it is resumed, and is signalled at its end")
    {
        ThreadJob job;
        os::DWORD id = 0;
        os::HANDLE thread = os::CreateThread(nullptr, 0, WaitAndExit, &job, os::CreateSuspended, &id);
        CHECK(os::SetThreadPriority(thread, os::ThreadPriorityIdle) == 1);
        CHECK(os::WaitForSingleObject(thread, 5) == os::WaitTimeout);
        CHECK(job.id == 0);
        CHECK(os::ResumeThread(thread) == 1);
        CHECK(os::ResumeThread(thread) == 0);
        os::SetEvent(job.go);
        CHECK(os::WaitForSingleObject(thread, os::Infinite) == os::WaitObject0);
        CHECK(os::WaitForSingleObject(thread, 0) == os::WaitObject0);
        CHECK((job.id == id && id != os::GetCurrentThreadId()));
        CHECK_FALSE(job.past_exit);
        CHECK(Signalled(job.done));
        CHECK(os::CloseHandle(thread) == 1);
        os::CloseHandle(job.done);
        os::CloseHandle(job.go);
    }

    TEST_CASE("under the manual clock a timeout counts in manual time")
    {
        TrevikHost_clock_manual(1);
        os::HANDLE event = os::CreateEventA(nullptr, 0, 0, nullptr);
        std::atomic<os::DWORD> result{99};
        std::thread waiter([&] { result = os::WaitForSingleObject(event, 60'000); });
        while (result == 99)
            TrevikHost_advance(0.25); // the timeout begins when the waiter gets there
        waiter.join();
        CHECK(result == os::WaitTimeout);
        os::SetEvent(event);
        CHECK(os::WaitForSingleObject(event, 1000) == os::WaitObject0);
        CHECK(os::WaitForSingleObject(event, 0) == os::WaitTimeout);
        TrevikHost_clock_manual(0);
        os::CloseHandle(event);
    }
}
