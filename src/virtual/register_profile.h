// From the registers of a section to pulses and seconds.
#pragma once

#include "driver/mode_word.h"
#include "driver/registers.h"
#include "virtual/arithmetic.h"
#include "virtual/operation.h"
#include "virtual/speed_profile.h"

#include <cstdint>

namespace trevik::virtual_card
{

inline constexpr double reference_clock_hz = 19'660'800.0;

// One speed unit, pulses/s.
constexpr double SpeedUnit(std::uint32_t multiplier)
{
    return 300.0 / (multiplier + 1.0);
}

// A ramp register counts reference clocks: 4 for each unit of speed and step of the rate. One unit is 300 /
// units_per pulses/s.
constexpr RampShape Ramp(double unit_pps, double units_per, std::uint32_t rate, std::uint32_t s_range, bool s_curve)
{
    constexpr double clocks_per_unit = 4;
    constexpr double seconds_per_clock_unit = clocks_per_unit / (300 * reference_clock_hz);
    const double steps = rate + 1.0;
    return {unit_pps * (reference_clock_hz / clocks_per_unit) / steps, steps * units_per * seconds_per_clock_unit,
            s_curve, s_range * unit_pps};
}

// Values of an operation in pulses and seconds, from the direct registers of its leader.
template <class Section>
ProfileInput ProfileOf(const Section &s, double distance)
{
    const double units_per = s.reg(Register::MULTIPLIER) + 1.0;
    const double unit = 300.0 / units_per;
    const std::uint32_t mode = s.reg(Register::MODE);
    const bool s_curve = mode_field::s_curve.get(mode) != 0;
    ProfileInput input;
    input.distance = distance;
    input.start_pps = s.reg(Register::START_SPEED) * unit;
    input.max_pps = s.reg(Register::MAX_SPEED) * unit;
    input.accel = Ramp(unit, units_per, s.reg(Register::ACCEL_RATE), s.reg(Register::S_ACCEL_RANGE), s_curve);
    input.decel = Ramp(unit, units_per, s.reg(Register::DECEL_RATE), s.reg(Register::S_DECEL_RANGE), s_curve);
    input.start = s.start;
    input.manual_rampdown = mode_field::manual_rampdown.get(mode) != 0;
    input.rampdown_pulses = s.reg(Register::RAMPDOWN_POINT);
    return input;
}

// Counters 1 to 4.
constexpr Register CounterRegister(unsigned number)
{
    return static_cast<Register>(WriteCode(Register::COUNTER1) + number - 1);
}

constexpr double ProfileDistance(std::int64_t pulses)
{
    return pulses >= endless ? never : static_cast<double>(pulses);
}

} // namespace trevik::virtual_card
