#include "motion/restart.h"

namespace trevik
{
namespace
{

// A refused read counts as 0: nothing left, or a move forward.
void AdvanceTarget(const Axis &axis)
{
    AxisShadow &shadow = axis.shadow();
    std::uint32_t remaining = 0;
    std::uint32_t distance = 0;
    axis.read(StatusRegister::REMAINING, remaining);
    axis.read(Register::DISTANCE, distance);
    const bool backward = static_cast<std::int32_t>(distance) < 0;
    shadow.LastTarget = backward ? shadow.LastTarget - remaining : shadow.LastTarget + remaining;
}

} // namespace

Result Restart(const Card &card, const AxisSet &set)
{
    const CheckedAxes axes(card, set);
    for (const Axis &axis : axes)
        AdvanceTarget(axis);
    return card.command(axes.bits(), Command::CMD_RESTART);
}

Result RestartAxis(const Axis &axis)
{
    AdvanceTarget(axis);
    return axis.command(Command::CMD_RESTART);
}

} // namespace trevik
