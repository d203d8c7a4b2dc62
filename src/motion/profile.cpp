#include "motion/profile.h"

namespace trevik
{
namespace
{

// Rate of a ramp that takes `periods` reference clocks for each step of the rate; `flat`: there is nothing to ramp.
std::uint32_t RampRate(double time_s, std::uint32_t periods, bool flat)
{
    return flat ? highest_register : QuotientToRate(time_s * reference_clock_hz / periods);
}

} // namespace

std::uint32_t SelectMultiplier(std::uint32_t speed)
{
    constexpr std::uint32_t units_per_second = highest_register * 300;
    constexpr std::uint32_t lowest = 2;
    constexpr std::uint32_t highest = 4095;
    const std::uint32_t magnitude = Magnitude(speed);
    if (magnitude <= 1)
        return highest;
    const std::uint32_t m = units_per_second / magnitude - 1; // wraps for speeds that no move accepts
    if (m < lowest)
        return lowest;
    return m > highest ? highest : m;
}

std::uint32_t SpeedToRegister(double speed_pps, std::uint32_t multiplier, double offset)
{
    return Clamp(TruncateToRegister((multiplier + 1) * speed_pps / 300 + offset), highest_register);
}

std::uint32_t QuotientToRate(double quotient)
{
    const auto rate = static_cast<std::int32_t>(TruncateToRegister(quotient) - 1);
    if (rate < 1)
        return 1;
    return rate > static_cast<std::int32_t>(highest_register) ? highest_register : static_cast<std::uint32_t>(rate);
}

std::uint32_t RiseToRateT(double time_s, std::uint32_t rise)
{
    return RampRate(time_s, rise * 4, rise == 0);
}

std::uint32_t RiseToRateS(double time_s, std::uint32_t rise, std::uint32_t s_range)
{
    if (s_range == 0)
        return RampRate(time_s, rise * 8, rise == 0);
    const std::uint32_t whole = rise + 2 * s_range;
    return RampRate(time_s, whole * 4, whole == 0);
}

std::uint32_t TimeToRateT(double time_s, std::uint32_t start, std::uint32_t maximum)
{
    return time_s == 0.0 ? 1 : RiseToRateT(time_s, maximum - start);
}

std::uint32_t TimeToRateS(double time_s, std::uint32_t start, std::uint32_t maximum, std::uint32_t s_range)
{
    return time_s == 0.0 ? 1 : RiseToRateS(time_s, maximum - start, s_range);
}

bool CheckSCurveTimes(std::uint32_t start_speed, std::uint32_t max_speed, std::uint32_t ramp_ms, std::uint32_t s_ms,
                      std::int32_t &s_range_speed)
{
    if (ramp_ms < 2 * s_ms)
        return false;
    const auto rise = static_cast<std::int32_t>(max_speed - start_speed);
    const double doubled_rest_ms = (static_cast<double>(ramp_ms) - s_ms) * 2;
    s_range_speed =
        static_cast<std::int32_t>(TruncateToRegister(static_cast<double>(rise) * s_ms / doubled_rest_ms));
    return true;
}

std::uint32_t SRangeToRegister(std::int32_t s_range_speed, std::uint32_t multiplier)
{
    if (s_range_speed == 0)
        return 0;
    return Clamp((multiplier + 1) * static_cast<std::uint32_t>(s_range_speed) / 300, highest_s_range);
}

std::uint32_t WholeSpeedToRegister(std::uint32_t speed, std::uint32_t multiplier)
{
    return Clamp((multiplier + 1) * speed / 300, highest_register);
}

void FillRamps(ProfileRegisters &profile, const MoveRamps &ramps)
{
    const std::uint32_t start = profile.StartSpeedValue;
    const std::uint32_t maximum = profile.MaxSpeedValue;
    if (ramps.curve == Curve::T) {
        profile.AccelRateValue = TimeToRateT(ramps.times.accel_s, start, maximum);
        profile.DecelRateValue = TimeToRateT(ramps.times.decel_s, start, maximum);
        return;
    }
    profile.AccelSRangeValue = SRangeToRegister(ramps.ranges.accel_pps, profile.MultiplierValue);
    profile.DecelSRangeValue = SRangeToRegister(ramps.ranges.decel_pps, profile.MultiplierValue);
    profile.AccelRateValue = TimeToRateS(ramps.times.accel_s, start, maximum, profile.AccelSRangeValue);
    profile.DecelRateValue = TimeToRateS(ramps.times.decel_s, start, maximum, profile.DecelSRangeValue);
}

Command SelectStartCommand(std::uint32_t start_speed, std::uint32_t max_speed, RampTimes times)
{
    constexpr double shortest_ramp_s = 0.001;
    if (static_cast<std::int32_t>(Magnitude(max_speed - start_speed)) < 2)
        return Command::CMD_START_HIGH_DEC;
    if (times.accel_s >= shortest_ramp_s)
        return Command::CMD_START_ACC_DEC;
    return times.decel_s >= shortest_ramp_s ? Command::CMD_START_HIGH_DEC : Command::CMD_START_HIGH;
}

} // namespace trevik
