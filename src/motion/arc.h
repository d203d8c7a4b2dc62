// Circular interpolation of two axes: arcs and full circles, at constant speed or with ramps.
#pragma once

#include "driver/card.h"
#include "motion/arc_geometry.h"
#include "motion/axis_set.h"
#include "motion/move.h"
#include "motion/profile.h"

#include <cstdint>

namespace trevik
{

// Given by its center and end point.
struct CenterArc {
    Point center;
    Point end;
    std::uint8_t direction = 0; // 0: the sense of rising octants
};

// Given by a point on the way (of a full circle: any two points on it).
struct ThroughArc {
    Point way;
    Point end;
};

// Given by its radius; the sign chooses one of the two circles (of a full circle: a point on it).
struct RadiusArc {
    std::int32_t radius;
    Point end;
    std::uint8_t direction = 0;
};

enum class ArcEnd { AtPoint, FullCircle };

// At constant speed, one absolute flag for both axes. Param: no such pair, a speed too high, a radius of 0. Other
// results: MoveAllowed's and the start command's, and those of geometry that gives no circle:
//   through points  ArcAsLine: a line was made instead; full circle: CircleAsDiameter: the circle over the way to
//                   the second point was made
//   by radius       Ok, nothing moves
Result ArcCenterMove(const Card &card, const AxisSet &pair, const CenterArc &arc, bool absolute,
                     std::uint32_t speed);
Result ArcThroughMove(const Card &card, const AxisSet &pair, const ThroughArc &arc, ArcEnd end, bool absolute,
                      std::uint32_t speed);
Result ArcRadiusMove(const Card &card, const AxisSet &pair, const RadiusArc &arc, ArcEnd end, bool absolute,
                     std::uint32_t speed);

// One ramp for start and end.
struct ArcRamp {
    Curve curve = Curve::T;
    double time_s = 0;
    std::int32_t s_range_pps = 0; // S: speed gained in each curved section

    MoveRamps both() const { return {curve, {time_s, time_s}, {s_range_pps, s_range_pps}}; }
};

// The speed registers of a ramped arc, whose speeds along the path become those of the leading axis.
ProfileRegisters PlanArc(MoveSpeeds speeds, const ArcRamp &ramp, std::uint32_t multiplier);

// How a ramped arc runs. Flags by axis number as in a line; null: Param.
struct ArcRun {
    const std::uint8_t *absolute_flags;
    MoveSpeeds speeds;
    ArcRamp ramp;
    std::uint8_t trigger; // Param above 2
};

// The circle of a ramped move, relative, once the targets of both axes are synchronised. Results: ArcAsLine: the points
// lie in a line; Param: the end is the start; or the driver's, if it refuses to tell where the axes are.
Result FindCircle(const CheckedAxes &axes, const ThroughArc &arc, ArcEnd end, const std::uint8_t *absolute_flags,
                  CenterArc &found);
Result FindCircle(const CheckedAxes &axes, const RadiusArc &arc, ArcEnd end, const std::uint8_t *absolute_flags,
                  CenterArc &found);

// With ramps. Geometry that gives no circle:
//   through points  ArcAsLine: a T-curve line was made instead; T-curve full circle: nothing moves
//   by radius       Param, or the driver's result if it refuses to tell where the axes are; nothing moves
Result RampedArcCenterMove(const Card &card, const AxisSet &pair, const CenterArc &arc, const ArcRun &run);
Result RampedArcThroughMove(const Card &card, const AxisSet &pair, const ThroughArc &arc, ArcEnd end,
                            const ArcRun &run);
Result RampedArcRadiusMove(const Card &card, const AxisSet &pair, const RadiusArc &arc, ArcEnd end,
                           const ArcRun &run);

// The center that the radius rule finds for an end point relative to the start. Nothing is sent. Param: the end is
// the start.
Result ArcRadiusTest(const Card &card, std::uint32_t end_a, std::int32_t radius, std::uint32_t end_b,
                     std::uint8_t direction, std::uint32_t *center_a, std::uint32_t *center_b);

} // namespace trevik
