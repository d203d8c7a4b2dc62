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
    return s_curve ? TimeToRateS(decel_s, 0, speed, s_range) : TimeToRateT(decel_s, 0, speed);
}

Result StopDecelerating(const Card &card, const std::uint8_t *axes, double decel_s)
{
    unsigned set = 0;
    for (std::uint8_t n = 0; n < axis_count; ++n) {
        if (axes[n] != 1)
            continue;
        const Axis axis = card.axis(n);
        axis.write(Register::DECEL_RATE, StopRate(axis, decel_s));
        set |= axis.bit();
    }
    const Result result = card.command(static_cast<std::uint8_t>(set), Command::CMD_STOP_DECEL);
    for (std::uint8_t n = 0; n < axis_count; ++n)
        if (axes[n] == 1)
            card.axis(n).shadow().MoveIssued = std::uint8_t{1};
    return result;
}

// Stops a set at once and re-bases every axis of it that stands already.
Result StopAtOnce(const Card &card, std::uint8_t set, Command command)
{
    Result result = card.command(set, command);
    for (std::uint8_t n = 0; n < axis_count; ++n) {
        const Axis axis = card.axis(n);
        if ((set & axis.bit()) == 0)
            continue;
        result = SyncLastTarget(axis);
        axis.shadow().MoveIssued = std::uint8_t{1};
    }
    return result;
}

} // namespace

Result Stop(const Card &card, const std::uint8_t *axes, double decel_s)
{
    if (axes == nullptr)
        return Result::Param;
    if (decel_s != 0.0)
        return StopDecelerating(card, axes, decel_s);
    unsigned set = 0;
    for (std::uint8_t n = 0; n < axis_count; ++n)
        if (axes[n] == 1)
            set |= AxisBit(n);
    return StopAtOnce(card, static_cast<std::uint8_t>(set), Command::CMD_STOP_IMMEDIATE);
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
