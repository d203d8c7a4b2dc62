// Changes of a running position move: its end alone, or end, speeds and ramps in one call without a new start.
#pragma once

#include "driver/card.h"
#include "motion/position_move.h"

namespace trevik
{

// New end for the running move, measured from its start. NotMoving: idle, or in continuous mode.
Result PositionChange(const Axis &axis, Destination destination);

// New end, speeds and ramps for the running move. NotMoving: idle. Param: maximum speed too high. A new distance of
// 0 is not refused.
Result TOnlineChange(const Axis &axis, Destination destination, MoveSpeeds speeds, RampTimes times);
Result SOnlineChange(const Axis &axis, SRangeSpeeds ranges, Destination destination, MoveSpeeds speeds,
                     RampTimes times);

} // namespace trevik
