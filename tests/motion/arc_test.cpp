// Request logs of arcs, circles and helices, worked out by hand.
#include "support/started_library.h"

#include <trevik/Trevik.h>

using namespace trevik;
using namespace trevik::test;

TEST_CASE_FIXTURE(StartedLibrary, "a ramped arc: half a circle, on the comparator trigger")
{
    // 10000 / 1.11107 + 0.5 pulses/s at m = 1965: 58986; 500: 2953; rate trunc(1966080 / (56033 * 4)) - 1.
    driver.reg(0, Register::MOTION_CONFIG) = 0xFFFFFFFF;
    CHECK(TrevikA_T_ARC_center_move(0, 0, 1000, 0, 2000, 0, relative, 500, 10000, 100, 0, 2) == TREVIK_OK);
    const auto profile = R"(write  axis #  START_SPEED = 2953
write  axis #  MAX_SPEED = 58986
write  axis #  ACCEL_RATE = 7
write  axis #  DECEL_RATE = 7
write  axis #  MULTIPLIER = 1965
write  axis #  MODE = 0x09080064
)";
    CHECK(driver.log() == EachAxis("01", "read   axis #  main status -> 0x0008\n") +
                              R"(read   axis 0  MOTION_CONFIG -> 0xFFFFFFFF
write  axis 0  MOTION_CONFIG = 0xFFFFCFFF
read   axis 1  MOTION_CONFIG -> 0x00000000
write  axis 1  MOTION_CONFIG = 0x00000000
)" + EachAxis("01", R"(read   axis #  START_TRIGGER_ENV -> 0x00000000
write  axis #  START_TRIGGER_ENV = 0x00000000
)") + "write  axis 0  DISTANCE = 2000\n" +
                              EachAxis("0", profile) + R"(write  axis 0  CENTER = 1000
write  axis 0  ARC_STEPS = 2830
write  axis 1  DISTANCE = 0
)" + EachAxis("1", profile) + R"(write  axis 1  CENTER = 0
write  axis 1  ARC_STEPS = 2830
command axes 0x3  CMD_START_ACC_DEC
)");
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
    CHECK(TrevikA_ARC_center_move(0, 4, 1100, 100, 1100, -900, 1, 4000, 5) == TREVIK_OK);
    CHECK(driver.log() == EachAxis("13", "read   axis #  main status -> 0x0008\n") +
                              EachAxis("13", R"(read   axis #  MOTION_CONFIG -> 0x00000000
write  axis #  MOTION_CONFIG = 0x00000000
)") + R"(write  axis 1  PRESET_DISTANCE = 1000
write  axis 1  PRESET_START_SPEED = 49152
write  axis 1  PRESET_MAX_SPEED = 49152
write  axis 1  PRESET_MULTIPLIER = 4095
write  axis 1  PRESET_MODE = 0x09000065
write  axis 1  PRESET_CENTER = 1000
write  axis 3  PRESET_DISTANCE = -1000
write  axis 3  PRESET_START_SPEED = 49152
write  axis 3  PRESET_MAX_SPEED = 49152
write  axis 3  PRESET_MULTIPLIER = 4095
write  axis 3  PRESET_MODE = 0x09000065
write  axis 3  PRESET_CENTER = 0
command axes 0xA  CMD_START_HIGH_DEC
)");
    CHECK((shadow(1).LastTarget == 1100u && shadow(3).LastTarget == Pulses(-900)));
}

TEST_CASE_FIXTURE(StartedLibrary,
                  "an S-curve circle through two points keeps the curve bit clear and writes its ranges")
{
    CHECK(TrevikA_S_CIR_3P_move(0, 5, 1000, 1000, 2000, 0, relative, 500, 10000, 100, 20, 0) == TREVIK_OK);
    CHECK(Has(driver.log(), R"(write  axis 2  DISTANCE = 0
write  axis 2  START_SPEED = 2953
write  axis 2  MAX_SPEED = 58986
write  axis 2  ACCEL_RATE = 5
write  axis 2  DECEL_RATE = 5
write  axis 2  MULTIPLIER = 1965
write  axis 2  MODE = 0x09000064
write  axis 2  CENTER = 1000
write  axis 2  ARC_STEPS = 5658
write  axis 2  S_ACCEL_RANGE = 7778
write  axis 2  S_DECEL_RANGE = 7778
write  axis 3  DISTANCE = 0
)"));
    CHECK((shadow(2).LastTarget == 0u && shadow(3).LastTarget == 0u));
    // Curved sections longer than the ramp: no range, no refusal.
    CHECK(TrevikA_S_ARC_Radius_move(0, 5, 1000, 1000, 1000, relative, 500, 10000, 100, 51, 0, 0) == TREVIK_OK);
    CHECK(Has(driver.log(), "ARC_STEPS = 1416\nwrite  axis 2  S_ACCEL_RANGE = 0\n"));
}

TEST_CASE_FIXTURE(StartedLibrary, "geometry that gives no circle")
{
    const auto line = "write  axis 0  MODE = 0x05002061\n"; // both ramps 0
    const auto circle = "write  axis 0  MODE = 0x0D002065\nwrite  axis 0  CENTER = 1000\n";
    CHECK(TrevikA_ARC_3P_move(0, 0, 1000, 0, 2000, 0, 0, 4000) == TREVIK_ERR_ARC_AS_LINE);
    const std::string as_line = driver.log();
    CHECK(Has(as_line, line));
    CHECK(Has(as_line, "command axes 0x3  CMD_START_HIGH_DEC"));
    driver.reg(0, Register::COUNTER1) = 2000;
    CHECK(TrevikA_CIR_3P_move(0, 0, 3000, 0, 4000, 0, 1, 4000) == TREVIK_ERR_CIRCLE_AS_DIAMETER);
    CHECK(Has(driver.log(), circle)); // from 2000 to 4000: half of 2000
    CHECK(TrevikA_ARC_radius_move(0, 0, 500, 2000, 0, 1, 4000, 0) == TREVIK_OK);
    CHECK(driver.requests() == 0); // already there

    // With ramps the library first asks where the axes stand.
    CHECK(TrevikA_T_CIR_3P_move(0, 2, 5, 5, 9, 9, relative, 500, 10000, 100, 0) == TREVIK_ERR_ARC_AS_LINE);
    CHECK(!Has(driver.log(), "write"));
    CHECK(TrevikA_S_CIR_3P_move(0, 2, 5, 5, 9, 9, relative, 500, 10000, 100, 20, 1) == TREVIK_ERR_ARC_AS_LINE);
    CHECK(Has(driver.log(), "write  axis 0  MODE = 0x09040061\n")); // a T-curve line, on the trigger
    CHECK(TrevikA_T_ARC_Radius_move(0, 1, 500, 0, 0, relative, 500, 10000, 100, 0, 0) == TREVIK_ERR_PARAM);
}

TEST_CASE_FIXTURE(StartedLibrary, "refusals of arcs, and what they leave changed")
{
    CHECK(TrevikA_ARC_center_move(0, 6, 1, 0, 2, 0, 0, 4000, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_ARC_3P_move(0, 6, 1, 1, 2, 0, relative, 1, 1, 1, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_ARC_center_move(0, 0, 1, 0, 2, 0, relative, 1, 1, 1, 0, 3) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_ARC_center_move(0, 0, 1, 0, 2, 0, nullptr, 1, 1, 1, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(driver.requests() == 0);
    CHECK(TrevikA_T_ARC_center_move(0, 0, 1000, 0, 2000, 0, relative, 500, 7281397, 100, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_ARC_center_move(0, 0, 1000, 0, 2000, 0, 0, 7281398, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_ARC_center_move(0, 0, 0, 0, 2000, 0, 0, 4000, 0) == TREVIK_ERR_PARAM); // radius 0
    CHECK(!Has(driver.log(), "write"));
    CHECK(shadow(0).LastTarget == 0u);
    CHECK(TrevikA_T_ARC_center_move(0, 0, 1000, 0, 2000, 0, relative, 500, 7281396, 100, 0, 0) == TREVIK_OK);
    TrevikA_continuous_flag_set(0, 1, 1);
    driver.forget();
    CHECK(TrevikA_ARC_center_move(0, 0, 1000, 0, 2000, 0, 0, 4000, 0) == TREVIK_ERR_CONTINUOUS_MIX);
    CHECK(driver.requests() == 0);
}

TEST_CASE_FIXTURE(StartedLibrary, "a T-curve helix: one turn while Z rises; the fourth axis counts the steps")
{
    shadow(2).LastTarget = 300;
    driver.reg(2, Register::COUNTER1) = 300;
    const std::uint8_t flags[4] = {0, 0, 1, 1};
    CHECK(TrevikA_T_CirXY_LineZ_Radius_move(0, 1000, 2000, 0, 5300, flags, 400, 8000, 100, 0, 1) == TREVIK_OK);
    const std::string log = driver.log();
    CHECK(Has(log, R"(write  axis 0  DISTANCE = 0
write  axis 0  START_SPEED = 3276
write  axis 0  MAX_SPEED = 65520
write  axis 0  ACCEL_RATE = 6
write  axis 0  DECEL_RATE = 6
write  axis 0  MULTIPLIER = 2456
write  axis 0  MODE = 0x09040066
write  axis 0  CENTER = 1000
write  axis 1  DISTANCE = 0
)"));
    CHECK(Has(log, R"(write  axis 1  CENTER = 0
write  axis 2  DISTANCE = 5000
write  axis 2  START_SPEED = 3276
write  axis 2  MAX_SPEED = 65520
write  axis 2  ACCEL_RATE = 6
write  axis 2  DECEL_RATE = 6
write  axis 2  RAMPDOWN_POINT = 0
write  axis 2  MULTIPLIER = 2456
write  axis 2  MODE = 0x01040061
write  axis 3  DISTANCE = 5658
write  axis 3  START_SPEED = 3276
write  axis 3  MAX_SPEED = 65520
write  axis 3  MULTIPLIER = 2456
write  axis 3  MODE = 0x01040061
command axes 0xF  CMD_START_ACC_DEC
)"));
    CHECK((shadow(2).LastTarget == 5300u && shadow(3).LastTarget == 0u));
    CHECK((shadow(1).LastMoveWasArc == 1 && shadow(2).LastMoveWasArc == 0));
}

TEST_CASE_FIXTURE(StartedLibrary, "an S-curve helix, queued by its first axis; helices that are none")
{
    for (std::uint8_t axis = 0; axis < 3; ++axis)
        TrevikA_continuous_flag_set(0, axis, 1); // the step axis follows them without a flag of its own
    CHECK(TrevikA_S_ArcXY_LineZ_center_move(0, 1000, 0, 2000, 0, -70, relative, 400, 8000, 100, 20, 1, 0) ==
          TREVIK_OK);
    const std::string log = driver.log();
    CHECK(Has(log, R"(write  axis 1  PRESET_MODE = 0x09000067
write  axis 1  PRESET_CENTER = 0
write  axis 1  PRESET_ARC_STEPS = 2830
write  axis 1  PRESET_S_ACCEL_RANGE = 7780
write  axis 1  PRESET_S_DECEL_RANGE = 7780
write  axis 2  PRESET_DISTANCE = -70
)"));
    CHECK(Has(log, R"(write  axis 2  PRESET_MODE = 0x01000061
write  axis 2  PRESET_S_ACCEL_RANGE = 7780
write  axis 2  PRESET_S_DECEL_RANGE = 7780
write  axis 3  PRESET_DISTANCE = 2830
)"));
    for (std::uint8_t axis = 0; axis < 3; ++axis)
        TrevikA_continuous_flag_set(0, axis, 0);
    CHECK(TrevikA_T_ArcXY_LineZ_3P_move(0, 5, 5, 9, 9, 4, relative, 400, 8000, 100, 0) == TREVIK_ERR_ARC_AS_LINE);
    CHECK(Has(driver.log(), "command axes 0x7"));
    CHECK(TrevikA_S_ArcXY_LineZ_3P_move(0, 5, 5, 9, 9, 4, relative, 400, 8000, 100, 20, 0) ==
          TREVIK_ERR_ARC_AS_LINE);
    CHECK(TrevikA_T_CirXY_LineZ_3P_move(0, 5, 5, 9, 9, 4, relative, 400, 8000, 100, 0) == TREVIK_ERR_ARC_AS_LINE);
    CHECK(TrevikA_T_ArcXY_LineZ_center_move(0, 9, 0, 9, 9, 4, relative, 400, 8000, 100, 0, 2) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_ArcXY_LineZ_Radius_move(0, 9, 0, 0, 4, relative, 400, 8000, 100, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_S_ArcXY_LineZ_Radius_move(99, 9, 9, 9, 4, relative, 400, 8000, 99, 50, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_S_ArcXY_LineZ_center_move(99, 9, 9, 9, 4, 4, relative, 400, 8000, 99, 50, 0, 0) ==
          TREVIK_ERR_CARD);
    CHECK(!Has(driver.log(), "write"));
}

TEST_CASE_FIXTURE(StartedLibrary, "a running line takes a new end and new speeds; the point is always manual")
{
    // From (0, 0) to (10000, 0), changed to (20000, 3000): k = 20000 / 20223.7.
    CHECK(Trevik_OnLine_T_curve_change_LINE2(0, 1, 20000, 3000, 1, 500, 10000, 0.1, 0.4) == TREVIK_ERR_NOT_MOVING);
    for (const std::uint32_t axis : {0u, 2u}) {
        busy(axis);
        driver.reg(axis, Register::DISTANCE) = axis == 0 ? 10000 : 0;
        shadow(static_cast<std::uint8_t>(axis)).LastTarget = axis == 0 ? 10000 : 0;
    }
    driver.forget();
    const auto profile = R"(write  axis #  MULTIPLIER = 1965
write  axis #  MAX_SPEED = 64809
write  axis #  START_SPEED = 3241
write  axis #  ACCEL_RATE = 6
write  axis #  DECEL_RATE = 30
write  axis #  RAMPDOWN_POINT = 2016
write  axis #  MODE = 0x01002061
)";
    CHECK(Trevik_OnLine_T_curve_change_LINE2(0, 1, 20000, 3000, 1, 500, 10000, 0.1, 0.4) == TREVIK_OK);
    CHECK(driver.log() == R"(read   axis 0  main status -> 0x0000
read   axis 2  main status -> 0x0000
read   axis 0  DISTANCE -> 10000
read   axis 2  DISTANCE -> 0
write  axis 0  DISTANCE = 20000
)" + EachAxis("0", profile) + "write  axis 2  DISTANCE = 3000\n" +
                              EachAxis("2", profile));
    driver.reg(0, Register::DISTANCE) = 20000;
    driver.reg(2, Register::DISTANCE) = 3000;
    CHECK(Trevik_OnLine_T_curve_change_LINE2(0, 1, 5000, 0, 0, 500, 10000, 0.3, 0.4) == TREVIK_OK);
    CHECK(Has(driver.log(), "write  axis 0  DISTANCE = 5000\n"));
    CHECK((shadow(0).LastTarget == 5000u && shadow(2).LastTarget == 0u));
    CHECK(Trevik_OnLine_T_curve_change_LINE2(0, 1, 7, 0, 1, 500, 6553501, 0.3, 0.4) == TREVIK_ERR_PARAM);
    CHECK(shadow(0).LastTarget == 7u); // moved before the speed was looked at
    CHECK(Trevik_OnLine_T_curve_change_LINE3(0, 4, 1, 1, 1, 1, 1, 1, 1, 1) == TREVIK_ERR_PARAM);
    CHECK(Trevik_OnLine_T_curve_change_LINE4(0, 1, 1, 1, 1, 1, 1, 1, 1, 1) == TREVIK_ERR_NOT_MOVING);
}

TEST_CASE_FIXTURE(StartedLibrary, "the earlier names of arcs")
{
    CHECK(TrevikA_ARC_center_move(0, 5, 100, 0, 100, 100, 0, 4000, 0) == TREVIK_OK);
    const std::string current = driver.log();
    shadow(2).MoveIssued = std::uint8_t{0};
    shadow(3).MoveIssued = std::uint8_t{0};
    CHECK(Trevik_ARC_center_move_ZA(0, 100, 0, 100, 100, 0, 4000, 0) == TREVIK_OK);
    CHECK(driver.log() == current);
    CHECK(Trevik_ARC2_3P_move(0, 0, 5, 5, 9, 9, 0, 4000) == TREVIK_ERR_ARC_AS_LINE);
    CHECK(Trevik_CIR2_3P_move(0, 0, 5, 5, 9, 9, 0, 4000) == TREVIK_ERR_CIRCLE_AS_DIAMETER);
    CHECK(Trevik_ARC2_Radius_move(0, 0, 100, 100, 100, 0, 4000, 0) == TREVIK_OK);
    CHECK(Trevik_CIR2_radius_move(0, 0, 100, 100, 100, 0, 4000, 0) == TREVIK_OK);
    driver.forget();
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    CHECK(Trevik_ARC2_Radius_test(0, 1000, 1000, 1000, 0, &a, &b) == TREVIK_OK);
    CHECK((a == 1000 && b == 0));
    CHECK(Trevik_ARC2_Radius_test(0, 0, 1000, 0, 0, &a, &b) == TREVIK_ERR_PARAM);
    CHECK(driver.requests() == 0);
}

TEST_CASE_FIXTURE(StartedLibrary,
                  "after an arc a relative move makes its shortfall good, once; an absolute one need not")
{
    CHECK(TrevikA_T_ARC_center_move(0, 0, 1000, 0, 2000, 0, relative, 500, 10000, 100, 0, 0) == TREVIK_OK);
    driver.reg(0, Register::COUNTER1) = 1999;
    driver.reg(1, Register::COUNTER1) = 2;
    CHECK(TrevikA_T_LINE2_move(0, 0, 0, 0, relative, 500, 10000, 100, 100, 0) == TREVIK_OK);
    const std::string log = driver.log();
    CHECK(Has(log, "write  axis 0  DISTANCE = 1\n"));
    CHECK(Has(log, "write  axis 1  DISTANCE = -2\n"));
    CHECK((shadow(0).LastTarget == 2000u && shadow(1).LastTarget == 0u));
    driver.reg(0, Register::COUNTER1) = 1990;
    CHECK(TrevikA_T_position_move(0, 0, 0, 0, 1000, 1000, 0, 0, 0) == TREVIK_ERR_PARAM); // used up
    shadow(0).LastMoveWasArc = std::uint8_t{1};
    CHECK(TrevikA_T_position_move(0, 0, 2000, 1, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    CHECK(Has(driver.log(), "DISTANCE = 10\n"));
    CHECK(shadow(0).LastMoveWasArc == 1); // still marked
}
