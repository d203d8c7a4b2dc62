// The pulses of a circle, walked one by one.
#include "motion/arc_geometry.h"
#include "virtual/arc_path.h"

#include <doctest/doctest.h>

#include <cmath>
#include <cstdlib>
#include <random>

using namespace trevik;
using namespace trevik::virtual_card;

namespace
{

// Walks a path and checks what every path has; its end.
ArcPoint Walk(const ArcPath &path, ArcPoint center)
{
    const double radius = std::hypot(center.x, center.y);
    ArcPoint last = path.at(0);
    CHECK((last.x == 0 && last.y == 0));
    for (std::int64_t step = 1; step <= path.steps(); ++step) {
        const ArcPoint p = path.at(step);
        const std::int64_t width = std::abs(p.x - last.x);
        const std::int64_t height = std::abs(p.y - last.y);
        const bool near_circle = std::abs(std::hypot(p.x - center.x, p.y - center.y) - radius) <= 1;
        if (width > 1 || height > 1 || width + height == 0 || !near_circle) {
            CAPTURE(step);
            FAIL("not a step along the circle");
        }
        last = p;
    }
    return last;
}

} // namespace

TEST_CASE("small circles, all of their pulses")
{
    struct Row {
        ArcPoint center, end;
        bool plus;
        std::int64_t steps;
        ArcPoint reached;
    };
    // (10, 11) is one pulse off the circle, (10, 13) three.
    const Row rows[] = {{{1, 0}, {0, 0}, true, 4, {0, 0}},       {{2, 0}, {0, 0}, true, 12, {0, 0}},
                        {{5, 0}, {5, 5}, true, 7, {5, 5}},       {{5, 0}, {5, 5}, false, 21, {5, 5}},
                        {{0, 0}, {9, 9}, true, 0, {0, 0}},       {{3, 4}, {6, 8}, true, 14, {6, 8}},
                        {{10, 0}, {10, 11}, true, 15, {10, 11}}, {{10, 0}, {10, 13}, true, 14, {10, 10}},
                        {{10, 0}, {0, 1}, true, 1, {0, 1}},      {{10, 0}, {-1, 0}, true, 1, {-1, 0}}};
    for (const Row &row : rows) {
        CAPTURE(row.end.x);
        CAPTURE(row.center.x);
        ArcPath path;
        path.plan(row.center, row.end, row.plus);
        CHECK(path.steps() == row.steps);
        const ArcPoint reached = Walk(path, row.center);
        CHECK((reached.x == row.reached.x && reached.y == row.reached.y));
    }
}

TEST_CASE("random arcs: every pulse on the circle, the end exact, as many steps as the library counts")
{
    std::mt19937 random(64);
    const auto between = [&random](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    for (int i = 0; i < 2000; ++i) {
        CAPTURE(i);
        const ArcPoint center{between(-1500, 1500), between(-1500, 1500)};
        const double radius = std::hypot(center.x, center.y);
        if (radius < 2)
            continue;
        const double angle = between(0, 6283) / 1000.0;
        const ArcPoint end{std::lround(static_cast<double>(center.x) + radius * std::cos(angle)),
                           std::lround(static_cast<double>(center.y) + radius * std::sin(angle))};
        const bool plus = i % 2 == 0;
        ArcPath path;
        path.plan(center, end, plus);
        const ArcPoint reached = Walk(path, center);
        CHECK((reached.x == end.x && reached.y == end.y));
        const auto point = [](ArcPoint p) {
            return Point{static_cast<std::int32_t>(p.x), static_cast<std::int32_t>(p.y)};
        };
        const std::int64_t counted = ArcSteps({point(center), point(end)}, plus ? 0 : 1);
        const bool start_again = std::abs(end.x) + std::abs(end.y) <= 2; // nothing, or once round
        if (!start_again)
            CHECK(std::abs(path.steps() - (counted - 2)) <= 4);

        // A coordinate goes one way from one turn to the next.
        const bool of_x = i % 3 == 0;
        const auto coordinate = [&](std::int64_t step) { return of_x ? path.at(step).x : path.at(step).y; };
        for (std::int64_t from = 0; from < path.steps();) {
            const std::int64_t to = path.next_turn(from, of_x);
            const std::int64_t way = coordinate(to) < coordinate(from) ? -1 : 1;
            for (std::int64_t step = from; step < to && step + 2 < path.steps(); ++step)
                if ((coordinate(step + 1) - coordinate(step)) * way < 0)
                    FAIL("turned before its turn");
            from = to;
        }
    }
}
