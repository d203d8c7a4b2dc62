// Request logs of arcs, circles and helices, worked out by hand.
#include "support/started_library.h"

#include <trevik/Trevik.h>

using namespace trevik;
using namespace trevik::test;

TEST_CASE_FIXTURE(StartedLibrary, "a ramped arc: half a circle, on the comparator trigger")
{
    // 10000 / 1.11107 + 0.5 pulses/s at m = 1965: 58986; 500: 2953; rate trunc(1966080 / (56033 * 4)) - 1.
    driver.reg(0, Register::MOTION_CONFIG) = 0xFFFFFFFF;
    CHECK(sent(TrevikA_T_ARC_center_move(0, 0, 1000, 0, 2000, 0, relative, 500, 10000, 100, 0, 2)) == Requests(R"(
        read axis 01: main status -> 0x0008
        modify axis 0: MOTION_CONFIG 0xFFFFFFFF -> 0xFFFFCFFF
        modify axis 1: MOTION_CONFIG 0x00000000 -> 0x00000000
        modify axis 01: START_TRIGGER_ENV 0x00000000 -> 0x00000000
        write axis 0: DISTANCE = 2000, START_SPEED = 2953, MAX_SPEED = 58986, ACCEL_RATE = 7, DECEL_RATE = 7,
            MULTIPLIER = 1965, MODE = 0x09080064, CENTER = 1000, ARC_STEPS = 2830
        write axis 1: DISTANCE = 0, START_SPEED = 2953, MAX_SPEED = 58986, ACCEL_RATE = 7, DECEL_RATE = 7,
            MULTIPLIER = 1965, MODE = 0x09080064, CENTER = 0, ARC_STEPS = 2830
        command axes 0x3  CMD_START_ACC_DEC)"));
    CHECK((shadow(0).LastTarget == 2000u && shadow(1).LastTarget == 0u));
    CHECK(shadow(0).ModeWord == 0x09000064u); // the trigger is gone, the arc bit stays
    CHECK((shadow(0).LastMoveWasArc == 1 && shadow(1).LastMoveWasArc == 1));
}

TEST_CASE_FIXTURE(StartedLibrary, "a constant-speed arc, absolute, queued, the other way round")
{
    for (const std::uint8_t axis : {std::uint8_t{1}, std::uint8_t{3}}) {
        TrevikA_continuous_flag_set(0, axis, 1);
        shadow(axis).LastTarget = 100;
    }
    // trunc(4000 / 1.11107 + 0.5) = 3600 pulses/s; m = 4095 from 4000.
    CHECK(sent(TrevikA_ARC_center_move(0, 4, 1100, 100, 1100, -900, 1, 4000, 5)) == Requests(R"(
        read axis 13: main status -> 0x0008
        modify axis 13: MOTION_CONFIG 0x00000000 -> 0x00000000
        write axis 1: PRESET_DISTANCE = 1000, PRESET_START_SPEED = 49152, PRESET_MAX_SPEED = 49152,
            PRESET_MULTIPLIER = 4095, PRESET_MODE = 0x09000065, PRESET_CENTER = 1000
        write axis 3: PRESET_DISTANCE = -1000, PRESET_START_SPEED = 49152, PRESET_MAX_SPEED = 49152,
            PRESET_MULTIPLIER = 4095, PRESET_MODE = 0x09000065, PRESET_CENTER = 0
        command axes 0xA  CMD_START_HIGH_DEC)"));
    CHECK((shadow(1).LastTarget == 1100u && shadow(3).LastTarget == Pulses(-900)));
}

TEST_CASE_FIXTURE(StartedLibrary,
                  "an S-curve circle through two points keeps the curve bit clear and writes its ranges")
{
    CHECK(Includes(sent(TrevikA_S_CIR_3P_move(0, 5, 1000, 1000, 2000, 0, relative, 500, 10000, 100, 20, 0)), R"(
        write axis 2: DISTANCE = 0, START_SPEED = 2953, MAX_SPEED = 58986, ACCEL_RATE = 5, DECEL_RATE = 5,
            MULTIPLIER = 1965, MODE = 0x09000064, CENTER = 1000, ARC_STEPS = 5658, S_ACCEL_RANGE = 7778,
            S_DECEL_RANGE = 7778
        write axis 3: DISTANCE = 0)"));
    CHECK((shadow(2).LastTarget == 0u && shadow(3).LastTarget == 0u));
    // Curved sections longer than the ramp: no range, no refusal.
    CHECK(Includes(sent(TrevikA_S_ARC_Radius_move(0, 5, 1000, 1000, 1000, relative, 500, 10000, 100, 51, 0, 0)),
                   "write axis 2: ARC_STEPS = 1416, S_ACCEL_RANGE = 0"));
}

TEST_CASE_FIXTURE(StartedLibrary, "geometry that gives no circle")
{
    CHECK(Includes(sent(TrevikA_ARC_3P_move(0, 0, 1000, 0, 2000, 0, 0, 4000), TREVIK_ERR_ARC_AS_LINE), R"(
        write axis 0: MODE = 0x05002061
        command axes 0x3  CMD_START_HIGH_DEC)")); // both ramps 0
    driver.reg(0, Register::COUNTER1) = 2000;
    // From 2000 to 4000: half of 2000.
    CHECK(Includes(sent(TrevikA_CIR_3P_move(0, 0, 3000, 0, 4000, 0, 1, 4000), TREVIK_ERR_CIRCLE_AS_DIAMETER),
                   "write axis 0: MODE = 0x0D002065, CENTER = 1000"));
    CHECK(TrevikA_ARC_radius_move(0, 0, 500, 2000, 0, 1, 4000, 0) == TREVIK_OK);
    CHECK(driver.requests() == 0); // already there

    // With ramps the library first asks where the axes stand.
    CHECK(TrevikA_T_CIR_3P_move(0, 2, 5, 5, 9, 9, relative, 500, 10000, 100, 0) == TREVIK_ERR_ARC_AS_LINE);
    CHECK(!Has(driver.log(), "write"));
    CHECK(TrevikA_S_CIR_3P_move(0, 2, 5, 5, 9, 9, relative, 500, 10000, 100, 20, 1) == TREVIK_ERR_ARC_AS_LINE);
    CHECK(Has(driver.log(), "write  axis 0  MODE = 0x09040061\n")); // a T-curve line, on the trigger
    CHECK(TrevikA_T_ARC_Radius_move(0, 1, 500, 0, 0, relative, 500, 10000, 100, 0, 0) == TREVIK_ERR_PARAM);
}

TEST_CASE_FIXTURE(StartedLibrary, "refusals of arcs")
{
    CHECK(TrevikA_ARC_center_move(0, 6, 1, 0, 2, 0, 0, 4000, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_ARC_3P_move(0, 6, 1, 1, 2, 0, 0, 4000) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_ARC_radius_move(0, 6, 1, 2, 0, 0, 4000, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_ARC_3P_move(0, 6, 1, 1, 2, 0, relative, 1, 1, 1, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_ARC_Radius_move(0, 6, 1, 2, 0, relative, 1, 1, 1, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_ARC_center_move(0, 0, 1, 0, 2, 0, relative, 1, 1, 1, 0, 3) == TREVIK_ERR_PARAM);
    CHECK(driver.requests() == 0);
    CHECK(TrevikA_T_ARC_center_move(0, 0, 1000, 0, 2000, 0, relative, 500, 7281397, 100, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_ARC_center_move(0, 0, 1000, 0, 2000, 0, 0, 7281398, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_ARC_center_move(0, 0, 0, 0, 2000, 0, 0, 4000, 0) == TREVIK_ERR_PARAM); // radius 0
    CHECK(TrevikA_T_ARC_center_move(0, 0, 0, 0, 2000, 0, relative, 1, 1, 1, 0, 0) == TREVIK_ERR_PARAM);
    CHECK((!Has(driver.log(), "write") && shadow(0).LastTarget == 0u));
    CHECK(TrevikA_T_ARC_center_move(0, 0, 1000, 0, 2000, 0, relative, 500, 7281396, 100, 0, 0) == TREVIK_OK);
}

TEST_CASE_FIXTURE(StartedLibrary, "a T-curve helix: one turn while Z rises; the fourth axis counts the steps")
{
    shadow(2).LastTarget = 300;
    driver.reg(2, Register::COUNTER1) = 300;
    const std::uint8_t flags[4] = {0, 0, 1, 1};
    CHECK(Includes(sent(TrevikA_T_CirXY_LineZ_Radius_move(0, 1000, 2000, 0, 5300, flags, 400, 8000, 100, 0, 1)), R"(
        write axis 0: DISTANCE = 0, START_SPEED = 3276, MAX_SPEED = 65520, ACCEL_RATE = 6, DECEL_RATE = 6,
            MULTIPLIER = 2456, MODE = 0x09040066, CENTER = 1000
        write axis 1: DISTANCE = 0, START_SPEED = 3276, MAX_SPEED = 65520, ACCEL_RATE = 6, DECEL_RATE = 6,
            MULTIPLIER = 2456, MODE = 0x09040066, CENTER = 0
        write axis 2: DISTANCE = 5000, START_SPEED = 3276, MAX_SPEED = 65520, ACCEL_RATE = 6, DECEL_RATE = 6,
            RAMPDOWN_POINT = 0, MULTIPLIER = 2456, MODE = 0x01040061
        write axis 3: DISTANCE = 5658, START_SPEED = 3276, MAX_SPEED = 65520, MULTIPLIER = 2456, MODE = 0x01040061
        command axes 0xF  CMD_START_ACC_DEC)"));
    CHECK((shadow(2).LastTarget == 5300u && shadow(3).LastTarget == 0u));
    CHECK((shadow(1).LastMoveWasArc == 1 && shadow(2).LastMoveWasArc == 0));
}

TEST_CASE_FIXTURE(StartedLibrary, "helices that are none")
{
    CHECK(TrevikA_T_ArcXY_LineZ_3P_move(0, 5, 5, 9, 9, 4, relative, 400, 8000, 100, 0) == TREVIK_ERR_ARC_AS_LINE);
    CHECK(Has(driver.log(), "command axes 0x7"));
    CHECK(TrevikA_T_CirXY_LineZ_3P_move(0, 5, 5, 9, 9, 4, relative, 400, 8000, 100, 0) == TREVIK_ERR_ARC_AS_LINE);
    CHECK(TrevikA_T_ArcXY_LineZ_center_move(0, 9, 0, 9, 9, 4, relative, 400, 8000, 100, 0, 2) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_ArcXY_LineZ_center_move(0, 0, 0, 9, 9, 4, relative, 400, 8000, 100, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_ArcXY_LineZ_center_move(0, 9, 0, 9, 9, 4, relative, 400, 6553501, 1, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_ArcXY_LineZ_3P_move(0, 9, 9, 9, 0, 4, nullptr, 400, 8000, 100, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_ArcXY_LineZ_Radius_move(0, 9, 9, 9, 4, nullptr, 400, 8000, 100, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_ArcXY_LineZ_Radius_move(0, 9, 0, 0, 4, relative, 400, 8000, 100, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(!Has(driver.log(), "write"));
}

TEST_CASE_FIXTURE(StartedLibrary, "an S-curve helix is queued by its first axis")
{
    for (std::uint8_t axis = 0; axis < 3; ++axis)
        TrevikA_continuous_flag_set(0, axis, 1); // the step axis follows them without a flag of its own
    CHECK(Includes(
        sent(TrevikA_S_ArcXY_LineZ_center_move(0, 1000, 0, 2000, 0, -70, relative, 400, 8000, 100, 20, 1, 0)), R"(
        write axis 1: PRESET_MODE = 0x09000067, PRESET_CENTER = 0, PRESET_ARC_STEPS = 2830,
            PRESET_S_ACCEL_RANGE = 7780, PRESET_S_DECEL_RANGE = 7780
        write axis 2: PRESET_DISTANCE = -70, PRESET_MODE = 0x01000061, PRESET_S_ACCEL_RANGE = 7780,
            PRESET_S_DECEL_RANGE = 7780
        write axis 3: PRESET_DISTANCE = 2830)"));
}

TEST_CASE_FIXTURE(StartedLibrary, "the earlier arcs of two fixed axes, and the center that a radius gives")
{
    CHECK(TrevikA_ARC_center_move(0, 5, 100, 0, 100, 100, 0, 4000, 0) == TREVIK_OK);
    const std::string current = driver.log();
    shadow(2).MoveIssued = shadow(3).MoveIssued = std::uint8_t{0};
    CHECK(sent(Trevik_ARC_center_move_ZA(0, 100, 0, 100, 100, 0, 4000, 0)) == current);
    CHECK(Includes(sent(Trevik_ARC_center_move_XY(0, 100, 0, 100, 100, 0, 4000, 0)),
                   "command axes 0x3  CMD_START_HIGH_DEC"));
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    CHECK(Trevik_ARC2_Radius_test(0, 1000, 1000, 1000, 0, &a, &b) == TREVIK_OK);
    CHECK((a == 1000 && b == 0 && driver.requests() == 0));
    CHECK(Trevik_ARC2_Radius_test(0, 0, 1000, 0, 0, &a, &b) == TREVIK_ERR_PARAM);
}

TEST_CASE_FIXTURE(StartedLibrary,
                  "after an arc a relative move makes its shortfall good, once; an absolute one need not")
{
    CHECK(TrevikA_T_ARC_center_move(0, 0, 1000, 0, 2000, 0, relative, 500, 10000, 100, 0, 0) == TREVIK_OK);
    driver.reg(0, Register::COUNTER1) = 1999;
    driver.reg(1, Register::COUNTER1) = 2;
    CHECK(Includes(sent(TrevikA_T_LINE2_move(0, 0, 0, 0, relative, 500, 10000, 100, 100, 0)),
                   "write axis 0: DISTANCE = 1\nwrite axis 1: DISTANCE = -2"));
    CHECK((shadow(0).LastTarget == 2000u && shadow(1).LastTarget == 0u));
    driver.reg(0, Register::COUNTER1) = 1990;
    CHECK(TrevikA_T_position_move(0, 0, 0, 0, 1000, 1000, 0, 0, 0) == TREVIK_ERR_PARAM); // used up
    shadow(0).LastMoveWasArc = std::uint8_t{1};
    CHECK(Includes(sent(TrevikA_T_position_move(0, 0, 2000, 1, 1000, 1000, 0, 0, 0)), "DISTANCE = 10"));
    CHECK((shadow(0).LastMoveWasArc == 1 && shadow(0).ShortfallPending == 0)); // still marked
}
