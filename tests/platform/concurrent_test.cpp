// Run under the thread sanitizer: what several threads may do at once.
#include "platform/host/handles.h"
#include "platform/os.h"

#include <doctest/doctest.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

using namespace trevik;

namespace
{

constexpr int thread_count = 4;
constexpr int rounds = 200;

// A driver whose devices are numbered by their path; a request answers with the device's number.
std::atomic<std::uint32_t> sum_of_open{0};

uint32_t OpenDevice(void *, const char *path, uint32_t *device)
{
    *device = static_cast<unsigned char>(path[0]);
    sum_of_open += *device;
    return 0;
}
uint32_t ControlDevice(void *, uint32_t device, uint32_t, const void *, uint32_t, void *out, uint32_t,
                       uint32_t *returned)
{
    *static_cast<uint32_t *>(out) = device;
    *returned = sizeof device;
    return 0;
}
void CloseDevice(void *, uint32_t device)
{
    sum_of_open -= device;
}

template <class Work>
void InThreads(Work work)
{
    std::vector<std::thread> threads;
    threads.reserve(thread_count);
    for (int i = 0; i < thread_count; ++i)
        threads.emplace_back(work, i);
    for (std::thread &thread : threads)
        thread.join();
}

// False when a request reached another device than its handle's.
bool OpenControlClose(char name)
{
    const char path[] = {name, '\0'};
    os::HANDLE device = os::CreateFileA(path, 0, 0, nullptr, os::OpenExisting, 0, nullptr);
    uint32_t answer = 0;
    os::DWORD returned = 0;
    const os::BOOL accepted = os::DeviceIoControl(device, 0, nullptr, 0, &answer, 4, &returned, nullptr);
    const os::BOOL closed = os::CloseHandle(device);
    const os::BOOL late = os::DeviceIoControl(device, 0, nullptr, 0, &answer, 4, &returned, nullptr);
    return accepted && answer == static_cast<uint32_t>(name) && closed && !late;
}

void TREVIK_CALL Increment(os::UINT, os::UINT, os::DWORD_PTR user, os::DWORD_PTR, os::DWORD_PTR)
{
    // No atomic: a callback that runs after the kill is a race.
    ++*reinterpret_cast<int *>(user); // NOLINT(performance-no-int-to-ptr)
}

os::DWORD TREVIK_CALL PassOn(void *parameter)
{
    const auto *events = static_cast<const os::HANDLE *>(parameter);
    for (int i = 0; i < rounds; ++i) {
        os::WaitForSingleObject(events[0], os::Infinite);
        os::SetEvent(events[1]);
    }
    os::ExitThread(0);
}

} // namespace

TEST_SUITE("concurrent")
{
    TEST_CASE("devices opened, used and closed by several threads")
    {
        const TrevikHostDriver driver{nullptr, nullptr, nullptr, OpenDevice, ControlDevice, CloseDevice};
        TrevikHost_driver_set(&driver);
        const std::size_t open_before = host::OpenHandleCount();
        std::atomic<int> faults{0};
        InThreads([&faults](int thread) {
            for (int i = 0; i < rounds; ++i)
                faults += OpenControlClose(static_cast<char>('A' + thread)) ? 0 : 1;
        });
        CHECK(faults == 0);
        CHECK(sum_of_open == 0);
        CHECK(host::OpenHandleCount() == open_before);
        TrevikHost_driver_set(nullptr);
    }

    TEST_CASE("events passed to and fro between threads")
    {
        InThreads([](int) {
            const std::array<os::HANDLE, 2> events = {os::CreateEventA(nullptr, 0, 0, nullptr),
                                                      os::CreateEventA(nullptr, 0, 0, nullptr)};
            os::HANDLE thread =
                os::CreateThread(nullptr, 0, PassOn, const_cast<os::HANDLE *>(events.data()), 0, nullptr);
            const auto low32 = static_cast<uint32_t>(reinterpret_cast<std::uintptr_t>(events[0]));
            for (int i = 0; i < rounds; ++i) {
                TrevikHost_event_signal(low32);
                os::WaitForSingleObject(events[1], os::Infinite);
            }
            os::WaitForSingleObject(thread, os::Infinite);
            for (os::HANDLE handle : {thread, events[0], events[1]})
                os::CloseHandle(handle);
        });
    }

    TEST_CASE("no callback runs after its timer is killed")
    {
        std::atomic<int> unkilled{0};
        InThreads([&unkilled](int thread) {
            for (int i = 0; i < 10; ++i) {
                int calls = 0;
                const os::UINT timer =
                    os::timeSetEvent(1, 0, Increment, reinterpret_cast<os::DWORD_PTR>(&calls), os::TimePeriodic);
                std::this_thread::sleep_for(std::chrono::microseconds(500 * (1 + thread)));
                unkilled += os::timeKillEvent(timer) == os::TimerNoError ? 0 : 1;
                calls = -1;
            }
        });
        CHECK(unkilled == 0);
    }

    TEST_CASE("the manual clock is moved beside threads that read it and change timers")
    {
        TrevikHost_clock_manual(1);
        std::atomic<bool> over{false};
        std::thread mover([&over] {
            while (!over)
                TrevikHost_advance(0.0005);
        });
        InThreads([](int) {
            for (int i = 0; i < rounds; ++i) {
                int calls = 0;
                os::timeKillEvent(
                    os::timeSetEvent(1, 0, Increment, reinterpret_cast<os::DWORD_PTR>(&calls), os::TimePeriodic));
                calls = -1;
            }
        });
        over = true;
        mover.join();
        TrevikHost_clock_manual(0);
    }
}
