// The arithmetic of one move, from user units to register values, without a driver.
#include "motion/line_profile.h"
#include "motion/position_move.h"
#include "motion/profile.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <span>

namespace
{

using namespace trevik;

// Moves of changing size, so that no result is known beforehand.
constexpr std::uint32_t variations = 64;

void plan_T_position(benchmark::State &state)
{
    std::uint32_t i = 0;
    for (auto _ : state) {
        const std::uint32_t v = ++i % variations;
        const MoveSpeeds speeds{500 + v, 20000 + 100 * v};
        const RampTimes times{0.1, 0.1};
        PositionPlan plan =
            PlanPosition(speeds, {Curve::T, times, {}}, SelectMultiplier(speeds.max_pps), 10000 + v);
        std::uint32_t correction = CorrectionToRegister(1000, plan.profile.MultiplierValue);
        Command command = SelectStartCommand(speeds.start_pps, speeds.max_pps, times);
        benchmark::DoNotOptimize(plan);
        benchmark::DoNotOptimize(correction);
        benchmark::DoNotOptimize(command);
    }
}
BENCHMARK(plan_T_position);

// With ramps whose ramp-down point the chip does not find: the whole arithmetic, a short move now and then.
void plan_S_position(benchmark::State &state)
{
    std::uint32_t i = 0;
    for (auto _ : state) {
        const std::uint32_t v = ++i % variations;
        const MoveSpeeds speeds{500 + v, 20000 + 100 * v};
        const SRampTimes ramps{speeds.start_pps, speeds.max_pps, 100, 300, 20 + v / 8, 50};
        PositionRamps position_ramps{Curve::S, Seconds(ramps.accel_ms, ramps.decel_ms), {}};
        benchmark::DoNotOptimize(ramps.ranges(position_ramps.ranges));
        PositionPlan plan = PlanPosition(speeds, position_ramps, SelectMultiplier(speeds.max_pps),
                                         v % 4 == 0 ? 1000 + v : 10000 + v);
        std::uint32_t correction = CorrectionToRegister(1000, plan.profile.MultiplierValue);
        Command command = SelectStartCommand(speeds.start_pps, speeds.max_pps, position_ramps.times);
        benchmark::DoNotOptimize(plan);
        benchmark::DoNotOptimize(correction);
        benchmark::DoNotOptimize(command);
    }
}
BENCHMARK(plan_S_position);

void PlanLines(benchmark::State &state, std::size_t axes)
{
    LineRamps ramps;
    ramps.times = {0.1, 0.1};
    std::uint32_t i = 0;
    for (auto _ : state) {
        const std::uint32_t v = ++i % variations;
        const std::array<std::uint32_t, 4> distances{3000 + v, 4000 - v, 500 + v, 100 + v};
        const std::uint32_t max_speed = 10000 + 10 * v;
        LinePlan plan =
            PlanLine(std::span(distances.data(), axes), 500, max_speed, ramps, SelectMultiplier(max_speed));
        Command command = SelectStartCommand(500, max_speed, ramps.times);
        benchmark::DoNotOptimize(plan);
        benchmark::DoNotOptimize(command);
    }
}

void plan_LINE3(benchmark::State &state)
{
    PlanLines(state, 3);
}
BENCHMARK(plan_LINE3);

void plan_LINE4(benchmark::State &state)
{
    PlanLines(state, 4);
}
BENCHMARK(plan_LINE4);

} // namespace
