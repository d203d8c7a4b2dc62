#include "trevik-run/ramps.h"

#include <algorithm>
#include <cmath>

namespace trevik_run
{
namespace
{

constexpr double clock_hz = 19660800;
constexpr double min_steps = 2;     // rate register 1
constexpr double max_steps = 65536; // rate register 65535

// A ramp down without a ramp up is given its slow-down point by the library. Where the set's first axis is too
// short to show the full profile, that point is the share R / (R + 2) of the move; so the move has to be longer
// than the ramp by (R + 2) / R.
constexpr double extra_steps_down = 2;

std::uint32_t Multiplier(double top_pps)
{
    const auto speed = static_cast<std::uint32_t>(std::max(1.0, top_pps));
    return std::clamp<std::uint32_t>(19660500 / speed - 1, 2, 4095);
}

} // namespace

RampMaker::RampMaker(double top_pps, double wanted_pps2)
{
    const double divisor = Multiplier(top_pps) + 1;
    units_per_pps_ = divisor / 300;
    pulses_divisor_ = divisor * 32768;
    const double one_step_pps2 = clock_hz / 4 / units_per_pps_; // the acceleration of R = 1
    const double steps = std::clamp(std::ceil(one_step_pps2 / wanted_pps2 - 1e-9), min_steps, max_steps);
    accel_pps2_ = one_step_pps2 / steps;
    decel_pps2_ = accel_pps2_ * steps / (steps + extra_steps_down);
}

std::uint32_t RampMaker::Register(double pps) const
{
    return std::clamp<std::uint32_t>(static_cast<std::uint32_t>(units_per_pps_ * pps + 0.95), 1, 65535);
}

Ramp RampMaker::Choose(RampKind kind, double low_pps, double high_pps, double factor, double room) const
{
    const double low = Register(low_pps * factor);
    const double high = Register(high_pps * factor);
    if (high <= low) {
        return {};
    }
    const double curve = kind == RampKind::down_s ? 2 : 1;
    const double extra = kind == RampKind::up ? 0 : extra_steps_down;
    const double steps_per_ms = clock_hz / 1000 / ((high - low) * 4 * curve);
    const double pulses_per_step = (high * high - low * low) * curve / pulses_divisor_;
    double time_ms = std::ceil((high_pps - low_pps) / accel_pps2_ * 1000);
    for (int attempt = 0; attempt < 4 && time_ms >= 1; ++attempt) {
        const double steps = std::clamp(std::trunc(time_ms * steps_per_ms), min_steps, max_steps);
        const double needed = pulses_per_step * (steps + extra);
        if (needed <= room) {
            return {static_cast<std::uint32_t>(time_ms), pulses_per_step * steps, needed};
        }
        time_ms = std::min(time_ms - 1, std::floor(time_ms * room / needed));
    }
    return {};
}

} // namespace trevik_run
