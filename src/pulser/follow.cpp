#include "pulser/follow.h"

#include "motion/online_change.h"
#include "motion/position_move.h"

namespace trevik
{
namespace
{

constexpr std::int32_t ticks_per_second = 50;

// Products and sums wrap as unsigned numbers; they are read as signed.
std::int32_t Signed(std::uint32_t value)
{
    return static_cast<std::int32_t>(value);
}
std::uint32_t Unsigned(std::int32_t value)
{
    return static_cast<std::uint32_t>(value);
}

// The handwheel's count in the axis's direction. False, and the count of the last tick, when the read is refused.
bool ReadHandwheel(const Axis &axis, std::uint32_t &count)
{
    const AxisShadow &shadow = axis.shadow();
    const Axis source = axis.card().axis(shadow.PulserMap);
    std::uint32_t raw = 0;
    if (source.read(Register::COUNTER4, raw) == Result::Ok) {
        count = raw * Unsigned(shadow.PulserDirection);
        return true;
    }
    count = Unsigned(shadow.PulserBase);
    return false;
}

// The way of this tick becomes the newest of the history; the speed of the last five.
std::uint32_t FollowSpeed(AxisShadow &shadow, std::uint32_t way)
{
    auto &history = shadow.PulserHistory;
    for (std::size_t i = history.size() - 1; i > 0; --i)
        history[i] = history[i - 1];
    history[0] = Signed(way);
    std::uint32_t sum = 0;
    for (const auto &entry : history)
        sum += Unsigned(entry);
    const std::int32_t average = Signed(sum) / static_cast<std::int32_t>(history.size());
    const std::uint32_t speed = Unsigned(average) * Unsigned(ticks_per_second);
    return speed != 0 ? speed : Unsigned(shadow.PulserLastSpeed);
}

// Drives the axis to its target: a running move gets a new end, an idle axis a new move.
void Drive(const Axis &axis, std::uint32_t speed)
{
    AxisShadow &shadow = axis.shadow();
    const Destination target{shadow.PulserTarget, true};
    const MoveSpeeds speeds{speed, speed};
    const RampTimes no_ramps{};
    const std::uint32_t range_fixed = shadow.RangeFixed;
    shadow.RangeFixed = 0; // the speed unit follows the speed of this tick
    if (TOnlineChange(axis, target, speeds, no_ramps) != Result::Ok)
        TPositionMove(axis, target, speeds, no_ramps, 0);
    shadow.RangeFixed = range_fixed;
}

} // namespace

Result SettlePulser(const Axis &axis)
{
    AxisShadow &shadow = axis.shadow();
    std::uint32_t count = 0;
    const bool counted = ReadHandwheel(axis, count);
    shadow.PulserBase = Signed(count);
    for (auto &entry : shadow.PulserHistory)
        entry = 0;
    std::uint32_t position = shadow.LastTarget;
    const Result result = axis.read(Register::COUNTER1, position);
    shadow.PulserTarget = position;
    shadow.LastTarget = position;
    shadow.PulserUnsettled = !counted || result != Result::Ok;
    return result;
}

void FollowPulser(const Axis &axis)
{
    AxisShadow &shadow = axis.shadow();
    if (shadow.PulserUnsettled) {
        SettlePulser(axis);
        return;
    }
    std::uint32_t count = 0;
    ReadHandwheel(axis, count);
    const std::uint32_t way = shadow.PulserRatio * (count - Unsigned(shadow.PulserBase));
    shadow.PulserBase = Signed(count);
    shadow.PulserTarget = shadow.PulserTarget + way;
    const std::uint32_t speed = FollowSpeed(shadow, way);
    Drive(axis, speed);
    if (speed != 0)
        shadow.PulserLastSpeed = Signed(speed);
}

} // namespace trevik
