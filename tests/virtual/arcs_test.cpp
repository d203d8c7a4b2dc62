// Arcs, circles and helices as the virtual card makes them: on the circle at any time, ends exact.
#include "support/virtual_machine.h"

#include <trevik/Trevik.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace trevik::test;

namespace
{

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

} // namespace

TEST_CASE_FIXTURE(VirtualMachine, "a ramped arc stays on its circle, slows down in time and ends on its end")
{
    REQUIRE(TrevikA_T_ARC_center_move(0, 0, 6000, 0, 6000, 6000, relative, 500, 20000, 100, 1, 0) == TREVIK_OK);
    TrevikHost_advance(0.5);
    // All the speed that the leading axis has, divided as the library divides it.
    CHECK(std::max(std::abs(speed(0)), std::abs(speed(1))) == doctest::Approx(20000 / 1.11107).epsilon(0.001));
    CHECK(Follow(6000, 0, 1).circle <= 1);
    CHECK((at(0) == 6000 && at(1) == 6000));
    // The whole circle back from there; just before its end it is about as slow as at its start.
    REQUIRE(TrevikA_T_ARC_center_move(0, 0, 0, -6000, 0, 0, relative, 500, 20000, 100, 0, 0) == TREVIK_OK);
    TrevikHost_advance(next_event() - 0.001);
    CHECK(std::abs(speed(0)) <= 700);
    run_out();
    CHECK((at(0) == 6000 && at(1) == 6000));
}

TEST_CASE_FIXTURE(VirtualMachine,
                  "an end off the circle is not reached; the next relative move starts from where it was to be")
{
    REQUIRE(TrevikA_ARC_center_move(0, 0, 1000, 0, 1000, 1007, 0, 5000, 0) == TREVIK_OK);
    run_out();
    CHECK((at(0) == 1000 && at(1) == 1000));
    REQUIRE(TrevikA_T_LINE2_move(0, 0, 0, 0, relative, 500, 5000, 0, 0, 0) == TREVIK_OK);
    run_out();
    CHECK(at(1) == 1007);
}

TEST_CASE_FIXTURE(VirtualMachine, "a helix: Z in proportion to the turn, all axes at the end together")
{
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
        CHECK((at(0) == 1000 && at(1) == 1000 && at(2) == z));
        CHECK(at(3) == static_cast<std::int32_t>(8 * 1000 / std::sqrt(2)) - 1414 + 2);
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "lines and arcs follow one another without a stop")
{
    for (std::uint8_t axis = 0; axis < 2; ++axis) {
        TrevikA_continuous_flag_set(0, axis, 1);
        TrevikA_velocity_range_fix(0, axis, 10000);
    }
    REQUIRE(TrevikA_T_LINE2_move(0, 0, 3000, 0, relative, 9000, 9000, 0, 0, 0) == TREVIK_OK);
    REQUIRE(TrevikA_ARC_center_move(0, 0, 0, 2000, 2000, 2000, 0, 10000, 1) == TREVIK_OK);
    const double line_s = next_event();
    TrevikHost_advance(line_s);
    REQUIRE(TrevikA_T_LINE2_move(0, 0, 0, 1000, relative, 9000, 9000, 0, 0, 0) == TREVIK_OK);
    CHECK(line_s == doctest::Approx(3000 / 9000.0).epsilon(0.001));
    const double arc_s = next_event();
    CHECK(arc_s == doctest::Approx(2829 / (10000 / 1.11107)).epsilon(0.002));
    TrevikHost_advance(arc_s);
    CHECK(speed(1) == doctest::Approx(9000).epsilon(0.001));
    run_out();
    CHECK((at(0) == 5000 && at(1) == 3000));
}

TEST_CASE_FIXTURE(VirtualMachine, "a stopped arc restarts on its circle; a limit on the way stops it on its pulse")
{
    const std::uint8_t second[4] = {0, 1, 0, 0};
    REQUIRE(TrevikA_T_ARC_center_move(0, 0, 5000, 0, 10000, 0, relative, 500, 10000, 100, 0, 0) == TREVIK_OK);
    for (const std::uint32_t stop_ms : {100u, 0u}) {
        TrevikHost_advance(0.4);
        REQUIRE(TrevikA_stop(0, second, stop_ms) == TREVIK_OK); // one of its axes stops both
        run_out();
        const double off = std::hypot(at(0) - 5000, at(1)) - 5000;
        CHECK(std::abs(off) <= 1);
        CHECK(at(0) < 10000);
        REQUIRE(TrevikA_2Axis_restart(0, 0) == TREVIK_OK);
    }
    CHECK(Follow(5000, 0, 1).circle <= 1);
    CHECK((at(0) == 10000 && at(1) == 0));

    // Down the right side of a circle to the left, into the minus limit of the second axis.
    REQUIRE(TrevikVirtual_switch_set(0, 1, TREVIK_VIRTUAL_MINUS_LIMIT, INT32_MIN, -1234) == TREVIK_OK);
    REQUIRE(TrevikA_ARC_center_move(0, 0, -3000, 0, 0, 0, 0, 5000, 0) == TREVIK_OK);
    run_out();
    CHECK((idle(0) && at(1) == -1234 && at(0) > 9000));
}

TEST_CASE_FIXTURE(VirtualMachine,
                  "a running line changes its end: straight on from where it is, at the speed it has")
{
    REQUIRE(TrevikA_T_LINE2_move(0, 0, 10000, 0, relative, 500, 10000, 100, 100, 0) == TREVIK_OK);
    TrevikHost_advance(0.5);
    const double before = speed(0);
    const int from = at(0);
    REQUIRE(Trevik_OnLine_T_curve_change_LINE2(0, 0, 20000, -3000, 1, 500, 10000, 0.1, 0.1) == TREVIK_OK);
    CHECK(speed(0) == doctest::Approx(before).epsilon(0.001));
    while (!idle(0)) {
        TrevikHost_advance(0.003);
        const double share = (at(0) - from) / (20000.0 - from);
        CHECK(std::abs(at(1) + 3000 * share) <= 1);
    }
    CHECK((at(0) == 20000 && at(1) == -3000));
}
