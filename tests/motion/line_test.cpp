// Request logs of whole line moves, worked out by hand.
#include "support/started_library.h"

using namespace trevik;
using namespace trevik::test;

TEST_CASE_FIXTURE(StartedLibrary, "a 2-axis line runs its longest axis at its share of the path speed")
{
    // Distances 3000, -4000: k = 0.8. m = 1965 from the unscaled 10000; FH = trunc(1966 * 8000 / 300 + 0.95), FL
    // from 400; rate = trunc(1966080 / (49805 * 4)) - 1.
    const std::uint8_t flags[4] = {9, 1, 9, 0}; // by axis
    for (const std::uint8_t axis : {std::uint8_t{1}, std::uint8_t{3}})
        shadow(axis).LastTarget = 1000;
    CHECK(sent(TrevikA_T_LINE2_move(0, 4, 4000, -4000, flags, 500, 10000, 100, 100, 2)) == Requests(R"(
        read axis 13: main status -> 0x0008
        modify axis 13: START_TRIGGER_ENV 0x00000000 -> 0x00000000
        write axis 1: DISTANCE = 3000, START_SPEED = 2622, MAX_SPEED = 52427, ACCEL_RATE = 8, DECEL_RATE = 8,
            MULTIPLIER = 1965, RAMPDOWN_POINT = 0, MODE = 0x01080061
        write axis 3: DISTANCE = -4000, START_SPEED = 2622, MAX_SPEED = 52427, ACCEL_RATE = 8, DECEL_RATE = 8,
            MULTIPLIER = 1965, RAMPDOWN_POINT = 0, MODE = 0x01080061
        write axis 13: CORRECTION_SPEED = 6553
        command axes 0xA  CMD_START_ACC_DEC)"));
    CHECK(shadow(3).ModeWord == 0x01000061u); // the trigger is gone
}

TEST_CASE_FIXTURE(StartedLibrary, "the first axis alone decides whether a line is short")
{
    // The profile needs 3002 pulses. 3000 on the first axis: short, each axis its share 39 * |D| / 46.
    CHECK(Includes(sent(TrevikA_T_LINE3_move(0, 3, 3000, -400, 100, relative, 500, 10000, 100, 500, 0)), R"(
        write axis 1: RAMPDOWN_POINT = 2543
        write axis 2: RAMPDOWN_POINT = 339
        write axis 3: RAMPDOWN_POINT = 84, MODE = 0x05002061
        command axes 0xE  CMD_START_ACC_DEC)"));
    // 400 on the first axis and 30000 on the second: short all the same; the other way round: full for every axis.
    CHECK(Includes(sent(TrevikA_T_LINE2_move(0, 0, 400, 30000, relative, 500, 10000, 100, 500, 0)),
                   "write axis 1: MODE = 0x05002061"));
    CHECK(Includes(sent(TrevikA_T_LINE3_move(0, 0, 30000, -400, 100, relative, 500, 10000, 100, 500, 0)), R"(
        write axis 0: RAMPDOWN_POINT = 2592
        write axis 2: RAMPDOWN_POINT = 2592, MODE = 0x01002061)"));
}

TEST_CASE_FIXTURE(StartedLibrary, "a queued S-curve line of 3 axes, given by linear and curved times")
{
    for (std::uint8_t axis = 0; axis < 3; ++axis) {
        TrevikA_continuous_flag_set(0, axis, 1);
        busy(axis);
    }
    // k = 1 along axis 0. FH = 65534, FL = 3277, rise 62257. Acceleration 100 ms linear + 2 x 50 ms curved: S range
    // trunc(50 * 62257 / 300) = 10376, rate trunc(200 * clock / ((62257 + 20752) * 4000)) - 1 = 10. Deceleration
    // wholly curved in 150 ms: trunc(150 * clock / (62257 * 8000)) - 1 = 4.
    CHECK(TrevikA_S_LINE3_move(0, 0, 50000, 0, 0, relative, 500, 10000, 100, 150, 50, 0, 1) == TREVIK_OK);
    CHECK(driver.log().starts_with(Requests(R"(
        read axis 012: main status -> 0x0000
        write axis 0: PRESET_DISTANCE = 50000, PRESET_START_SPEED = 3277, PRESET_MAX_SPEED = 65534,
            PRESET_ACCEL_RATE = 10, PRESET_DECEL_RATE = 4, PRESET_MULTIPLIER = 1965, PRESET_RAMPDOWN_POINT = 0,
            PRESET_MODE = 0x01040461, PRESET_S_ACCEL_RANGE = 10376, PRESET_S_DECEL_RANGE = 0)")));
}

TEST_CASE_FIXTURE(StartedLibrary, "linear and curved times: clamps and wraps")
{
    // No linear part: the fastest rate whatever the curved part. No rise: the range still becomes 1.
    CHECK(Includes(sent(TrevikA_S_LINE2_move(0, 0, 100000, 0, relative, 500, 10000, 0, 0, 50, 0, 0)),
                   "write axis 0: ACCEL_RATE = 1, S_ACCEL_RANGE = 31128"));
    CHECK(Includes(sent(TrevikA_S_LINE2_move(0, 0, 100000, 0, relative, 10000, 10000, 100, 0, 50, 0, 0)),
                   "write axis 0: ACCEL_RATE = 65535, S_ACCEL_RANGE = 1"));
}

TEST_CASE_FIXTURE(StartedLibrary, "a 4-axis S-curve line, given by whole ramp times, fits a short distance")
{
    // Ramps of 100 ms up and 400 ms down, curved sections 20 ms and 50 ms: S speeds 9500 * 20 / 160 = 1187 and
    // 9500 * 50 / 700 = 678 pulses/s; S ranges trunc(1966 * 1187 / 300) = 7778 and 4443. Along axis 3.
    CHECK(Includes(sent(TrevikA_S_LINE4_move(0, 0, 0, 0, 700, relative, 500, 10000, 100, 400, 20, 50, 0)), R"(
        write axis 3: MODE = 0x05002461, S_ACCEL_RANGE = 0
        command axes 0xF  CMD_START_ACC_DEC)")); // axis 0 moves 0: wholly curved
    CHECK(Includes(sent(TrevikA_S_LINE4_move(0, 1000000, 0, 0, 0, relative, 500, 10000, 100, 400, 20, 50, 0)),
                   "write axis 0: MODE = 0x01002461, S_ACCEL_RANGE = 7778, S_DECEL_RANGE = 4443"));
}

TEST_CASE_FIXTURE(StartedLibrary, "refusals of lines, and what they leave behind")
{
    CHECK(TrevikA_T_LINE2_move(0, 6, 1, 1, relative, 1, 1, 0, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_LINE3_move(0, 4, 1, 1, 1, relative, 1, 1, 0, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_S_LINE2_move(0, 0, 1, 1, relative, 1, 1, 0, 0, 0, 0, 3) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_LINE4_move(0, 1, 1, 1, 1, relative, 1, 1, 0, 0, 2) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_LINE2_move(0, 0, 1, 1, nullptr, 1, 1, 0, 0, 0) == TREVIK_ERR_PARAM);
    TrevikA_continuous_flag_set(0, 0, 1);
    CHECK(TrevikA_T_LINE2_move(0, 0, 1, 1, relative, 1, 1, 0, 0, 0) == TREVIK_ERR_CONTINUOUS_MIX);
    CHECK(driver.requests() == 0);

    TrevikA_continuous_flag_set(0, 1, 1);
    preset_full(1);
    CHECK(sent(TrevikA_T_LINE2_move(0, 0, 1, 1, relative, 1, 1, 0, 0, 0), TREVIK_ERR_QUEUE_FULL) ==
          Requests("read axis 0: main status -> 0x0008\nread axis 1: main status -> 0x4000"));

    // A maximum speed that is too high is noticed after the targets have moved on.
    CHECK(TrevikA_T_LINE2_move(0, 5, 700, 800, relative, 1, 6553501, 0, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(!Has(driver.log(), "write"));
    busy(3);
    CHECK(TrevikA_T_LINE2_move(0, 5, 1, 1, relative, 1, 1, 0, 0, 0) == TREVIK_ERR_BUSY);
    CHECK((shadow(2).LastTarget == 700u && shadow(3).LastTarget == 800u));
}
