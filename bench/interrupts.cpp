// Interrupts in real time: from the card's cause to the application's callback, beside the same wake-ups bare.
#include "api/card_manager.h"
#include "platform/host/clock.h"
#include "virtual/bus.h"

#include <trevik/TrevikA.h>
#include <trevik/TrevikHost.h>
#include <trevik/TrevikVirtual.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include <sys/resource.h>
#include <unistd.h>

namespace
{

using Clock = std::chrono::steady_clock;
using Times = std::vector<double>; // microseconds

constexpr int rounds = 1000;
constexpr auto asleep = std::chrono::microseconds(500); // until the next cause: every thread sleeps by then

double Median(Times &times)
{
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

// When something was caused, and when who waits for it ran.
struct Wake {
    Clock::time_point cause;
    Times times;
    std::atomic<int> seen{0};

    void note()
    {
        times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - cause).count());
        seen = seen + 1;
        seen.notify_one();
    }
};

Wake callback;

void TREVIK_CALL OnInterrupt(std::uint32_t)
{
    callback.note();
}

// A plain thread of the lowest priority, as the callback's is.
class BareThread
{
  public:
    BareThread() : thread_([this] { run(); }) {}
    ~BareThread()
    {
        wake(true);
        thread_.join();
    }
    BareThread(const BareThread &) = delete;
    BareThread &operator=(const BareThread &) = delete;

    void wake(bool over = false)
    {
        const std::lock_guard lock(mutex_);
        woken_ = true;
        over_ = over;
        changed_.notify_all();
    }
    Wake noted;

  private:
    void run()
    {
        setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), 19);
        for (;;) {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [this] { return woken_; });
            woken_ = false;
            if (over_)
                return;
            lock.unlock();
            noted.note();
        }
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    bool woken_ = false;
    bool over_ = false;
    std::thread thread_;
};

// A card whose interrupts call back.
class Linked
{
  public:
    Linked()
    {
        TrevikHost_driver_set(nullptr);
        TrevikHost_clock_manual(0);
        TrevikVirtual_cards_set("0:A");
        TrevikA_initial();
        TrevikA_IRQ_process_link(0, OnInterrupt);
        TrevikA_IRQ_enable(0);
        callback.times.clear();
    }
    ~Linked()
    {
        TrevikA_close();
        trevik::manager.StopPulserTicks();
    }
    Linked(const Linked &) = delete;
    Linked &operator=(const Linked &) = delete;
};

template <class Cause>
void Round(Wake &wake, Cause cause)
{
    std::this_thread::sleep_for(asleep);
    const int seen = wake.seen;
    cause();
    wake.seen.wait(seen);
}

void Report(benchmark::State &state, Times &callbacks, Times &bare)
{
    state.counters["callback_us"] = Median(callbacks);
    state.counters["bare_us"] = Median(bare);
    state.counters["ratio"] = Median(callbacks) / Median(bare);
}

// Caused by the machine: the latch input comes on. Bare: a condition variable.
void interrupt_to_callback(benchmark::State &state)
{
    constexpr std::int32_t latched = 1 << 14;
    const Linked linked;
    BareThread bare;
    TrevikA_event_factor_set(0, 0, latched);
    for (auto _ : state) {
        for (int i = 0; i < rounds; ++i) {
            Round(callback, [] {
                callback.cause = Clock::now();
                TrevikVirtual_input_set(0, 0, TREVIK_VIRTUAL_LATCH, 1);
            });
            TrevikVirtual_input_set(0, 0, TREVIK_VIRTUAL_LATCH, 0);
            Round(bare.noted, [&bare] {
                bare.noted.cause = Clock::now();
                bare.wake();
            });
        }
    }
    Report(state, callback.times, bare.noted.times);
}
BENCHMARK(interrupt_to_callback)->Iterations(1)->Unit(benchmark::kSecond);

// Caused by time: the card's timer expires. Bare: a thread that sleeps until then and wakes the other.
void interrupt_in_time(benchmark::State &state)
{
    const Linked linked;
    BareThread bare;
    TrevikA_IRQ_mask_set(0, 4, 1);
    TrevikA_timer_set(0, 0, 1000);
    for (auto _ : state) {
        for (int i = 0; i < rounds; ++i) {
            Round(callback, [] {
                TrevikA_timer_start(0);
                const auto card = trevik::virtual_card::TheBus().hold(0);
                const std::int64_t due_ns = card->next_event(card.now_ns());
                callback.cause = Clock::now() + std::chrono::nanoseconds(due_ns - trevik::host::NowNanoseconds());
            });
            TrevikA_timer_stop(0);
            Round(bare.noted, [&bare] {
                bare.noted.cause = Clock::now() + std::chrono::milliseconds(1);
                std::this_thread::sleep_until(bare.noted.cause);
                bare.wake();
            });
        }
    }
    Report(state, callback.times, bare.noted.times);
}
BENCHMARK(interrupt_in_time)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace
