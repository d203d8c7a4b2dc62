// Stops, and the speed an axis has now.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Stops the axes whose byte in `axes` is exactly 1: with deceleration over `decel_s` from their maximum speed to
// standstill, or at once when it is 0.
Result Stop(const Card &card, const std::uint8_t *axes, double decel_s);

// The same for one axis; 0 s is the fastest deceleration here.
Result StopDecelerating(const Axis &axis, double decel_s);
Result StopImmediate(const Axis &axis);

// Stops all four axes at once.
Result EmergencyStop(const Card &card);

// Speed of an axis now, pulses/s.
Result VelocityRead(const Axis &axis, double *speed_pps);

} // namespace trevik
