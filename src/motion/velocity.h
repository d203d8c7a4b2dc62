// Velocity moves: an axis runs at a speed, in the direction of its sign, until it is stopped.
#pragma once

#include "driver/card.h"
#include "motion/move.h"
#include "motion/profile.h"

#include <cstdint>

namespace trevik
{

// Starts the axis whatever it is doing: Param for a start or maximum speed too high, otherwise the start command's
// result. The sign of the maximum speed is the direction. A start speed above the maximum speed ramps down to it.
Result TVelocityMove(const Axis &axis, MoveSpeeds speeds, double ramp_s);

// `range.accel_pps` is the speed gained in each curved section.
Result SVelocityMove(const Axis &axis, SRangeSpeeds range, MoveSpeeds speeds, double ramp_s);

// New speed for the running velocity move, reached after `ramp_s`. NotMoving: the axis was not set up for one.
Result VelocityChange(const Axis &axis, std::uint32_t new_speed, double ramp_s);

// The same with an S-curve ramp given by the milliseconds of its linear section and of each curved one, and without
// looking whether a velocity move is set up.
Result S1VelocityChange(const Axis &axis, std::uint32_t new_speed, std::uint32_t linear_ms, std::uint32_t s_ms);

} // namespace trevik
