// Virtual cards: single requests, moves, samples, and two cards at once.
#include "virtual/bus.h"

#include <trevik/TrevikA.h>
#include <trevik/TrevikHost.h>
#include <trevik/TrevikVirtual.h>

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdint>
#include <thread>

namespace
{

// Cards under the manual clock.
void PowerUp(const char *cards = "0:A,1:A")
{
    TrevikHost_driver_set(nullptr);
    TrevikHost_clock_manual(1);
    TrevikVirtual_cards_set(cards);
    TrevikA_initial();
}

// Reports the time of one of the items that an iteration works through.
void PerItem(benchmark::State &state, double items)
{
    state.counters["each"] =
        benchmark::Counter(items, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Another thread that lives, so that nothing is cheaper for being alone.
class LivingThread
{
  public:
    LivingThread() : thread_([this] { done_.wait(false); }) {}
    ~LivingThread()
    {
        done_ = true;
        done_.notify_all();
        thread_.join();
    }
    LivingThread(const LivingThread &) = delete;
    LivingThread &operator=(const LivingThread &) = delete;

  private:
    std::atomic<bool> done_{false};
    std::thread thread_;
};

void RunToEnd(std::uint8_t card)
{
    double seconds = 0;
    TrevikVirtual_next_event_read(card, &seconds);
    TrevikHost_advance(seconds);
}

// One request of the driver seam, on a card at rest: the main status.
void virtual_request(benchmark::State &state)
{
    PowerUp();
    const LivingThread other;
    std::uint8_t idle = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(TrevikA_motion_status_read(0, 0, 0, &idle));
}
BENCHMARK(virtual_request);

// The whole call, each time on an idle axis: one move on each axis of 16 cards, which then run to their ends
// outside the measured time.
void virtual_T_move(benchmark::State &state)
{
    constexpr std::uint8_t cards = 16;
    PowerUp("0:A,1:A,2:A,3:A,4:A,5:A,6:A,7:A,8:A,9:A,10:A,11:A,12:A,13:A,14:A,15:A");
    for (auto _ : state) {
        for (std::uint8_t i = 0; i < cards * 4; ++i)
            benchmark::DoNotOptimize(TrevikA_T_position_move(i / 4, i % 4, 10000, 0, 500, 20000, 100, 100, 0));
        state.PauseTiming();
        TrevikHost_advance(10);
        state.ResumeTiming();
    }
    PerItem(state, cards * 4);
}
BENCHMARK(virtual_T_move);

// A move planned, sent, run to its end and confirmed idle.
void virtual_to_end(benchmark::State &state)
{
    PowerUp();
    const auto pulses = static_cast<std::uint32_t>(state.range(0));
    std::uint8_t idle = 0;
    for (auto _ : state) {
        TrevikA_T_position_move(0, 0, pulses, 0, 500, 20000, 100, 100, 0);
        RunToEnd(0);
        TrevikA_motion_status_read(0, 0, 0, &idle);
        if (idle == 0)
            state.SkipWithError("the axis is not at its end");
    }
}
BENCHMARK(virtual_to_end)->Arg(100)->Arg(10'000'000);

// The clock moves 1 ms; status and position of a moving axis are read.
void virtual_sample(benchmark::State &state)
{
    PowerUp();
    const auto speed = static_cast<std::uint32_t>(state.range(0));
    std::uint8_t idle = 1;
    std::uint32_t position = 0;
    std::uint64_t samples = 0;
    for (auto _ : state) {
        if (idle != 0) {
            state.PauseTiming();
            TrevikA_current_position_set(0, 0, 0);
            TrevikA_T_position_move(0, 0, 2'000'000'000, 0, speed, speed, 0, 0, 0);
            state.ResumeTiming();
        }
        TrevikHost_advance(0.001);
        TrevikA_motion_status_read(0, 0, 0, &idle);
        TrevikA_current_position_read(0, 0, &position);
        benchmark::DoNotOptimize(position);
        ++samples;
    }
    state.counters["real_time_factor"] =
        benchmark::Counter(static_cast<double>(samples) * 0.001, benchmark::Counter::kIsRate);
}
BENCHMARK(virtual_sample)->Arg(100)->Arg(6'553'500);

// Work of one thread on one card, and of two threads on a card each: items per second of real time.
void CardWork(std::uint8_t card)
{
    std::uint32_t position = 0;
    std::uint8_t idle = 0;
    for (int i = 0; i < 1000; ++i) {
        TrevikA_motion_status_read(card, 0, 0, &idle);
        TrevikA_current_position_read(card, 0, &position);
    }
    benchmark::DoNotOptimize(position);
}

void virtual_two_cards(benchmark::State &state)
{
    if (state.thread_index() == 0) {
        PowerUp();
        TrevikA_T_position_move(0, 0, 1'000'000'000, 0, 1000, 1000, 0, 0, 0);
        TrevikA_T_position_move(1, 0, 1'000'000'000, 0, 1000, 1000, 0, 0, 0);
    }
    for (auto _ : state)
        CardWork(static_cast<std::uint8_t>(state.thread_index()));
    state.SetItemsProcessed(state.iterations() * 2000);
}
BENCHMARK(virtual_two_cards)->Threads(1)->Threads(2)->UseRealTime();

} // namespace
