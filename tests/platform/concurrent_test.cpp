// Run under the thread sanitizer: what several threads may do at once.
#include "platform/os.h"

#include <doctest/doctest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

using namespace trevik;

namespace
{

constexpr int thread_count = 4;

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

void TREVIK_CALL Increment(os::UINT, os::UINT, os::DWORD_PTR user, os::DWORD_PTR, os::DWORD_PTR)
{
    // No atomic: a callback that runs after the kill is a race.
    ++*reinterpret_cast<int *>(user); // NOLINT(performance-no-int-to-ptr)
}

bool KilledAfter(std::chrono::microseconds time)
{
    int calls = 0;
    const os::UINT timer =
        os::timeSetEvent(1, 0, Increment, reinterpret_cast<os::DWORD_PTR>(&calls), os::TimePeriodic);
    std::this_thread::sleep_for(time);
    const bool killed = os::timeKillEvent(timer) == os::TimerNoError;
    calls = -1;
    return killed;
}

} // namespace

TEST_SUITE("concurrent")
{
    TEST_CASE("no callback runs after its timer is killed")
    {
        std::atomic<int> unkilled{0};
        InThreads([&unkilled](int thread) {
            for (int i = 0; i < 10; ++i)
                unkilled += KilledAfter(std::chrono::microseconds(500 * (1 + thread))) ? 0 : 1;
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
            for (int i = 0; i < 200; ++i)
                KilledAfter(std::chrono::microseconds(0));
        });
        over = true;
        mover.join();
        TrevikHost_clock_manual(0);
    }
}
