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
void FillLineRamps(ProfileRegisters &p, const LineRamps &ramps)
{
    if (ramps.kind != LineRamps::Kind::STimes) {
        FillRamps(p, {ramps.curve(), ramps.times, ramps.ranges});
        return;
    }
    const std::uint32_t rise = p.MaxSpeedValue - p.StartSpeedValue;
    const RampRegisters accel = RampFromTimes(rise, ramps.accel_ms, ramps.s_accel_ms);
    const RampRegisters decel = RampFromTimes(rise, ramps.decel_ms, ramps.s_decel_ms);
    p.AccelRateValue = accel.rate;
    p.DecelRateValue = decel.rate;
    p.AccelSRangeValue = accel.s_range;
    p.DecelSRangeValue = decel.s_range;
}

RampDownCase DecideLine(const ProfileRegisters &first, const LineRamps &ramps, std::uint32_t distance)
{
    if (ramps.curve() == Curve::S)
        return DecideRampDownS(first, ramps.times, distance);
    return ramps.running ? DecideManualRampDownT(first, ramps.times, distance)
                         : DecideRampDownT(first, ramps.times, distance);
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
    FillLineRamps(common, ramps);

    LinePlan plan;
    plan.rampdown = DecideLine(common, ramps, distances[0]);
    for (std::size_t axis = 0; axis < distances.size(); ++axis) {
        plan.profiles[axis] = common;
        ApplyRampDown(plan.rampdown, plan.profiles[axis], distances[axis]);
    }
    return plan;
}

} // namespace trevik
