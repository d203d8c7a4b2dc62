// The arithmetic of one move, from user units to register values, without a driver.
#include "motion/arc.h"
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

// From the caller's milliseconds on.
void PlanS(benchmark::State &state, std::uint32_t decel_ms, std::uint32_t distance)
{
    std::uint32_t i = 0;
    for (auto _ : state) {
        const std::uint32_t v = ++i % variations;
        const SRampTimes given{500 + v, 20000 + 100 * v, 100, decel_ms, 20 + v / 8, 30};
        const MoveSpeeds speeds{given.start_speed, given.max_speed};
        MoveRamps ramps{Curve::S, Seconds(given.accel_ms, given.decel_ms), {}};
        benchmark::DoNotOptimize(given.ranges(ramps.ranges));
        PositionPlan plan = PlanPosition(speeds, ramps, SelectMultiplier(speeds.max_pps), distance + v);
        std::uint32_t correction = CorrectionToRegister(1000, plan.profile.MultiplierValue);
        Command command = SelectStartCommand(speeds.start_pps, speeds.max_pps, ramps.times);
        benchmark::DoNotOptimize(plan);
        benchmark::DoNotOptimize(correction);
        benchmark::DoNotOptimize(command);
    }
}

void plan_S_position(benchmark::State &state)
{
    PlanS(state, 100, 10000);
}
BENCHMARK(plan_S_position);

// The library finds the ramp-down point, and lowers the maximum speed.
void plan_S_position_fitted(benchmark::State &state)
{
    PlanS(state, 300, 1000);
}
BENCHMARK(plan_S_position_fitted);

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

// Arcs: the geometry of each description, then what all of them need.
template <class Geometry>
void PlanArcs(benchmark::State &state, Geometry geometry)
{
    std::uint32_t i = 0;
    for (auto _ : state) {
        const std::uint32_t v = ++i % variations;
        const auto wide = static_cast<std::int32_t>(v);
        const CenterArc arc = geometry(wide);
        const MoveSpeeds speeds{500, 10000 + 10 * v};
        ProfileRegisters profile = PlanArc(speeds, {Curve::T, 0.1, 0}, SelectMultiplier(speeds.max_pps));
        std::uint32_t steps = ArcSteps({arc.center, arc.end}, arc.direction);
        Command command = SelectStartCommand(speeds.start_pps, speeds.max_pps, {0.1, 0.1});
        benchmark::DoNotOptimize(profile);
        benchmark::DoNotOptimize(steps);
        benchmark::DoNotOptimize(command);
    }
}

void plan_ARC_center(benchmark::State &state)
{
    PlanArcs(state, [](std::int32_t v) { return CenterArc{{1000 + v, 300}, {2000, 400 + v}, 0}; });
}
BENCHMARK(plan_ARC_center);

void plan_ARC_3P(benchmark::State &state)
{
    PlanArcs(state, [](std::int32_t v) {
        const ThreePointArc found = ThreePointCenter({1000 + v, 900}, {2000, 400 + v});
        return CenterArc{found.circle.center, found.circle.end, found.direction};
    });
}
BENCHMARK(plan_ARC_3P);

void plan_ARC_radius(benchmark::State &state)
{
    PlanArcs(state, [](std::int32_t v) {
        CenterArc arc{{}, {2000, 400 + v}, 0};
        RadiusCenter(1200 + v, arc.end, arc.direction, arc.center);
        return arc;
    });
}
BENCHMARK(plan_ARC_radius);

// A helix is an arc whose speeds are not divided.
void plan_helix(benchmark::State &state)
{
    std::uint32_t i = 0;
    for (auto _ : state) {
        const std::uint32_t v = ++i % variations;
        const Circle circle{{1000 + static_cast<std::int32_t>(v), 300}, {2000, 400}};
        const MoveSpeeds speeds{500, 10000 + 10 * v};
        ProfileRegisters profile = PlanRamps(speeds, {Curve::T, {0.1, 0.1}, {}}, SelectMultiplier(speeds.max_pps));
        std::uint32_t steps = ArcSteps(circle, 0);
        Command command = SelectStartCommand(speeds.start_pps, speeds.max_pps, {0.1, 0.1});
        benchmark::DoNotOptimize(profile);
        benchmark::DoNotOptimize(steps);
        benchmark::DoNotOptimize(command);
    }
}
BENCHMARK(plan_helix);

} // namespace
