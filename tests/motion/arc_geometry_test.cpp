// The geometry of circles against hand-made cases and against each other.
#include "motion/arc_geometry.h"

#include <doctest/doctest.h>

#include <cmath>
#include <random>
#include <utility>

using namespace trevik;

TEST_CASE("octants, borders included")
{
    struct Row {
        std::int64_t x, y;
        unsigned octant;
    };
    const Row rows[] = {{-2, 0, 0}, {-2, 1, 0},  {-1, 1, 1},  {-1, 2, 1}, {0, 2, 2},  {1, 2, 2},
                        {1, 1, 3},  {2, 1, 3},   {2, 0, 4},   {2, -1, 4}, {1, -1, 5}, {1, -2, 5},
                        {0, -2, 6}, {-1, -2, 6}, {-1, -1, 7}, {-2, -1, 7}};
    for (const Row &row : rows) {
        CAPTURE(row.x);
        CAPTURE(row.y);
        CHECK(ArcOctant(row.x, row.y) == row.octant);
    }
    CHECK(ArcOctant(INT32_MIN, INT32_MIN) == 7);
}

TEST_CASE("steps of circles and halves")
{
    const Point center{1000, 0};
    CHECK(ArcSteps({center, {2000, 0}}, 0) == 2830);
    CHECK(ArcSteps({center, {2000, 0}}, 1) == 2830);
    CHECK(ArcSteps({center, {2000, 0}}, 7) == 2830); // only 1 turns the count
    CHECK(ArcSteps({center, {0, 0}}, 0) == 5658);
    CHECK(ArcSteps({center, {0, 0}}, 1) == 5658);
    CHECK(ArcSteps({center, {1000, 1000}}, 0) == 1416);
    CHECK(ArcSteps({center, {1000, 1000}}, 1) == 5656 - 1414 + 2);
    // An end in the start's own octant: ahead, and all but round.
    CHECK(ArcSteps({center, {20, 199}}, 0) == 201);
    CHECK(ArcSteps({center, {1, -45}}, 0) == 5656 - 45 + 2);
}

TEST_CASE("three points")
{
    struct Row {
        Point way, end, center;
        std::uint8_t direction;
    };
    // Ordinary ones; first and second slope upright; as wide as it gets.
    const Row rows[] = {{{1000, 1000}, {2000, 0}, {1000, 0}, 0},
                        {{1000, -1000}, {2000, 0}, {1000, 0}, 1},
                        {{0, 2000}, {1000, 1000}, {0, 1000}, 0},
                        {{2000, 0}, {1000, 1000}, {1000, 0}, 1},
                        {{1000, 1000}, {-500, 1000}, {250, 750}, 1},
                        {{INT32_MIN, 0}, {0, INT32_MIN}, {INT32_MIN / 2, INT32_MIN / 2}, 1}};
    for (const Row &row : rows) {
        CAPTURE(row.way.x);
        CAPTURE(row.way.y);
        const auto [circle, direction, collinear] = ThreePointCenter(row.way, row.end);
        CHECK((!collinear && direction == row.direction));
        CHECK((circle.center.x == row.center.x && circle.center.y == row.center.y));
    }
    const std::pair<Point, Point> lines[] = {
        {{1000, 0}, {2000, 0}}, {{0, 500}, {0, 2000}}, {{300, 300}, {-200, -200}}};
    for (const auto &[way, end] : lines) {
        const ThreePointArc arc = ThreePointCenter(way, end);
        CHECK((arc.collinear && arc.direction == 1));
    }
}

TEST_CASE("radius: which circle, short radii, the pulse that keeps the center away from the start")
{
    struct Row {
        std::int32_t radius;
        Point end;
        std::uint8_t direction;
        Point center;
    };
    // Of the last one, (1, -9) is nearer to the start.
    const Row rows[] = {{1000, {2000, 0}, 0, {1000, 0}},
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
    for (const Row &row : rows) {
        CAPTURE(row.radius);
        CAPTURE(row.end.x);
        Point center;
        REQUIRE(RadiusCenter(row.radius, row.end, row.direction, center));
        CHECK((center.x == row.center.x && center.y == row.center.y));
    }
    Point center;
    CHECK(!RadiusCenter(1000, {0, 0}, 0, center));
}

TEST_CASE("the three descriptions of one arc agree, and an arc cut in two has as many steps")
{
    std::mt19937 random(20261123);
    const auto between = [&random](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    for (int i = 0; i < 20000; ++i) {
        CAPTURE(i);
        const double radius = between(200, 2'000'000);
        const double start = between(0, 359) * 0.0174532925;
        const double sweep = between(20, 340) * 0.0174532925;
        const auto direction = static_cast<std::uint8_t>(between(0, 1));
        const double sense = direction == 0 ? -1 : 1;
        const Point center{static_cast<std::int32_t>(std::lround(-radius * std::cos(start))),
                           static_cast<std::int32_t>(std::lround(-radius * std::sin(start)))};
        const auto at = [&](double share) {
            const double angle = start + sense * sweep * share;
            return Point{static_cast<std::int32_t>(std::lround(center.x + radius * std::cos(angle))),
                         static_cast<std::int32_t>(std::lround(center.y + radius * std::sin(angle)))};
        };
        const Point way = at(0.5);
        const Point end = at(1);

        // A point half a pulse off moves the center of a flat arc by more; and the center's second coordinate follows
        // from its first, which is truncated, along the bisector of the first half.
        const ThreePointArc three = ThreePointCenter(way, end);
        CHECK(three.direction == direction);
        const double flatness = 2 / (1 - std::cos(sweep / 2)) + 2 / std::abs(std::sin(sweep / 2)) + 3;
        const double slope = way.y != 0 ? std::abs(static_cast<double>(way.x) / way.y) : 1;
        CHECK(std::hypot(three.circle.center.x - center.x, three.circle.center.y - center.y) <= flatness + slope);
        Point by_radius;
        const auto signed_radius = static_cast<std::int32_t>(sweep > 3.14159265 ? -radius : radius);
        REQUIRE(RadiusCenter(signed_radius, end, direction, by_radius));
        if (std::abs(std::cos(sweep / 2)) > 0.1) // near half a circle the radius says little
            CHECK(std::hypot(by_radius.x - center.x, by_radius.y - center.y) <=
                  3 + 3 / std::abs(std::cos(sweep / 2)));

        const auto from_way = [way](Point p) { return Point{p.x - way.x, p.y - way.y}; };
        const auto whole = static_cast<std::int64_t>(ArcSteps({center, end}, direction));
        const std::int64_t parts = std::int64_t{ArcSteps({center, way}, direction)} - 2 +
                                   ArcSteps({from_way(center), from_way(end)}, direction);
        CHECK(std::abs(whole - parts) <= 4); // each part rounds its radius and truncates
    }
}
