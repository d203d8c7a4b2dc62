#include "motion/helix.h"

#include "motion/arc_axes.h"
#include "motion/line.h"
#include "motion/position_move.h"
#include "motion/target.h"

#include <array>

namespace trevik
{
namespace
{

constexpr AxisSet helix_axes{{0, 1, 2}, 3};
constexpr std::uint8_t z_axis = 2;
constexpr std::uint8_t step_axis = 3;

OperationCode HelixCode(std::uint8_t direction)
{
    return direction == 0 ? OperationCode::HelixArcPlus : OperationCode::HelixArcMinus;
}

// The distance of axis 2, whose target moves on. What an arc fell short by does not concern it.
std::uint32_t TakeZ(const Axis &z, std::int32_t given, bool absolute)
{
    AxisShadow &shadow = z.shadow();
    const auto coordinate = static_cast<std::uint32_t>(given);
    const std::uint32_t distance = absolute ? coordinate - shadow.LastTarget : coordinate;
    shadow.LastTarget = shadow.LastTarget + distance;
    return distance;
}

// Z finds its slow-down point by itself; the step axis keeps its ramp-down bits.
void PrepareLines(const Axis &z, const Axis &steps)
{
    ComposeModeWord(z.shadow(), OperationCode::Line, Curve::T);
    const std::uint32_t word = mode_field::manual_rampdown.put(z.shadow().ModeWord, 0);
    z.shadow().ModeWord = mode_field::short_profile.put(word, 0);
    ComposeModeWord(steps.shadow(), OperationCode::Line, Curve::T);
}

void WriteHelixArc(const Axis &axis, std::int32_t end, const ProfileRegisters &profile, std::int32_t center,
                   std::uint32_t steps, Curve curve)
{
    WriteCircleAxis(axis, end, profile, center);
    if (curve == Curve::T)
        return;
    WriteMoveRegister(axis, Register::ARC_STEPS, steps);
    WriteSRanges(axis, profile);
}

void WriteZ(const Axis &z, std::uint32_t distance, const ProfileRegisters &profile, Curve curve)
{
    WriteMoveRegister(z, Register::DISTANCE, distance);
    WriteMoveRegister(z, Register::START_SPEED, profile.StartSpeedValue);
    WriteMoveRegister(z, Register::MAX_SPEED, profile.MaxSpeedValue);
    WriteMoveRegister(z, Register::ACCEL_RATE, profile.AccelRateValue);
    WriteMoveRegister(z, Register::DECEL_RATE, profile.DecelRateValue);
    WriteMoveRegister(z, Register::RAMPDOWN_POINT, 0);
    WriteMoveRegister(z, Register::MULTIPLIER, profile.MultiplierValue);
    WriteMoveRegister(z, Register::MODE, z.shadow().ModeWord);
    if (curve == Curve::S)
        WriteSRanges(z, profile);
}

// Into the set that the helix goes to: the step axis's own continuous flag does not count.
void WriteSteps(const Axis &axis, const AxisShadow &deciding, std::uint32_t steps, const ProfileRegisters &profile)
{
    const auto write = [&](Register direct, std::uint32_t value) {
        axis.write(MoveRegister(deciding, direct), value);
    };
    write(Register::DISTANCE, steps);
    write(Register::START_SPEED, profile.StartSpeedValue);
    write(Register::MAX_SPEED, profile.MaxSpeedValue);
    write(Register::MULTIPLIER, profile.MultiplierValue);
    write(Register::MODE, axis.shadow().ModeWord);
}

Result HelixCore(const Card &card, const CenterArc &arc, HelixEnd end, const ArcRun &run)
{
    if (run.trigger > 1 || run.absolute_flags == nullptr)
        return Result::Param;
    const CheckedAxes axes(card, helix_axes);
    const Axis z = axes[2];
    const Axis step = card.axis(step_axis);
    if (const Result allowed = MoveAllowed(axes); allowed != Result::Ok)
        return allowed;
    SyncLastTarget(axes);
    if (SpeedTooHigh(run.speeds.max_pps))
        return Result::Param;
    Circle circle;
    if (!TakeCircle(axes, arc.center, arc.end, AbsoluteOf(axes, run.absolute_flags), circle))
        return Result::Param;

    const std::uint32_t multiplier = VelocityMultiplier(z.shadow(), run.speeds.max_pps);
    const ProfileRegisters profile = PlanRamps(run.speeds, run.ramp.both(), multiplier);
    const std::uint32_t z_distance = TakeZ(z, end.z, run.absolute_flags[z_axis] != 0);
    const std::uint32_t steps = ArcSteps(circle, arc.direction);
    PrepareCircle(axes, HelixCode(arc.direction));
    PrepareLines(z, step);
    const CheckedAxes all(card, all_four_axes);
    for (const Axis &axis : all)
        ApplyStartTrigger(axis, static_cast<StartTrigger>(run.trigger));
    WriteHelixArc(axes[0], circle.end.x, profile, circle.center.x, steps, run.ramp.curve);
    WriteHelixArc(axes[1], circle.end.y, profile, circle.center.y, steps, run.ramp.curve);
    WriteZ(z, z_distance, profile, run.ramp.curve);
    WriteSteps(step, axes[0].shadow(), steps, profile);
    const Result result =
        card.command(all_axes, SelectStartCommand(Magnitude(run.speeds.start_pps), Magnitude(run.speeds.max_pps),
                                                  run.ramp.both().times));
    for (const Axis &axis : all)
        ClearStartTrigger(axis.shadow());
    MarkCircle(axes);
    return result;
}

// With a computed circle, which is relative; Z stays as the caller gave it.
Result HelixComputed(const Card &card, const CenterArc &arc, HelixEnd z, const ArcRun &run)
{
    const std::array<std::uint8_t, 4> flags{0, 0, run.absolute_flags[z_axis], 0};
    return HelixCore(card, arc, z, {flags.data(), run.speeds, run.ramp, run.trigger});
}

} // namespace

Result HelixCenterMove(const Card &card, const CenterArc &arc, HelixEnd z, const ArcRun &run)
{
    return HelixCore(card, arc, z, run);
}

Result HelixThroughMove(const Card &card, const ThroughArc &arc, ArcEnd end, HelixEnd z, const ArcRun &run)
{
    if (run.absolute_flags == nullptr)
        return Result::Param;
    CenterArc found;
    const Result geometry = FindCircle(CheckedAxes(card, AxisPair(0)), arc, end, run.absolute_flags, found);
    if (geometry == Result::Ok)
        return HelixComputed(card, found, z, run);
    if (end == ArcEnd::AtPoint && run.ramp.curve == Curve::T)
        LineMove(card, helix_axes, {{arc.end.x, arc.end.y, z.z}, run.absolute_flags}, run.speeds,
                 TRamps(run.ramp.both().times), run.trigger);
    return geometry;
}

Result HelixRadiusMove(const Card &card, const RadiusArc &arc, ArcEnd end, HelixEnd z, const ArcRun &run)
{
    if (run.absolute_flags == nullptr)
        return Result::Param;
    CenterArc found;
    const Result geometry = FindCircle(CheckedAxes(card, AxisPair(0)), arc, end, run.absolute_flags, found);
    return geometry == Result::Ok ? HelixComputed(card, found, z, run) : geometry;
}

} // namespace trevik
