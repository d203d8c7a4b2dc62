// What arcs and helices share: the coordinates of the two axes of a circle, and what each of them is loaded with.
#pragma once

#include "motion/arc_geometry.h"
#include "motion/axis_set.h"
#include "motion/move.h"

#include <cstdint>

namespace trevik
{

// Whether the coordinates of the first and the second axis are absolute.
struct AbsolutePair {
    bool a = false;
    bool b = false;
};
inline AbsolutePair AbsoluteOf(const CheckedAxes &axes, const std::uint8_t *flags)
{
    return {flags[axes[0].number()] != 0, flags[axes[1].number()] != 0};
}

// A point as the caller gave it, relative to where the last moves of the first two axes end. Wraps.
Point RelativePoint(const CheckedAxes &axes, Point given, AbsolutePair absolute);

// A center and an end, relative, and the targets of both axes at that end. False, and no target has moved: a radius
// of 0.
bool TakeCircle(const CheckedAxes &axes, Point center, Point end, AbsolutePair absolute, Circle &circle);

// The mode words of both axes, and MOTION_CONFIG as circles need it.
void PrepareCircle(const CheckedAxes &axes, OperationCode operation);

// Both axes have been moved along a circle: the next relative move makes good what it fell short by.
void MarkCircle(const CheckedAxes &axes);

// Speeds, rates and multiplier between the end and the center of one axis.
void WriteCircleAxis(const Axis &axis, std::int32_t end, const ProfileRegisters &profile, std::int32_t center);

} // namespace trevik
