#include "motion/stop.h"

#include "driver/mode_word.h"
#include "motion/profile.h"
#include "motion/target.h"

namespace trevik
{
namespace
{

// Deceleration rate from the axis's maximum speed to standstill.
std::uint32_t StopRate(const Axis &axis, double decel_s)
{
    std::uint32_t speed = 0;
    std::uint32_t s_range = 0;
    axis.read(Register::MAX_SPEED, speed);
    axis.read(Register::S_DECEL_RANGE, s_range);
    const bool s_curve = mode_field::s_curve.get(axis.shadow().ModeWord) != 0;
    if (s_curve && s_range != 0 && (speed + 2 * s_range) * 4 == 0)
        return highest_register; // the whole divisor wraps to 0
    return s_curve ? RiseToRateS(decel_s, speed, s_range) : RiseToRateT(decel_s, speed);
}

// Calls an operation with every axis of a set, in axis order.
template <class Operation>
void Each(const Card &card, std::uint8_t set, Operation operation)
{
    for (std::uint8_t n = 0; n < axis_count; ++n)
        if ((set & AxisBit(n)) != 0)
            operation(card.axis(n));
}

Result SlowDown(const Card &card, std::uint8_t set, double decel_s)
{
    Each(card, set, [=](const Axis &axis) { axis.write(Register::DECEL_RATE, StopRate(axis, decel_s)); });
    const Result result = card.command(set, Command::CMD_STOP_DECEL);
    Each(card, set, [](const Axis &axis) { axis.shadow().MoveIssued = std::uint8_t{1}; });
    return result;
}

// Stops a set at once and re-bases every axis of it that stands already.
Result StopAtOnce(const Card &card, std::uint8_t set, Command command)
{
    Result result = card.command(set, command);
    Each(card, set, [&](const Axis &axis) {
        result = SyncLastTarget(axis);
        axis.shadow().MoveIssued = std::uint8_t{1};
    });
    return result;
}

} // namespace

Result Stop(const Card &card, const std::uint8_t *axes, double decel_s)
{
    if (axes == nullptr)
        return Result::Param;
    unsigned selected = 0;
    for (std::uint8_t n = 0; n < axis_count; ++n)
        if (axes[n] == 1)
            selected |= AxisBit(n);
    const auto set = static_cast<std::uint8_t>(selected);
    return decel_s != 0.0 ? SlowDown(card, set, decel_s) : StopAtOnce(card, set, Command::CMD_STOP_IMMEDIATE);
}

Result StopDecelerating(const Axis &axis, double decel_s)
{
    return SlowDown(axis.card(), axis.bit(), decel_s);
}

Result StopImmediate(const Axis &axis)
{
    return StopAtOnce(axis.card(), axis.bit(), Command::CMD_STOP_IMMEDIATE);
}

Result EmergencyStop(const Card &card)
{
    return StopAtOnce(card, all_axes, Command::CMD_EMERGENCY_STOP);
}

Result VelocityRead(const Axis &axis, double *speed_pps)
{
    if (speed_pps == nullptr)
        return Result::Param;
    std::uint32_t units = 0;
    std::uint32_t multiplier = 0;
    axis.read(StatusRegister::CURRENT_SPEED, units);
    const Result result = axis.read(Register::MULTIPLIER, multiplier);
    *speed_pps = (units & 0xFFFF) * 300 / (static_cast<double>(multiplier) + 1);
    return result;
}

} // namespace trevik
