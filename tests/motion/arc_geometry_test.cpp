// The geometry of circles against cases made by hand.
#include "motion/arc_geometry.h"

#include <doctest/doctest.h>

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
