// Request logs of homing, worked out by hand.
#include "support/started_library.h"

using namespace trevik;
using namespace trevik::test;

TEST_CASE_FIXTURE(StartedLibrary, "homing computes its speeds in integers, with one rate for both ramps")
{
    // 1966 * 10000 / 300 = 65533 and 1966 * 500 / 300 = 3276, nothing rounded up.
    CHECK(sent(TrevikA_home_start(0, 2, 500, 10000, 100, 0)) == Requests(R"(
        read axis 2: main status -> 0x0008
        write axis 2: START_SPEED = 3276, MAX_SPEED = 65533, ACCEL_RATE = 6, DECEL_RATE = 6, MULTIPLIER = 1965,
            MODE = 0x01000010, CORRECTION_SPEED = 6553
        command axes 0x4  CMD_START_ACC_DEC)"));
    // No time, and no rise: the slowest ramp.
    CHECK(Includes(sent(TrevikA_home_start(0, 2, 500, 10000, 0, 9)), R"(
        write axis 2: ACCEL_RATE = 65535, DECEL_RATE = 65535, MULTIPLIER = 1965, MODE = 0x01000018,
            CORRECTION_SPEED = 6553
        command axes 0x4  CMD_START_HIGH)"));
    CHECK(Includes(sent(TrevikA_home_start(0, 2, 10000, 10000, 100, 0)), "ACCEL_RATE = 65535"));

    CHECK(TrevikA_home_start(0, 2, 500, 6553501, 100, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_home_search(0, 2, 500, 0x80000000, 100, 0, 1) == TREVIK_ERR_PARAM);
    busy(2);
    CHECK(TrevikA_home_start(0, 2, 500, 6553501, 100, 0) == TREVIK_ERR_BUSY);
}

TEST_CASE_FIXTURE(StartedLibrary, "a queued home search carries its distance and leaves home mode 0")
{
    driver.reg(1, Register::HOME_CONFIG) = 0xABCDEF2C;
    TrevikA_velocity_range_fix(0, 1, 10000);
    TrevikA_continuous_flag_set(0, 1, 1);
    CHECK(sent(TrevikA_home_search(0, 1, 500, 5000, 100, 1, 777)) == Requests(R"(
        read axis 1: main status -> 0x0008
        write axis 1: PRESET_DISTANCE = 777, PRESET_START_SPEED = 3276, PRESET_MAX_SPEED = 32766,
            PRESET_ACCEL_RATE = 15, PRESET_DECEL_RATE = 15, PRESET_MULTIPLIER = 1965, PRESET_MODE = 0x0100001D,
            CORRECTION_SPEED = 6553
        modify axis 1: HOME_CONFIG 0xABCDEF2C -> 0xABCDEF20
        command axes 0x2  CMD_START_ACC_DEC)"));
}
