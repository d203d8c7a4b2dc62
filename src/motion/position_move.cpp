#include "motion/position_move.h"

#include "motion/target.h"

namespace trevik
{
namespace
{

// The mode word goes before the ramp-down point in S-curve moves, behind it in T-curve moves.
void WriteShape(const Axis &axis, const ProfileRegisters &profile, Curve curve)
{
    if (curve == Curve::T) {
        WriteMoveRegister(axis, Register::RAMPDOWN_POINT, profile.RampDownValue);
        WriteMoveRegister(axis, Register::MODE, axis.shadow().ModeWord);
        return;
    }
    WriteMoveRegister(axis, Register::MODE, axis.shadow().ModeWord);
    WriteMoveRegister(axis, Register::RAMPDOWN_POINT, profile.RampDownValue);
    WriteSRanges(axis, profile);
}

Result PositionMove(const Axis &axis, Destination destination, MoveSpeeds speeds, const MoveRamps &ramps,
                    std::uint8_t trigger)
{
    if (trigger > 2)
        return Result::Param;
    if (const Result allowed = MoveAllowed(axis); allowed != Result::Ok)
        return allowed;
    SyncLastTarget(axis);
    if (SpeedTooHigh(speeds.max_pps))
        return Result::Param;

    AxisShadow &shadow = axis.shadow();
    const std::uint32_t multiplier = PositionMultiplier(shadow, speeds.max_pps);
    const std::uint32_t distance = DistanceFromTarget(shadow, destination.coordinate, destination.absolute);
    if (distance == 0)
        return Result::Param;
    const auto [profile, rampdown] = PlanPosition(speeds, ramps, multiplier, Magnitude(distance));
    ComposeModeWord(shadow, PositioningCode(shadow), ramps.curve, rampdown);
    ApplyStartTrigger(axis, static_cast<StartTrigger>(trigger));

    WriteMoveRegister(axis, Register::DISTANCE, distance);
    WriteSpeedRegisters(axis, profile);
    WriteShape(axis, profile, ramps.curve);
    axis.write(Register::CORRECTION_SPEED, CorrectionToRegister(shadow.CorrectionSpeed, multiplier));
    const Result result =
        axis.command(SelectStartCommand(Magnitude(speeds.start_pps), Magnitude(speeds.max_pps), ramps.times));
    ClearStartTrigger(shadow);
    return result;
}

} // namespace

ProfileRegisters PlanRamps(MoveSpeeds speeds, const MoveRamps &ramps, std::uint32_t multiplier)
{
    ProfileRegisters p;
    p.MultiplierValue = multiplier;
    p.MaxSpeedValue = SpeedToRegister(Magnitude(speeds.max_pps), multiplier, round_up_offset);
    p.StartSpeedValue = SpeedToRegister(Magnitude(speeds.start_pps), multiplier, round_up_offset);
    FillRamps(p, ramps);
    return p;
}

PositionPlan PlanPosition(MoveSpeeds speeds, const MoveRamps &ramps, std::uint32_t multiplier,
                          std::uint32_t distance)
{
    PositionPlan plan{PlanRamps(speeds, ramps, multiplier)};
    plan.rampdown = ramps.curve == Curve::T ? DecideRampDownT(plan.profile, ramps.times, distance)
                                            : DecideRampDownS(plan.profile, ramps.times, distance);
    ApplyRampDown(plan.rampdown, plan.profile, distance);
    return plan;
}

Result TPositionMove(const Axis &axis, Destination destination, MoveSpeeds speeds, RampTimes times,
                     std::uint8_t trigger)
{
    return PositionMove(axis, destination, speeds, {Curve::T, times, {}}, trigger);
}

Result SPositionMove(const Axis &axis, SRangeSpeeds ranges, Destination destination, MoveSpeeds speeds,
                     RampTimes times, std::uint8_t trigger)
{
    return PositionMove(axis, destination, speeds, {Curve::S, times, ranges}, trigger);
}

} // namespace trevik
