// Arcs, circles and helices as the virtual card makes them: on the circle at any time, ends exact.
#include "support/virtual_machine.h"

#include <trevik/Trevik.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

using trevik::test::VirtualMachine;

namespace
{

constexpr std::uint8_t relative[4] = {0, 0, 0, 0};

struct Deviations {
    double circle = 0; // of x and y from the circle
    double line = 0;   // of z from its share of the angle
};

// Runs to the end in uneven steps of time; how far the axes were off.
Deviations Follow(double cx, double cy, double sweep, double z = 0)
{
    const double radius = std::hypot(cx, cy);
    const double start = std::atan2(-cy, -cx);
    Deviations worst;
    double angle = 0;
    double last = start;
    for (int i = 0; !VirtualMachine::idle(0); ++i) {
        TrevikHost_advance(0.0003 + 0.0001 * (i % 7));
        const double x = VirtualMachine::at(0) - cx;
        const double y = VirtualMachine::at(1) - cy;
        worst.circle = std::max(worst.circle, std::abs(std::hypot(x, y) - radius));
        angle += std::remainder(std::atan2(y, x) - last, 6.283185307179586);
        last = std::atan2(y, x);
        worst.line = std::max(worst.line, std::abs(VirtualMachine::at(2) - z * angle / sweep));
    }
    return worst;
}

void RunToEnd()
{
    VirtualMachine::run_out();
    CHECK(VirtualMachine::idle(0));
}

} // namespace

TEST_CASE("a ramped arc stays on its circle, slows down in time and ends on its end")
{
    const VirtualMachine machine;
    REQUIRE(TrevikA_T_ARC_center_move(0, 0, 6000, 0, 6000, 6000, relative, 500, 20000, 100, 1, 0) == TREVIK_OK);
    TrevikHost_advance(0.5);
    // All the speed that the leading axis has, divided as the library divides it.
    CHECK(std::max(std::abs(VirtualMachine::speed(0)), std::abs(VirtualMachine::speed(1))) ==
          doctest::Approx(20000 / 1.11107).epsilon(0.001));
    CHECK(Follow(6000, 0, 1).circle <= 1);
    CHECK(VirtualMachine::at(0) == 6000);
    CHECK(VirtualMachine::at(1) == 6000);

    // The whole circle back from there; just before its end it is about as slow as at its start.
    REQUIRE(TrevikA_T_ARC_center_move(0, 0, 0, -6000, 0, 0, relative, 500, 20000, 100, 0, 0) == TREVIK_OK);
    const double left_s = VirtualMachine::next_event() - 0.001;
    TrevikHost_advance(left_s);
    CHECK(std::abs(VirtualMachine::speed(0)) <= 700);
    RunToEnd();
    CHECK((VirtualMachine::at(0) == 6000 && VirtualMachine::at(1) == 6000));
}

TEST_CASE("random arcs of every description end where they should, within a pulse of their circle all the way")
{
    const VirtualMachine machine;
    std::mt19937 random(1);
    const auto between = [&random](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    for (int i = 0; i < 60; ++i) {
        CAPTURE(i);
        TrevikA_current_position_set(0, 0, 0);
        TrevikA_current_position_set(0, 1, 0);
        const int cx = between(-3000, 3000);
        const int cy = between(-3000, 3000);
        const double radius = std::hypot(cx, cy);
        if (radius < 10)
            continue;
        const double angle = between(0, 6283) / 1000.0;
        const auto ex = static_cast<std::int32_t>(std::lround(cx + radius * std::cos(angle)));
        const auto ey = static_cast<std::int32_t>(std::lround(cy + radius * std::sin(angle)));
        const auto dir = static_cast<std::uint8_t>(i % 2);
        const auto speed = static_cast<std::uint32_t>(between(1000, 50000));
        const std::uint32_t result =
            i % 3 == 0   ? TrevikA_ARC_center_move(0, 0, cx, cy, ex, ey, 0, speed, dir)
            : i % 3 == 1 ? TrevikA_T_ARC_center_move(0, 0, cx, cy, ex, ey, relative, 300, speed, 50, dir, 0)
                         : TrevikA_S_ARC_center_move(0, 0, cx, cy, ex, ey, relative, 300, speed, 50, 10, dir, 0);
        REQUIRE(result == TREVIK_OK);
        CHECK(Follow(cx, cy, 1).circle <= 1);
        CHECK(VirtualMachine::at(0) == ex);
        CHECK(VirtualMachine::at(1) == ey);
    }
}

TEST_CASE("an end off the circle is not reached; the next relative move starts from where it was to be")
{
    const VirtualMachine machine;
    REQUIRE(TrevikA_ARC_center_move(0, 0, 1000, 0, 1000, 1007, 0, 5000, 0) == TREVIK_OK);
    RunToEnd();
    CHECK((VirtualMachine::at(0) == 1000 && VirtualMachine::at(1) == 1000));
    REQUIRE(TrevikA_T_LINE2_move(0, 0, 0, 0, relative, 500, 5000, 0, 0, 0) == TREVIK_OK);
    RunToEnd();
    CHECK(VirtualMachine::at(1) == 1007);
}

TEST_CASE("a helix: Z in proportion to the turn, all axes at the end together")
{
    const VirtualMachine machine;
    for (const int z : {5000, -40000, 0}) { // Z shorter and longer than the circle, and none
        CAPTURE(z);
        for (std::uint8_t axis = 0; axis < 4; ++axis)
            TrevikA_current_position_set(0, axis, 0);
        REQUIRE(TrevikA_T_ArcXY_LineZ_center_move(0, 1000, 0, 1000, 1000, z, relative, 400, 8000, 100, 1, 0) ==
                TREVIK_OK);
        // The steps of an octant are evenly spread over its leading axis, not over the angle: up to 2.4 % of a quarter.
        const Deviations worst = Follow(1000, 0, 4.71238898, z);
        CHECK(worst.circle <= 1);
        CHECK(worst.line <= 1 + std::abs(z) * 0.012);
        CHECK((VirtualMachine::at(0) == 1000 && VirtualMachine::at(1) == 1000 && VirtualMachine::at(2) == z));
        CHECK(VirtualMachine::at(3) == static_cast<std::int32_t>(8 * 1000 / std::sqrt(2)) - 1414 + 2);
    }
}

TEST_CASE("lines and arcs follow one another without a stop")
{
    const VirtualMachine machine;
    for (std::uint8_t axis = 0; axis < 2; ++axis) {
        TrevikA_continuous_flag_set(0, axis, 1);
        TrevikA_velocity_range_fix(0, axis, 10000);
    }
    REQUIRE(TrevikA_T_LINE2_move(0, 0, 3000, 0, relative, 9000, 9000, 0, 0, 0) == TREVIK_OK);
    REQUIRE(TrevikA_ARC_center_move(0, 0, 0, 2000, 2000, 2000, 0, 10000, 1) == TREVIK_OK);
    const double line_s = VirtualMachine::next_event();
    TrevikHost_advance(line_s);
    REQUIRE(TrevikA_T_LINE2_move(0, 0, 0, 1000, relative, 9000, 9000, 0, 0, 0) == TREVIK_OK);
    CHECK(line_s == doctest::Approx(3000 / 9000.0).epsilon(0.001));
    const double arc_s = VirtualMachine::next_event();
    CHECK(arc_s == doctest::Approx(2829 / (10000 / 1.11107)).epsilon(0.002));
    TrevikHost_advance(arc_s);
    CHECK(VirtualMachine::speed(1) == doctest::Approx(9000).epsilon(0.001));
    RunToEnd();
    CHECK((VirtualMachine::at(0) == 5000 && VirtualMachine::at(1) == 3000));
}

TEST_CASE("a stopped arc restarts on its circle; a limit on the way stops it on its pulse")
{
    const VirtualMachine machine;
    const std::uint8_t second[4] = {0, 1, 0, 0};
    REQUIRE(TrevikA_T_ARC_center_move(0, 0, 5000, 0, 10000, 0, relative, 500, 10000, 100, 0, 0) == TREVIK_OK);
    for (const std::uint32_t stop_ms : {100u, 0u}) {
        TrevikHost_advance(0.4);
        REQUIRE(TrevikA_stop(0, second, stop_ms) == TREVIK_OK); // one of its axes stops both
        RunToEnd();
        const double off = std::hypot(VirtualMachine::at(0) - 5000, VirtualMachine::at(1)) - 5000;
        CHECK(std::abs(off) <= 1);
        CHECK(VirtualMachine::at(0) < 10000);
        REQUIRE(TrevikA_2Axis_restart(0, 0) == TREVIK_OK);
    }
    CHECK(Follow(5000, 0, 1).circle <= 1);
    CHECK((VirtualMachine::at(0) == 10000 && VirtualMachine::at(1) == 0));

    // Down the right side of a circle to the left, into the minus limit of the second axis.
    REQUIRE(TrevikVirtual_switch_set(0, 1, TREVIK_VIRTUAL_MINUS_LIMIT, INT32_MIN, -1234) == TREVIK_OK);
    REQUIRE(TrevikA_ARC_center_move(0, 0, -3000, 0, 0, 0, 0, 5000, 0) == TREVIK_OK);
    RunToEnd();
    CHECK(VirtualMachine::at(1) == -1234);
    CHECK(VirtualMachine::at(0) > 9000);
}

TEST_CASE("a running line changes its end: straight on from where it is, at the speed it has")
{
    const VirtualMachine machine;
    REQUIRE(TrevikA_T_LINE2_move(0, 0, 10000, 0, relative, 500, 10000, 100, 100, 0) == TREVIK_OK);
    TrevikHost_advance(0.5);
    const double before = VirtualMachine::speed(0);
    const int from = VirtualMachine::at(0);
    REQUIRE(Trevik_OnLine_T_curve_change_LINE2(0, 0, 20000, -3000, 1, 500, 10000, 0.1, 0.1) == TREVIK_OK);
    CHECK(VirtualMachine::speed(0) == doctest::Approx(before).epsilon(0.001));
    while (!VirtualMachine::idle(0)) {
        TrevikHost_advance(0.003);
        const double share = (VirtualMachine::at(0) - from) / (20000.0 - from);
        CHECK(std::abs(VirtualMachine::at(1) + 3000 * share) <= 1);
    }
    CHECK((VirtualMachine::at(0) == 20000 && VirtualMachine::at(1) == -3000));
}
