// Virtual cards: single requests, moves, samples, and two cards at once.
#include "api/card_manager.h"
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

// Two cards under the manual clock, with the one handwheel tick that a program has.
void PowerUp()
{
    TrevikHost_driver_set(nullptr);
    TrevikHost_clock_manual(1);
    TrevikVirtual_cards_set("0:A,1:A");
    trevik::manager.StopPulserTicks();
    TrevikA_initial();
}

// Without the tick: what the card itself costs, however much machine time passes.
void PowerUpWithoutTick()
{
    PowerUp();
    trevik::manager.StopPulserTicks();
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

// The whole call, each time on an axis whose last move has ended meanwhile: the clock's step and that end are part
// of what is measured.
void virtual_T_move(benchmark::State &state)
{
    PowerUpWithoutTick();
    for (auto _ : state) {
        benchmark::DoNotOptimize(TrevikA_T_position_move(0, 0, 10000, 0, 500, 20000, 100, 100, 0));
        TrevikHost_advance(1);
    }
}
BENCHMARK(virtual_T_move);

// A move planned, sent, run to its end and confirmed idle.
void virtual_to_end(benchmark::State &state)
{
    PowerUpWithoutTick();
    const auto pulses = static_cast<std::uint32_t>(state.range(0));
    std::uint8_t idle = 0;
    for (auto _ : state) {
        // Fast, so that millions of moves do not take the clock to its end.
        TrevikA_T_position_move(0, 0, pulses, 0, 500, 6'000'000, 100, 100, 0);
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
