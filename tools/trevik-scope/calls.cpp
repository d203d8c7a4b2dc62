#include "trevik-scope/calls.h"

#include <fmt/format.h>
#include <trevik/TrevikA.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace trevik_scope
{
namespace
{

// A call of a function with these numbers, and the same as text.
template <typename... Parameters, typename... Arguments>
Call Calling(double at_ms, const char *label, const char *name, std::uint32_t(TREVIK_CALL *function)(Parameters...),
             Arguments... arguments)
{
    std::string list;
    ((list += fmt::format("{}{}", list.empty() ? "" : ", ", arguments)), ...);
    return {at_ms / 1000, name, label, fmt::format("{}({});", name, list),
            [=] { return function(static_cast<Parameters>(arguments)...); }};
}
#define CALL(at_ms, label, function, ...) Calling(at_ms, label, #function, function, card, axis, __VA_ARGS__)

constexpr int absolute_position = 1;
constexpr int at_once = 0; // start trigger

Call PositionMove(const Motion &motion)
{
    const Profile &p = motion.profile;
    const int absolute = p.absolute ? absolute_position : 0;
    if (motion.Curved()) {
        return CALL(0, "", TrevikA_S_position_move, p.distance, absolute, p.start, p.max, p.accel_ms, p.decel_ms,
                    p.s_accel_ms, p.s_decel_ms, at_once);
    }
    return CALL(0, "", TrevikA_T_position_move, p.distance, absolute, p.start, p.max, p.accel_ms, p.decel_ms,
                at_once);
}

Call VelocityMove(const Motion &motion)
{
    const Profile &p = motion.profile;
    if (motion.Curved()) {
        return CALL(0, "", TrevikA_S_velocity_move, p.start, p.max, p.accel_ms, p.s_accel_ms);
    }
    return CALL(0, "", TrevikA_T_velocity_move, p.start, p.max, p.accel_ms);
}

void AddHoming(std::vector<Call> &calls, const Motion &motion)
{
    const Profile &p = motion.profile;
    const int direction = motion.homing.direction;
    if (motion.kind == Kind::home) {
        const int mode = motion.homing.mode;
        const int option = motion.homing.option;
        calls.push_back(CALL(0, "", TrevikA_home_mode_set, mode, option));
        calls.push_back(CALL(0, "", TrevikA_home_start, p.start, p.max, p.accel_ms, direction));
    } else {
        calls.push_back(CALL(0, "", TrevikA_home_search, p.start, p.max, p.accel_ms, direction, p.distance));
    }
}

void AddHandwheel(std::vector<Call> &calls, const Motion &motion)
{
    calls.push_back(CALL(0, "", TrevikA_pulser_map_set, 0, 0));
    calls.push_back(CALL(0, "", TrevikA_pulser_motion_enable, 1, motion.handwheel.ratio));
}

void AddStart(std::vector<Call> &calls, const Motion &motion)
{
    switch (motion.kind) {
    case Kind::t_position:
    case Kind::s_position:
        calls.push_back(PositionMove(motion));
        break;
    case Kind::t_velocity:
    case Kind::s_velocity:
        calls.push_back(VelocityMove(motion));
        break;
    case Kind::home:
    case Kind::home_search:
        AddHoming(calls, motion);
        break;
    case Kind::handwheel:
        AddHandwheel(calls, motion);
        break;
    }
}

Call ChangeCall(const Change &change, bool curved)
{
    const Profile &p = change.to;
    const int absolute = p.absolute ? absolute_position : 0;
    if (change.distance_only) {
        return CALL(change.at_ms, "change", TrevikA_position_change, p.distance, absolute);
    }
    if (curved) {
        return CALL(change.at_ms, "change", TrevikA_S_onLINE_change, p.distance, absolute, p.start, p.max,
                    p.accel_ms, p.decel_ms, p.s_accel_ms, p.s_decel_ms);
    }
    return CALL(change.at_ms, "change", TrevikA_T_onLINE_change, p.distance, absolute, p.start, p.max, p.accel_ms,
                p.decel_ms);
}

Call StopCall(const Stop &stop)
{
    static constexpr std::array<std::uint8_t, 4> axes = {1, 0, 0, 0};
    return {stop.at_ms / 1000, "TrevikA_stop", "stop",
            fmt::format("TrevikA_stop({}, (uint8_t[]){{1, 0, 0, 0}}, {});", card, stop.time_ms),
            [stop] { return TrevikA_stop(card, axes.data(), stop.time_ms); }};
}

} // namespace

std::vector<Call> CallsOf(const Motion &motion)
{
    std::vector<Call> calls;
    if (motion.fixed_range) {
        calls.push_back(CALL(0, "", TrevikA_velocity_range_fix, *motion.fixed_range));
    }
    AddStart(calls, motion);
    const auto after_start = static_cast<std::ptrdiff_t>(calls.size());
    if (motion.change) {
        calls.push_back(ChangeCall(*motion.change, motion.Curved()));
    }
    if (motion.speed_change) {
        const SpeedChange &change = *motion.speed_change;
        calls.push_back(CALL(change.at_ms, "new speed", TrevikA_velocity_change, change.speed, change.time_ms));
    }
    if (motion.stop) {
        calls.push_back(StopCall(*motion.stop));
    }
    if (motion.restart_at_ms) {
        calls.push_back(Calling(*motion.restart_at_ms, "restart", "TrevikA_OneAxis_restart",
                                TrevikA_OneAxis_restart, card, axis));
    }
    std::stable_sort(calls.begin() + after_start, calls.end(),
                     [](const Call &a, const Call &b) { return a.at_s < b.at_s; });
    return calls;
}

std::vector<AskedRamp> AskedRampsOf(const Motion &motion)
{
    const Profile &p = motion.profile;
    const double start = std::fabs(p.start);
    const double max = std::fabs(p.max);
    if (motion.kind == Kind::handwheel) {
        return {};
    }
    const bool velocity = motion.kind == Kind::t_velocity || motion.kind == Kind::s_velocity;
    const bool homes = motion.kind == Kind::home || motion.kind == Kind::home_search;
    std::vector<AskedRamp> asked = {{start, max, double(p.accel_ms)}};
    if (!velocity) {
        asked.push_back({max, start, double(homes ? p.accel_ms : p.decel_ms)});
    }
    if (motion.change && !motion.change->distance_only) {
        const Profile &to = motion.change->to;
        asked.push_back({double(to.start), double(to.max), double(to.accel_ms)});
        asked.push_back({double(to.max), double(to.start), double(to.decel_ms)});
    }
    double speed = max;
    if (motion.speed_change) {
        asked.push_back({max, std::fabs(motion.speed_change->speed), double(motion.speed_change->time_ms)});
        speed = std::fabs(motion.speed_change->speed);
    }
    if (motion.stop) {
        asked.push_back({speed, 0, double(motion.stop->time_ms)});
    }
    return asked;
}

double LongestSeconds(const Motion &motion)
{
    if (motion.for_ms > 0) {
        return motion.for_ms / 1000;
    }
    constexpr double rest = 1.5;
    double end_ms = motion.profile.accel_ms * rest;
    if (motion.kind == Kind::handwheel) {
        end_ms = motion.handwheel.turn_ms + 200;
    }
    if (motion.speed_change) {
        end_ms = std::max(end_ms, motion.speed_change->at_ms + motion.speed_change->time_ms * rest);
    }
    if (motion.stop) {
        end_ms = std::max(end_ms, motion.stop->at_ms + motion.stop->time_ms * rest);
    }
    return std::max(end_ms, 20.0) / 1000;
}

} // namespace trevik_scope
