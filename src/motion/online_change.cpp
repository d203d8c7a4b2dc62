#include "motion/online_change.h"

#include "status/motion_status.h"

namespace trevik
{

std::uint32_t MoveTarget(AxisShadow &shadow, std::uint32_t amount, Destination destination)
{
    const std::uint32_t start = shadow.LastTarget - amount;
    const std::uint32_t end = destination.absolute ? destination.coordinate : start + destination.coordinate;
    shadow.LastTarget = end;
    return end - start;
}

// Always the registers of the running operation, also in continuous mode.
Result WriteChange(const Axis &axis, std::uint32_t distance, const ProfileRegisters &profile, Curve curve)
{
    axis.write(Register::DISTANCE, distance);
    axis.write(Register::MULTIPLIER, profile.MultiplierValue);
    axis.write(Register::MAX_SPEED, profile.MaxSpeedValue);
    axis.write(Register::START_SPEED, profile.StartSpeedValue);
    axis.write(Register::ACCEL_RATE, profile.AccelRateValue);
    axis.write(Register::DECEL_RATE, profile.DecelRateValue);
    if (curve == Curve::S) {
        axis.write(Register::S_ACCEL_RANGE, profile.AccelSRangeValue);
        axis.write(Register::S_DECEL_RANGE, profile.DecelSRangeValue);
    }
    axis.write(Register::RAMPDOWN_POINT, profile.RampDownValue);
    return axis.write(Register::MODE, axis.shadow().ModeWord);
}

namespace
{

// A refused read counts as 0.
std::uint32_t MoveTarget(const Axis &axis, Destination destination)
{
    std::uint32_t amount = 0;
    axis.read(Register::DISTANCE, amount);
    return MoveTarget(axis.shadow(), amount, destination);
}

Result OnlineChange(const Axis &axis, Destination destination, MoveSpeeds speeds, const MoveRamps &ramps)
{
    if (Idle(axis))
        return Result::NotMoving;
    if (SpeedTooHigh(speeds.max_pps))
        return Result::Param;
    AxisShadow &shadow = axis.shadow();
    ProfileRegisters profile = PlanRamps(speeds, ramps, PositionMultiplier(shadow, speeds.max_pps));
    const std::uint32_t distance = MoveTarget(axis, destination);
    const std::uint32_t size = Magnitude(distance);
    const RampDownCase rampdown = ramps.curve == Curve::T ? DecideManualRampDownT(profile, ramps.times, size)
                                                          : DecideRampDownS(profile, ramps.times, size);
    ApplyRampDown(rampdown, profile, size);
    ComposeModeWord(shadow, PositioningCode(shadow), ramps.curve, rampdown);
    return WriteChange(axis, distance, profile, ramps.curve);
}

} // namespace

Result PositionChange(const Axis &axis, Destination destination)
{
    if (axis.shadow().ContinuousFlag != 0 || Idle(axis))
        return Result::NotMoving;
    return axis.write(Register::DISTANCE, MoveTarget(axis, destination));
}

Result TOnlineChange(const Axis &axis, Destination destination, MoveSpeeds speeds, RampTimes times)
{
    return OnlineChange(axis, destination, speeds, {Curve::T, times, {}});
}

Result SOnlineChange(const Axis &axis, SRangeSpeeds ranges, Destination destination, MoveSpeeds speeds,
                     RampTimes times)
{
    return OnlineChange(axis, destination, speeds, {Curve::S, times, ranges});
}

} // namespace trevik
