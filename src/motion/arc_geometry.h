// The geometry of circles in whole pulses, seen from the start point at the origin. Pure arithmetic: no driver, no
// state.
#pragma once

#include <cstdint>

namespace trevik
{

// Signed pulses along the first and the second axis of a pair.
struct Point {
    std::int32_t x = 0;
    std::int32_t y = 0;

    bool operator==(const Point &) const = default;
};

// A circle through the start point, and where on it a move ends.
struct Circle {
    Point center;
    Point end;
};

// Octant (0 to 7) in which a point lies, seen from the center; they are numbered in the sense of direction 0,
// clockwise from the negative first axis with that axis to the right and the second one up. The center itself lies
// in none and counts as 0.
unsigned ArcOctant(std::int64_t x, std::int64_t y);

// Output steps of a circular move: the leading axis makes one with each of them. Two more than the geometry has.
// `direction` 1 goes the other way round; other values count as 0.
std::uint32_t ArcSteps(const Circle &circle, std::uint8_t direction);

// The circle from the origin through `way` to `end`.
struct ThreePointArc {
    Circle circle;
    std::uint8_t direction = 0; // 0 or 1
    bool collinear = false;     // no circle; the direction still says on which side of the end the point lies
};
ThreePointArc ThreePointCenter(Point way, Point end);

// The circle of a radius from the origin to `end`, of the two the one that the direction and the radius's sign
// choose. A radius below half the way gives the middle of the way as the center. False: the end is the start.
bool RadiusCenter(std::int32_t radius, Point end, std::uint8_t direction, Point &center);

} // namespace trevik
