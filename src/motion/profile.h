// From speeds and times to the registers of the pulse-generator chip. Pure arithmetic: no driver, no state.
//
// The chip counts speed in units of 300 / (m + 1) pulses/s, m being the multiplier, and ramps in periods of its
// reference clock: a ramp over n units takes (rate + 1) x 4 x n of them. Every conversion from a real number
// truncates toward zero; each clamp is stated where it is made.
#pragma once

#include "driver/registers.h"

#include <algorithm>
#include <cstdint>

namespace trevik
{

inline constexpr double reference_clock_hz = 19'660'800.0;
inline constexpr std::uint32_t highest_speed_pps = 6'553'500;
inline constexpr std::uint32_t highest_register = 65535; // of speeds and rates
inline constexpr std::uint32_t highest_s_range = 32767;

// Added before truncating a speed to its register value.
inline constexpr double round_up_offset = 0.95;  // start speeds, maximum speeds of position-type moves
inline constexpr double round_half_offset = 0.5; // operating speed of T-curve velocity moves and speed changes

enum class Curve { T, S };

struct RampTimes {
    double accel_s = 0;
    double decel_s = 0;
};

// Milliseconds of the current interface as the seconds that operations count in.
constexpr double Seconds(std::uint32_t milliseconds)
{
    return milliseconds / 1000.0;
}
constexpr RampTimes Seconds(std::uint32_t accel_ms, std::uint32_t decel_ms)
{
    return {Seconds(accel_ms), Seconds(decel_ms)};
}

// Speed gained in each curved section of an S-curve ramp, pulses/s.
struct SRangeSpeeds {
    std::int32_t accel_pps = 0;
    std::int32_t decel_pps = 0;
};

// What the profile registers of one axis hold.
struct ProfileRegisters {
    std::uint32_t StartSpeedValue = 1; // FL, 1 to 65535
    std::uint32_t MaxSpeedValue = 1;   // FH, 1 to 65535
    std::uint32_t AccelRateValue = 1;  // 1 to 65535, larger is slower
    std::uint32_t DecelRateValue = 1;
    std::uint32_t MultiplierValue = 2;  // m, 2 to 4095
    std::uint32_t RampDownValue = 0;    // pulses, 24 bits
    std::uint32_t AccelSRangeValue = 0; // 0, or 1 to 32767
    std::uint32_t DecelSRangeValue = 0;
};

// Low 32 bits of a real number truncated toward zero into 64 bits; 0 for what does not fit and for no number at
// all.
constexpr std::uint32_t TruncateToRegister(double value)
{
    constexpr double limit = 9223372036854775808.0;
    return value > -limit && value < limit ? static_cast<std::uint32_t>(static_cast<std::int64_t>(value)) : 0;
}

constexpr std::uint32_t Clamp(std::uint32_t value, std::uint32_t highest)
{
    if (value == 0)
        return 1;
    return value > highest ? highest : value;
}

// Absolute value of the same bits read as a signed number; the most negative number stays as it is.
constexpr std::uint32_t Magnitude(std::uint32_t value)
{
    return (value & 0x80000000u) != 0 ? 0u - value : value;
}

// A speed argument above the highest speed that any move accepts.
constexpr bool SpeedTooHigh(std::uint32_t speed)
{
    return static_cast<std::int32_t>(Magnitude(speed)) > static_cast<std::int32_t>(highest_speed_pps);
}

// Multiplier with the finest unit that still expresses `speed` (pulses/s).
std::uint32_t SelectMultiplier(std::uint32_t speed);

// Register value of a speed in pulses/s, 0 or more.
std::uint32_t SpeedToRegister(double speed_pps, std::uint32_t multiplier, double offset);

// Rate register of a T-curve ramp between two speed register values; of an S-curve ramp with S range `s_range`.
// A time of exactly 0 gives the fastest ramp. A start speed above the maximum speed wraps and gives it, too.
std::uint32_t TimeToRateT(double time_s, std::uint32_t start, std::uint32_t maximum);
std::uint32_t TimeToRateS(double time_s, std::uint32_t start, std::uint32_t maximum, std::uint32_t s_range);

// Rate register of a ramp over `rise` speed units, T-curve and S-curve. Without a rise there is nothing to ramp:
// the slowest, also for a time of 0, which otherwise gives the fastest.
std::uint32_t RiseToRateT(double time_s, std::uint32_t rise);
std::uint32_t RiseToRateS(double time_s, std::uint32_t rise, std::uint32_t s_range);

// The clamp that every such rate gets: what remains of a quotient less 1, read as signed, in 1 to 65535.
std::uint32_t QuotientToRate(double quotient);

// Speed gained in each curved section of a ramp of `ramp_ms` whose curved sections last `s_ms` each. False when the
// ramp is shorter than its two curved sections.
bool CheckSCurveTimes(std::uint32_t start_speed, std::uint32_t max_speed, std::uint32_t ramp_ms, std::uint32_t s_ms,
                      std::int32_t &s_range_speed);

// S range register of a speed gained in a curved section; 0 stays 0.
std::uint32_t SRangeToRegister(std::int32_t s_range_speed, std::uint32_t multiplier);

// Register value of a speed in pulses/s by integers alone, as homing computes it.
std::uint32_t WholeSpeedToRegister(std::uint32_t speed, std::uint32_t multiplier);

// CORRECTION_SPEED for a correction speed in pulses/s.
inline std::uint32_t CorrectionToRegister(std::uint32_t correction_speed, std::uint32_t multiplier)
{
    return WholeSpeedToRegister(correction_speed, multiplier);
}

// The ramps of a move.
struct MoveRamps {
    Curve curve = Curve::T;
    RampTimes times;
    SRangeSpeeds ranges; // S-curve only
};

// Fills in rates and S ranges from the speeds and the multiplier that the registers hold.
void FillRamps(ProfileRegisters &profile, const MoveRamps &ramps);

// Start command of a move; speeds as magnitudes, but the maximum of a velocity move, which has its sign.
Command SelectStartCommand(std::uint32_t start_speed, std::uint32_t max_speed, RampTimes times);

// The one ramp of an S-curve velocity move as its caller gives it. Its speeds may have signs and fall: the curved
// sections are those of the same rise.
struct SRampTime {
    std::uint32_t start_speed;
    std::uint32_t max_speed;
    std::uint32_t ramp_ms;
    std::uint32_t s_ms;

    // False when the ramp is shorter than its curved sections.
    bool ranges(SRangeSpeeds &speeds) const
    {
        const auto [low, high] = std::minmax({Magnitude(start_speed), Magnitude(max_speed)});
        const bool fits = CheckSCurveTimes(low, high, ramp_ms, s_ms, speeds.accel_pps);
        speeds.decel_pps = speeds.accel_pps;
        return fits;
    }
};

// The two ramps of an S-curve move as its caller gives them.
struct SRampTimes {
    std::uint32_t start_speed;
    std::uint32_t max_speed;
    std::uint32_t accel_ms;
    std::uint32_t decel_ms;
    std::uint32_t s_accel_ms;
    std::uint32_t s_decel_ms;

    // False when one of the ramps is shorter than its curved sections.
    bool ranges(SRangeSpeeds &speeds) const
    {
        const std::uint32_t start = Magnitude(start_speed);
        const std::uint32_t maximum = Magnitude(max_speed);
        return CheckSCurveTimes(start, maximum, accel_ms, s_accel_ms, speeds.accel_pps) &&
               CheckSCurveTimes(start, maximum, decel_ms, s_decel_ms, speeds.decel_pps);
    }
};

} // namespace trevik
