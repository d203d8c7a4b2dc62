// The geometry of circles against hand-made cases and against each other.
#include "motion/arc_geometry.h"

#include <doctest/doctest.h>

#include <cmath>
#include <random>
#include <tuple>

using namespace trevik;

TEST_CASE("octants, borders included")
{
    const std::tuple<std::int64_t, std::int64_t, unsigned> rows[] = {
        {-2, 0, 0}, {-2, 1, 0},  {-1, 1, 1},  {-1, 2, 1},
        {0, 2, 2},  {1, 2, 2},   {1, 1, 3},   {2, 1, 3},
        {2, 0, 4},  {2, -1, 4},  {1, -1, 5},  {1, -2, 5},
        {0, -2, 6}, {-1, -2, 6}, {-1, -1, 7}, {INT32_MIN, INT32_MIN, 7}};
    for (const auto &row : rows) {
        const auto &[x, y, octant] = row;
        CHECK_MESSAGE(ArcOctant(x, y) == octant, std::get<0>(row) << ", " << std::get<1>(row));
    }
}

TEST_CASE("steps of circles and halves")
{
    // Around (1000, 0). Of the directions only 1 turns the count.
    const std::tuple<Point, std::uint8_t, std::uint32_t> rows[] = {
        {{2000, 0}, 0, 2830},        {{2000, 0}, 1, 2830},
        {{2000, 0}, 7, 2830},        {{0, 0}, 0, 5658},
        {{0, 0}, 1, 5658},           {{1000, 1000}, 0, 1416},
        {{1000, 1000}, 7, 1416},     {{1000, 1000}, 1, 5656 - 1414 + 2},
        {{20, 199}, 0, 201}, // in the start's own octant: ahead, and all but round
        {{1, -45}, 0, 5656 - 45 + 2}};
    for (const auto &[end, direction, steps] : rows)
        CHECK(ArcSteps({{1000, 0}, end}, direction) == steps);
}

TEST_CASE("three points")
{
    constexpr Point none{};
    // Ordinary ones; first and second slope upright; as wide as it gets; lines.
    const std::tuple<Point, Point, Point, std::uint8_t> rows[] = {
        {{1000, 1000}, {2000, 0}, {1000, 0}, 0},
        {{1000, -1000}, {2000, 0}, {1000, 0}, 1},
        {{0, 2000}, {1000, 1000}, {0, 1000}, 0},
        {{2000, 0}, {1000, 1000}, {1000, 0}, 1},
        {{1000, 1000}, {-500, 1000}, {250, 750}, 1},
        {{INT32_MIN, 0}, {0, INT32_MIN}, {INT32_MIN / 2, INT32_MIN / 2}, 1},
        {{1000, 0}, {2000, 0}, none, 1},
        {{0, 500}, {0, 2000}, none, 1},
        {{300, 300}, {-200, -200}, none, 1}};
    for (const auto &row : rows) {
        const auto &[way, end, center, direction] = row;
        INFO(std::get<0>(row).x << ", " << std::get<0>(row).y);
        const ThreePointArc arc = ThreePointCenter(way, end);
        CHECK((arc.collinear == (center == none) && arc.direction == direction));
        CHECK((arc.collinear || arc.circle.center == center));
    }
}

TEST_CASE("radius: which circle, short radii, the pulse that keeps the center away from the start")
{
    // Of the last one, (1, -9) is nearer to the start.
    const std::tuple<std::int32_t, Point, std::uint8_t, Point> rows[] = {{1000, {2000, 0}, 0, {1000, 0}},
                                                                         {500, {0, 2000}, 0, {0, 1000}},
                                                                         {1000, {1000, 1000}, 0, {1000, 0}},
                                                                         {1000, {1000, 1000}, 1, {0, 1000}},
                                                                         {-1000, {1000, 1000}, 0, {0, 1000}},
                                                                         {-1000, {1000, 1000}, 9, {1000, 0}},
                                                                         {1000, {-1000, -1000}, 0, {-1000, 0}},
                                                                         {1250, {2000, 0}, 0, {1000, -750}},
                                                                         {1250, {2000, 0}, 1, {1000, 750}},
                                                                         {-1250, {-2000, 0}, 1, {-1000, 750}},
                                                                         {10, {3, 0}, 0, {2, -9}}};
    Point center;
    for (const auto &row : rows) {
        const auto &[radius, end, direction, expected] = row;
        CHECK_MESSAGE((RadiusCenter(radius, end, direction, center) && center == expected),
                      std::get<0>(row) << ", " << std::get<1>(row).x);
    }
    CHECK(!RadiusCenter(1000, {0, 0}, 0, center));
}

TEST_CASE("a center is found again from three points; an arc cut in two has as many steps")
{
    std::mt19937 random(20261123);
    const auto between = [&random](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    for (int i = 0; i < 20000; ++i) {
        CAPTURE(i);
        const double radius = between(1000, 2'000'000);
        const double start = between(0, 359) * 0.0174532925;
        const double sweep = between(40, 320) * 0.0174532925;
        const auto direction = static_cast<std::uint8_t>(between(0, 1));
        const auto on_circle = [radius](double angle, Point center) {
            return Point{static_cast<std::int32_t>(std::lround(center.x + radius * std::cos(angle))),
                         static_cast<std::int32_t>(std::lround(center.y + radius * std::sin(angle)))};
        };
        const Point center = on_circle(start + 3.14159265, {});
        const Point way = on_circle(start + (direction == 0 ? -sweep : sweep) / 2, center);
        const Point end = on_circle(start + (direction == 0 ? -sweep : sweep), center);

        // Half a pulse more or less moves the center of a flat arc by more. Its second coordinate follows from the
        // first, which is truncated, along the bisector of the first half.
        const ThreePointArc three = ThreePointCenter(way, end);
        CHECK(three.direction == direction);
        CHECK(std::hypot(three.circle.center.x - center.x, three.circle.center.y - center.y) <=
              45 + (way.y != 0 ? std::abs(1.0 * way.x / way.y) : 0));

        const auto from_way = [way](Point p) { return Point{p.x - way.x, p.y - way.y}; };
        const auto whole = static_cast<std::int64_t>(ArcSteps({center, end}, direction));
        const std::int64_t parts = std::int64_t{ArcSteps({center, way}, direction)} - 2 +
                                   ArcSteps({from_way(center), from_way(end)}, direction);
        CHECK(std::abs(whole - parts) <= 4); // each part rounds its radius and truncates
    }
}
