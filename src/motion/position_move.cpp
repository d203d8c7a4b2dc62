#include "motion/position_move.h"

#include "motion/target.h"
#include "status/motion_status.h"

namespace trevik
{

TPositionPlan PlanTPosition(MoveSpeeds speeds, RampTimes times, std::uint32_t multiplier, std::uint32_t distance)
{
    TPositionPlan plan;
    ProfileRegisters &p = plan.profile;
    p.MultiplierValue = multiplier;
    p.MaxSpeedValue = SpeedToRegister(Magnitude(speeds.max_pps), multiplier, round_up_offset);
    p.StartSpeedValue = SpeedToRegister(Magnitude(speeds.start_pps), multiplier, round_up_offset);
    p.AccelRateValue = TimeToRateT(times.accel_s, p.StartSpeedValue, p.MaxSpeedValue);
    p.DecelRateValue = TimeToRateT(times.decel_s, p.StartSpeedValue, p.MaxSpeedValue);
    plan.rampdown = DecideRampDownT(p, times, distance);
    ApplyRampDown(plan.rampdown, p, distance);
    return plan;
}

Result TPositionMove(const Axis &axis, Destination destination, MoveSpeeds speeds, RampTimes times,
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
    const auto [profile, rampdown] = PlanTPosition(speeds, times, multiplier, Magnitude(distance));
    const bool backlash = shadow.BacklashEnabled != 0;
    ComposeModeWord(shadow, backlash ? OperationCode::PositioningBacklash : OperationCode::Positioning, Curve::T,
                    rampdown);
    ApplyStartTrigger(axis, static_cast<StartTrigger>(trigger));

    WriteSpeedRegisters(axis, distance, profile);
    WriteMoveRegister(axis, Register::RAMPDOWN_POINT, profile.RampDownValue);
    WriteMoveRegister(axis, Register::MODE, shadow.ModeWord);
    axis.write(Register::CORRECTION_SPEED, CorrectionToRegister(shadow.CorrectionSpeed, multiplier));
    const Result result =
        axis.command(SelectStartCommand(Magnitude(speeds.start_pps), Magnitude(speeds.max_pps), times));
    ClearStartTrigger(shadow);
    return result;
}

Result PositionChange(const Axis &axis, Destination destination)
{
    AxisShadow &shadow = axis.shadow();
    if (shadow.ContinuousFlag != 0 || Idle(axis))
        return Result::NotMoving;
    std::uint32_t amount = 0;
    axis.read(Register::DISTANCE, amount);
    const std::uint32_t start = shadow.LastTarget - amount;
    const std::uint32_t end = destination.absolute ? destination.coordinate : start + destination.coordinate;
    shadow.LastTarget = end;
    return axis.write(Register::DISTANCE, end - start);
}

} // namespace trevik
