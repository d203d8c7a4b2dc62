// Helical interpolation: axes 0 and 1 along a circle while axis 2 moves in a line; axis 3 counts the circle's steps.
#pragma once

#include "driver/card.h"
#include "motion/arc.h"

#include <cstdint>

namespace trevik
{

// Where the line of axis 2 ends; absolute by its own flag.
struct HelixEnd {
    std::int32_t z;
};

// ArcRun's trigger: Param above 1 here. Param also for a maximum speed too high and for a radius of 0; other results:
// MoveAllowed's over axes 0 to 2 and the start command's. Geometry that gives no circle:
//   through points  ArcAsLine: nothing moves, but an arc with T-curve ramps becomes a line of three axes
//   by radius       Param, or the driver's result if it refuses to tell where the axes are; nothing moves
Result HelixCenterMove(const Card &card, const CenterArc &arc, HelixEnd z, const ArcRun &run);
Result HelixThroughMove(const Card &card, const ThroughArc &arc, ArcEnd end, HelixEnd z, const ArcRun &run);
Result HelixRadiusMove(const Card &card, const RadiusArc &arc, ArcEnd end, HelixEnd z, const ArcRun &run);

} // namespace trevik
