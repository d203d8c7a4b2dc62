// Changes of a running position move: its end alone, or end, speeds and ramps in one call without a new start.
#pragma once

#include "driver/card.h"
#include "motion/position_move.h"

namespace trevik
{

// The target becomes the new end of a running move of `amount` pulses. Its distance from where that move started.
std::uint32_t MoveTarget(AxisShadow &shadow, std::uint32_t amount, Destination destination);

// Writes the registers of a running T-curve or S-curve operation, in the order of every change.
Result WriteChange(const Axis &axis, std::uint32_t distance, const ProfileRegisters &profile, Curve curve);

// New end for the running move, measured from its start. NotMoving: idle, or in continuous mode.
Result PositionChange(const Axis &axis, Destination destination);

// New end, speeds and ramps for the running move. NotMoving: idle. Param: maximum speed too high. A new distance of
// 0 is not refused.
Result TOnlineChange(const Axis &axis, Destination destination, MoveSpeeds speeds, RampTimes times);
Result SOnlineChange(const Axis &axis, SRangeSpeeds ranges, Destination destination, MoveSpeeds speeds,
                     RampTimes times);

} // namespace trevik
