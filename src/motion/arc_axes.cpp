#include "motion/arc_axes.h"

namespace trevik
{
namespace
{

std::int32_t Relative(const Axis &axis, std::int32_t given, bool absolute)
{
    const auto coordinate = static_cast<std::uint32_t>(given);
    return absolute ? static_cast<std::int32_t>(coordinate - axis.shadow().LastTarget) : given;
}

void AdvanceTarget(const Axis &axis, std::int32_t distance)
{
    AxisShadow &shadow = axis.shadow();
    shadow.LastTarget = shadow.LastTarget + static_cast<std::uint32_t>(distance);
}

} // namespace

Point RelativePoint(const CheckedAxes &axes, Point given, AbsolutePair absolute)
{
    return {Relative(axes[0], given.x, absolute.a), Relative(axes[1], given.y, absolute.b)};
}

bool TakeCircle(const CheckedAxes &axes, Point center, Point end, AbsolutePair absolute, Circle &circle)
{
    circle = {RelativePoint(axes, center, absolute), RelativePoint(axes, end, absolute)};
    if (circle.center == Point{})
        return false;
    AdvanceTarget(axes[0], circle.end.x);
    AdvanceTarget(axes[1], circle.end.y);
    return true;
}

void PrepareCircle(const CheckedAxes &axes, OperationCode operation)
{
    for (const Axis *axis : {&axes[0], &axes[1]}) {
        AxisShadow &shadow = axis->shadow();
        ComposeModeWord(shadow, operation, Curve::T); // the curve bit stays clear in S-curve arcs, too
        shadow.ModeWord = mode_field::arc_used.put(mode_field::arc_option.put(shadow.ModeWord, 0), 1);
    }
    for (const Axis *axis : {&axes[0], &axes[1]})
        Modify(*axis, motion_config::interpolation_option.to(0));
}

void MarkCircle(const CheckedAxes &axes)
{
    for (const Axis *axis : {&axes[0], &axes[1]}) {
        axis->shadow().MoveIssued = std::uint8_t{1};
        axis->shadow().LastMoveWasArc = std::uint8_t{1};
    }
}

void WriteCircleAxis(const Axis &axis, std::int32_t end, const ProfileRegisters &profile, std::int32_t center)
{
    WriteMoveRegister(axis, Register::DISTANCE, static_cast<std::uint32_t>(end));
    WriteSpeedRegisters(axis, profile);
    WriteMoveRegister(axis, Register::MODE, axis.shadow().ModeWord);
    WriteMoveRegister(axis, Register::CENTER, static_cast<std::uint32_t>(center));
}

} // namespace trevik
