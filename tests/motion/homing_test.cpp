// Request logs of homing, worked out by hand.
#include "support/started_library.h"

using namespace trevik;
using namespace trevik::test;

TEST_CASE_FIXTURE(StartedLibrary, "homing computes its speeds in integers, with one rate for both ramps")
{
    // 1966 * 10000 / 300 = 65533 and 1966 * 500 / 300 = 3276, nothing rounded up.
    CHECK(TrevikA_home_start(0, 2, 500, 10000, 100, 0) == TREVIK_OK);
    CHECK(driver.log() == R"(read   axis 2  main status -> 0x0008
write  axis 2  START_SPEED = 3276
write  axis 2  MAX_SPEED = 65533
write  axis 2  ACCEL_RATE = 6
write  axis 2  DECEL_RATE = 6
write  axis 2  MULTIPLIER = 1965
write  axis 2  MODE = 0x01000010
write  axis 2  CORRECTION_SPEED = 6553
command axes 0x4  CMD_START_ACC_DEC
)");
    // No time, and no rise: the slowest ramp.
    CHECK(TrevikA_home_start(0, 2, 500, 10000, 0, 9) == TREVIK_OK);
    const std::string no_time = driver.log();
    CHECK(Has(no_time, "ACCEL_RATE = 65535\nwrite  axis 2  DECEL_RATE = 65535\n"));
    CHECK(Has(no_time, "MODE = 0x01000018\n"));
    CHECK(Has(no_time, "CMD_START_HIGH\n"));
    CHECK(TrevikA_home_start(0, 2, 10000, 10000, 100, 0) == TREVIK_OK);
    CHECK(Has(driver.log(), "ACCEL_RATE = 65535\n"));

    busy(2);
    CHECK(TrevikA_home_start(0, 2, 500, 6553501, 100, 0) == TREVIK_ERR_BUSY);
    idle(2);
    CHECK(TrevikA_home_start(0, 2, 500, 6553501, 100, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_home_search(0, 2, 500, 0x80000000, 100, 0, 1) == TREVIK_ERR_PARAM);
}

TEST_CASE_FIXTURE(StartedLibrary, "a queued home search carries its distance and leaves home mode 0")
{
    driver.reg(1, Register::HOME_CONFIG) = 0xABCDEF2C;
    TrevikA_velocity_range_fix(0, 1, 10000);
    TrevikA_continuous_flag_set(0, 1, 1);
    CHECK(TrevikA_home_search(0, 1, 500, 5000, 100, 1, 777) == TREVIK_OK);
    CHECK(driver.log() == R"(read   axis 1  main status -> 0x0008
write  axis 1  PRESET_DISTANCE = 777
write  axis 1  PRESET_START_SPEED = 3276
write  axis 1  PRESET_MAX_SPEED = 32766
write  axis 1  PRESET_ACCEL_RATE = 15
write  axis 1  PRESET_DECEL_RATE = 15
write  axis 1  PRESET_MULTIPLIER = 1965
write  axis 1  PRESET_MODE = 0x0100001D
write  axis 1  CORRECTION_SPEED = 6553
read   axis 1  HOME_CONFIG -> 0xABCDEF2C
write  axis 1  HOME_CONFIG = 0xABCDEF20
command axes 0x2  CMD_START_ACC_DEC
)");
    preset_full(1);
    CHECK(TrevikA_home_start(0, 1, 500, 5000, 100, 1) == TREVIK_ERR_QUEUE_FULL);
}

TEST_CASE_FIXTURE(StartedLibrary, "the home mode keeps the rest of its register")
{
    driver.reg(0, Register::HOME_CONFIG) = 0xABCDEF21;
    CHECK(TrevikA_home_mode_set(0, 0, 12, 15) == TREVIK_OK);
    CHECK(driver.log() == "read   axis 0  HOME_CONFIG -> 0xABCDEF21\nwrite  axis 0  HOME_CONFIG = 0xABCDEFFC\n");
    CHECK(TrevikA_home_mode_set(0, 0, 13, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_home_mode_set(0, 0, 0, 16) == TREVIK_ERR_PARAM);
    CHECK(driver.requests() == 0);
}
