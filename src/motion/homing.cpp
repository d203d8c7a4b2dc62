#include "motion/homing.h"

namespace trevik
{
namespace
{

// One rate for both ramps, clamped as an unsigned number: what the division leaves less 1 wraps to the slowest.
std::uint32_t HomeRate(double ramp_s, std::uint32_t start, std::uint32_t maximum)
{
    const std::uint32_t periods = (maximum - start) * 4;
    return Clamp(TruncateToRegister(ramp_s * reference_clock_hz / periods) - 1, highest_register);
}

Result HomingAllowed(const Axis &axis, MoveSpeeds speeds)
{
    if (const Result allowed = MoveAllowed(axis); allowed != Result::Ok)
        return allowed;
    return Magnitude(speeds.max_pps) > highest_speed_pps ? Result::Param : Result::Ok;
}

ProfileRegisters PlanHoming(const Axis &axis, MoveSpeeds speeds, double ramp_s)
{
    ProfileRegisters p;
    p.MultiplierValue = VelocityMultiplier(axis.shadow(), speeds.max_pps);
    p.MaxSpeedValue = WholeSpeedToRegister(Magnitude(speeds.max_pps), p.MultiplierValue);
    p.StartSpeedValue = WholeSpeedToRegister(Magnitude(speeds.start_pps), p.MultiplierValue);
    p.AccelRateValue = p.DecelRateValue = HomeRate(ramp_s, p.StartSpeedValue, p.MaxSpeedValue);
    return p;
}

void WriteHoming(const Axis &axis, OperationCode operation, const ProfileRegisters &profile)
{
    AxisShadow &shadow = axis.shadow();
    ComposeModeWord(shadow, operation, Curve::T);
    WriteSpeedRegisters(axis, profile);
    WriteMoveRegister(axis, Register::MODE, shadow.ModeWord);
    axis.write(Register::CORRECTION_SPEED, CorrectionToRegister(shadow.CorrectionSpeed, profile.MultiplierValue));
}

Result StartHoming(const Axis &axis, MoveSpeeds speeds, double ramp_s)
{
    return axis.command(
        SelectStartCommand(Magnitude(speeds.start_pps), Magnitude(speeds.max_pps), {ramp_s, ramp_s}));
}

} // namespace

Result HomeModeSet(const Axis &axis, std::uint8_t mode, std::uint8_t option)
{
    if (mode > 12 || option > 15)
        return Result::Param;
    return Modify(axis, home_config::mode.to(mode), home_config::option.to(option));
}

Result HomeStart(const Axis &axis, MoveSpeeds speeds, double ramp_s, std::uint8_t direction)
{
    if (const Result allowed = HomingAllowed(axis, speeds); allowed != Result::Ok)
        return allowed;
    WriteHoming(axis, direction == 0 ? OperationCode::HomePlus : OperationCode::HomeMinus,
                PlanHoming(axis, speeds, ramp_s));
    return StartHoming(axis, speeds, ramp_s);
}

Result HomeSearch(const Axis &axis, MoveSpeeds speeds, double ramp_s, std::uint8_t direction,
                  std::uint32_t distance)
{
    if (const Result allowed = HomingAllowed(axis, speeds); allowed != Result::Ok)
        return allowed;
    WriteMoveRegister(axis, Register::DISTANCE, distance);
    WriteHoming(axis, direction == 0 ? OperationCode::HomeSearchPlus : OperationCode::HomeSearchMinus,
                PlanHoming(axis, speeds, ramp_s));
    Modify(axis, home_config::mode.to(0));
    return StartHoming(axis, speeds, ramp_s);
}

} // namespace trevik
