// Linear interpolation of 2, 3 or 4 axes of a card.
#pragma once

#include "driver/card.h"
#include "motion/axis_set.h"
#include "motion/line_profile.h"
#include "motion/move.h"

#include <array>
#include <cstdint>

namespace trevik
{

// Where a line goes. Coordinates in the order of the set's axes; flags by axis number, not 0 for an absolute
// coordinate, read for axes of the set only.
struct LineDestination {
    std::array<std::int32_t, 4> coordinates;
    const std::uint8_t *absolute_flags;
};

// Moves the axes of a set along a line. Param: no such set, no flags, or a trigger that this number of axes does
// not take (2 axes and 3: above 2; 4: above 1).
Result LineMove(const Card &card, const AxisSet &set, const LineDestination &destination, MoveSpeeds speeds,
                const LineRamps &ramps, std::uint8_t trigger);

// New end, speeds and ramps for the running line of the axes of a set; one flag for all axes, absolute or relative
// to where the line started. T-curve only. Param: no such set, or (after the targets have moved) a maximum speed too
// high; NotMoving: an axis is idle.
Result LineChange(const Card &card, const AxisSet &set, const std::array<std::int32_t, 4> &coordinates,
                  bool absolute, MoveSpeeds speeds, RampTimes times);

} // namespace trevik
