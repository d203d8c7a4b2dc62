#include "motion/line_profile.h"

#include <algorithm>
#include <cmath>

namespace trevik
{
namespace
{

struct RampRegisters {
    std::uint32_t rate;
    std::uint32_t s_range;
};

// A ramp of a rise in speed units whose linear section lasts `linear_ms` and whose curved sections `s_ms` each.
// Rise and divisors are unsigned 32-bit numbers and wrap.
RampRegisters RampFromTimes(std::uint32_t rise, std::uint32_t linear_ms, std::uint32_t s_ms)
{
    std::uint32_t s_range = 0;
    double ramp_ms = linear_ms;
    std::uint32_t periods = rise * 8000;
    if (s_ms != 0) {
        const std::uint32_t divisor = (s_ms + linear_ms) * 2;
        s_range = Clamp(TruncateToRegister(static_cast<double>(s_ms) * rise / divisor), highest_s_range);
        ramp_ms = linear_ms + 2.0 * s_ms;
        periods = (rise + 2 * s_range) * 4000;
    }
    if (linear_ms == 0)
        return {1, s_range};
    if (periods == 0)
        return {highest_register, s_range};
    return {QuotientToRate(ramp_ms * reference_clock_hz / periods), s_range};
}

// Rates and S ranges from the speed registers.
void FillRamps(ProfileRegisters &p, const LineRamps &ramps)
{
    const std::uint32_t start = p.StartSpeedValue;
    const std::uint32_t maximum = p.MaxSpeedValue;
    switch (ramps.kind) {
    case LineRamps::Kind::T:
        p.AccelRateValue = TimeToRateT(ramps.times.accel_s, start, maximum);
        p.DecelRateValue = TimeToRateT(ramps.times.decel_s, start, maximum);
        break;
    case LineRamps::Kind::STimes: {
        const RampRegisters accel = RampFromTimes(maximum - start, ramps.accel_ms, ramps.s_accel_ms);
        const RampRegisters decel = RampFromTimes(maximum - start, ramps.decel_ms, ramps.s_decel_ms);
        p.AccelRateValue = accel.rate;
        p.DecelRateValue = decel.rate;
        p.AccelSRangeValue = accel.s_range;
        p.DecelSRangeValue = decel.s_range;
        break;
    }
    case LineRamps::Kind::SRanges:
        p.AccelSRangeValue = SRangeToRegister(ramps.ranges.accel_pps, p.MultiplierValue);
        p.DecelSRangeValue = SRangeToRegister(ramps.ranges.decel_pps, p.MultiplierValue);
        p.AccelRateValue = TimeToRateS(ramps.times.accel_s, start, maximum, p.AccelSRangeValue);
        p.DecelRateValue = TimeToRateS(ramps.times.decel_s, start, maximum, p.DecelSRangeValue);
        break;
    }
}

} // namespace

double PathFactor(std::span<const std::uint32_t> distances)
{
    double squares = 0;
    double longest = 0;
    for (const std::uint32_t distance : distances) {
        const double d = distance;
        squares += d * d;
        longest = std::max(longest, d);
    }
    return squares == 0 ? 0 : longest / std::sqrt(squares);
}

LinePlan PlanLine(std::span<const std::uint32_t> distances, std::uint32_t start_speed, std::uint32_t max_speed,
                  const LineRamps &ramps, std::uint32_t multiplier)
{
    const double k = PathFactor(distances);
    ProfileRegisters common;
    common.MultiplierValue = multiplier;
    common.MaxSpeedValue = SpeedToRegister(max_speed * k, multiplier, round_up_offset);
    common.StartSpeedValue = SpeedToRegister(start_speed * k, multiplier, round_up_offset);
    FillRamps(common, ramps);

    LinePlan plan;
    plan.rampdown = ramps.curve() == Curve::T ? DecideRampDownT(common, ramps.times, distances[0])
                                              : DecideRampDownS(common, ramps.times, distances[0]);
    for (std::size_t axis = 0; axis < distances.size(); ++axis) {
        plan.profiles[axis] = common;
        ApplyRampDown(plan.rampdown, plan.profiles[axis], distances[axis]);
    }
    return plan;
}

} // namespace trevik
