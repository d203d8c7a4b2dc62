#include "motion/velocity.h"

namespace trevik
{
namespace
{

OperationCode ContinuousCode(std::uint32_t speed)
{
    return static_cast<std::int32_t>(speed) < 0 ? OperationCode::ContinuousMinus : OperationCode::ContinuousPlus;
}

// The one rate register that a ramp between two speeds uses, and the S range register beside it.
struct RampSide {
    bool drop;
    std::uint32_t rise; // speed units, whichever way

    RampSide(std::uint32_t from, std::uint32_t to) : drop(to < from), rise(drop ? from - to : to - from) {}

    Register rate() const { return drop ? Register::DECEL_RATE : Register::ACCEL_RATE; }
    Register s_range() const { return drop ? Register::S_DECEL_RANGE : Register::S_ACCEL_RANGE; }
};

Result StartVelocity(const Axis &axis, MoveSpeeds speeds, double ramp_s, const ProfileRegisters &profile,
                     Curve curve)
{
    AxisShadow &shadow = axis.shadow();
    ComposeModeWord(shadow, ContinuousCode(speeds.max_pps), curve);
    axis.write(Register::MODE, shadow.ModeWord);
    axis.write(Register::START_SPEED, profile.StartSpeedValue);
    axis.write(Register::MAX_SPEED, profile.MaxSpeedValue);
    axis.write(Register::MULTIPLIER, profile.MultiplierValue);
    return axis.command(SelectStartCommand(Magnitude(speeds.start_pps), speeds.max_pps, {ramp_s, ramp_s}));
}

ProfileRegisters PlanSpeeds(const Axis &axis, MoveSpeeds speeds, double offset)
{
    ProfileRegisters p;
    p.MultiplierValue = VelocityMultiplier(axis.shadow(), speeds.max_pps);
    p.MaxSpeedValue = SpeedToRegister(Magnitude(speeds.max_pps), p.MultiplierValue, offset);
    p.StartSpeedValue = SpeedToRegister(Magnitude(speeds.start_pps), p.MultiplierValue, round_up_offset);
    return p;
}

// What a speed change starts from: the registers of the running move, and the speed it is to take.
struct SpeedChange {
    std::uint32_t multiplier;
    std::uint32_t new_maximum;
    std::uint32_t s_accel = 0;
    std::uint32_t s_decel = 0;
    RampSide side{0, 0};
    bool s_curve;

    SpeedChange(const Axis &axis, std::uint32_t new_speed)
        : multiplier(VelocityMultiplier(axis.shadow(), new_speed)),
          new_maximum(SpeedToRegister(Magnitude(new_speed), multiplier, round_half_offset)),
          s_curve(mode_field::s_curve.get(axis.shadow().ModeWord) != 0)
    {
        std::uint32_t old_maximum = 0;
        axis.read(Register::MAX_SPEED, old_maximum);
        axis.read(Register::S_ACCEL_RANGE, s_accel);
        axis.read(Register::S_DECEL_RANGE, s_decel);
        side = RampSide(old_maximum, new_maximum);
    }

    std::uint32_t s_range() const { return side.drop ? s_decel : s_accel; }
};

// The running move takes its new maximum speed; the curve of its ramps stays.
Result WriteNewSpeed(const Axis &axis, std::uint32_t new_speed, const SpeedChange &change)
{
    AxisShadow &shadow = axis.shadow();
    ComposeModeWord(shadow, ContinuousCode(new_speed), change.s_curve ? Curve::S : Curve::T);
    axis.write(Register::MODE, shadow.ModeWord);
    axis.write(Register::MULTIPLIER, change.multiplier);
    return axis.write(Register::MAX_SPEED, change.new_maximum);
}

struct RateAndRange {
    std::uint32_t rate;
    std::uint32_t s_range;
};

// The ramp of a change by times, in real arithmetic throughout.
RateAndRange RampOfTimes(double rise, double linear_ms, double s_ms, bool s_curve)
{
    std::uint32_t s_range = 0;
    double ramp_ms = linear_ms;
    double periods = rise * 4;
    if (s_curve && s_ms == 0)
        periods = rise * 8;
    if (s_curve && s_ms > 0) {
        s_range = TruncateToRegister(rise * s_ms / (2 * s_ms + 2 * linear_ms));
        ramp_ms = linear_ms + 2 * s_ms;
        periods = (rise + 2.0 * s_range) * 4;
    }
    if (periods == 0)
        return {highest_register, s_range};
    return {QuotientToRate(ramp_ms / 1000 * reference_clock_hz / periods), s_range};
}

} // namespace

Result TVelocityMove(const Axis &axis, MoveSpeeds speeds, double ramp_s)
{
    if (SpeedTooHigh(speeds.max_pps) || SpeedTooHigh(speeds.start_pps))
        return Result::Param;
    const ProfileRegisters profile = PlanSpeeds(axis, speeds, round_half_offset);
    const RampSide side(profile.StartSpeedValue, profile.MaxSpeedValue);
    axis.write(side.rate(), RiseToRateT(ramp_s, side.rise));
    return StartVelocity(axis, speeds, ramp_s, profile, Curve::T);
}

Result SVelocityMove(const Axis &axis, SRangeSpeeds range, MoveSpeeds speeds, double ramp_s)
{
    if (SpeedTooHigh(speeds.max_pps) || SpeedTooHigh(speeds.start_pps))
        return Result::Param;
    const ProfileRegisters profile = PlanSpeeds(axis, speeds, round_up_offset);
    const std::uint32_t s_range = SRangeToRegister(range.accel_pps, profile.MultiplierValue);
    const RampSide side(profile.StartSpeedValue, profile.MaxSpeedValue);
    axis.write(side.rate(), RiseToRateS(ramp_s, side.rise, s_range));
    axis.write(side.s_range(), s_range);
    return StartVelocity(axis, speeds, ramp_s, profile, Curve::S);
}

Result VelocityChange(const Axis &axis, std::uint32_t new_speed, double ramp_s)
{
    if (SpeedTooHigh(new_speed))
        return Result::Param;
    std::uint32_t mode = mode_field::operation.mask(); // of no velocity move, should the read be refused
    axis.read(Register::MODE, mode);
    const auto operation = static_cast<OperationCode>(mode_field::operation.get(mode));
    if (operation != OperationCode::ContinuousPlus && operation != OperationCode::ContinuousMinus)
        return Result::NotMoving;
    const SpeedChange change(axis, new_speed);
    const std::uint32_t rise = change.side.rise;
    axis.write(change.side.rate(),
               change.s_curve ? RiseToRateS(ramp_s, rise, change.s_range()) : RiseToRateT(ramp_s, rise));
    return WriteNewSpeed(axis, new_speed, change);
}

Result S1VelocityChange(const Axis &axis, std::uint32_t new_speed, std::uint32_t linear_ms, std::uint32_t s_ms)
{
    if (SpeedTooHigh(new_speed))
        return Result::Param;
    const SpeedChange change(axis, new_speed);
    const auto [rate, s_range] = RampOfTimes(change.side.rise, linear_ms, s_ms, change.s_curve);
    axis.write(change.side.rate(), rate);
    axis.write(change.side.s_range(), s_range);
    return WriteNewSpeed(axis, new_speed, change);
}

} // namespace trevik
