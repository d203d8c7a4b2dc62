// Request logs of changes of a running move, worked out by hand.
#include "support/started_library.h"

using namespace trevik;
using namespace trevik::test;

TEST_CASE_FIXTURE(StartedLibrary, "the end of a running move changes, measured from its start")
{
    struct Row {
        std::uint32_t position;
        std::uint8_t absolute;
        const char *written;
        std::uint32_t target;
    };
    // The running move goes from 1000 to 6000.
    const Row rows[] = {{8000, 1, "write  axis 0  DISTANCE = 7000\n", 8000},
                        {Pulses(-200), 0, "write  axis 0  DISTANCE = -200\n", 800},
                        {1000, 1, "write  axis 0  DISTANCE = 0\n", 1000}};
    CHECK(TrevikA_position_change(0, 0, 8000, 1) == TREVIK_ERR_NOT_MOVING);
    busy(0);
    driver.reg(0, Register::DISTANCE) = 5000;
    driver.forget();
    for (const Row &row : rows) {
        CAPTURE(row.written);
        shadow(0).LastTarget = 6000;
        CHECK(TrevikA_position_change(0, 0, row.position, row.absolute) == TREVIK_OK);
        CHECK(driver.log() ==
              std::string("read   axis 0  main status -> 0x0000\nread   axis 0  DISTANCE -> 5000\n") + row.written);
        CHECK(shadow(0).LastTarget == row.target);
    }
    TrevikA_continuous_flag_set(0, 0, 1);
    CHECK(TrevikA_position_change(0, 0, 8000, 1) == TREVIK_ERR_NOT_MOVING);
}

TEST_CASE_FIXTURE(StartedLibrary,
                  "an online change rewrites the running move: the ramp-down point is always manual")
{
    // The running move went from 1000 to 11000. A whole profile of the new one takes 1865 pulses.
    shadow(2).LastTarget = 11000;
    driver.reg(2, Register::DISTANCE) = 10000;
    CHECK(TrevikA_T_onLINE_change(0, 2, 4000, 1, 500, 20000, 100, 100) == TREVIK_ERR_NOT_MOVING);
    CHECK(driver.log() == "read   axis 2  main status -> 0x0008\n");
    busy(2);
    TrevikA_continuous_flag_set(0, 2, 1); // the registers of the running move all the same
    CHECK(TrevikA_T_onLINE_change(0, 2, 4000, 1, 500, 20000, 100, 100) == TREVIK_OK);
    CHECK(driver.log() == R"(read   axis 2  main status -> 0x0000
read   axis 2  DISTANCE -> 10000
write  axis 2  DISTANCE = 3000
write  axis 2  MULTIPLIER = 982
write  axis 2  MAX_SPEED = 65534
write  axis 2  START_SPEED = 1639
write  axis 2  ACCEL_RATE = 6
write  axis 2  DECEL_RATE = 6
write  axis 2  RAMPDOWN_POINT = 932
write  axis 2  MODE = 0x01002041
)");
    CHECK(shadow(2).LastTarget == 4000u);

    // Relative to the start, 1000; too short for the profile; and without deceleration.
    driver.reg(2, Register::DISTANCE) = 3000;
    CHECK(TrevikA_T_onLINE_change(0, 2, Pulses(-1500), 0, 500, 20000, 100, 100) == TREVIK_OK);
    const std::string shorter = driver.log();
    CHECK(Has(shorter, "write  axis 2  DISTANCE = -1500\n"));
    CHECK(Has(shorter, "RAMPDOWN_POINT = 750\nwrite  axis 2  MODE = 0x05002041\n"));
    CHECK(shadow(2).LastTarget == Pulses(-500));
    CHECK(TrevikA_T_onLINE_change(0, 2, 0, 0, 500, 20000, 100, 0) == TREVIK_OK);
    CHECK(Has(driver.log(), "RAMPDOWN_POINT = 0\nwrite  axis 2  MODE = 0x05002041\n"));
    CHECK(TrevikA_T_onLINE_change(0, 2, 1, 0, 500, 6553501, 100, 0) == TREVIK_ERR_PARAM);
}

TEST_CASE_FIXTURE(StartedLibrary,
                  "an S-curve online change lets the chip find the point of long decelerations only")
{
    busy(0);
    driver.reg(0, Register::DISTANCE) = 5000;
    shadow(0).LastTarget = 5000;
    CHECK(TrevikA_S_onLINE_change(0, 0, 10000, 0, 500, 20000, 100, 100, 20, 30) == TREVIK_OK);
    CHECK(driver.log() == R"(read   axis 0  main status -> 0x0000
read   axis 0  DISTANCE -> 5000
write  axis 0  DISTANCE = 10000
write  axis 0  MULTIPLIER = 982
write  axis 0  MAX_SPEED = 65534
write  axis 0  START_SPEED = 1639
write  axis 0  ACCEL_RATE = 5
write  axis 0  DECEL_RATE = 4
write  axis 0  S_ACCEL_RANGE = 7985
write  axis 0  S_DECEL_RANGE = 13689
write  axis 0  RAMPDOWN_POINT = 0
write  axis 0  MODE = 0x01000441
)");
    driver.reg(0, Register::DISTANCE) = 10000;
    CHECK(TrevikA_S_onLINE_change(0, 0, Pulses(-2000), 1, 1000, 10000, 100, 400, 20, 50) == TREVIK_OK);
    const std::string log = driver.log();
    CHECK(Has(log, "DISTANCE = -2000\n"));
    CHECK(Has(log, "MAX_SPEED = 50355\n"));
    CHECK(Has(log, "RAMPDOWN_POINT = 1337\nwrite  axis 0  MODE = 0x05002441\n"));
}

TEST_CASE_FIXTURE(StartedLibrary, "restarts move the targets on by what is left")
{
    for (std::uint8_t axis = 0; axis < 4; ++axis) {
        shadow(axis).LastTarget = 1000;
        driver.reg(axis, StatusRegister::REMAINING) = 500;
        driver.reg(axis, Register::DISTANCE) = axis % 2 == 0 ? 0u : Pulses(-2000);
    }
    CHECK(TrevikA_OneAxis_restart(0, 1) == TREVIK_OK);
    CHECK(driver.log() == R"(read   axis 1  REMAINING -> 500
read   axis 1  DISTANCE -> -2000
command axes 0x2  CMD_RESTART
)");
    CHECK(shadow(1).LastTarget == 500u);
    CHECK(TrevikA_2Axis_restart(0, 4) == TREVIK_OK);
    CHECK(driver.log() == R"(read   axis 1  REMAINING -> 500
read   axis 1  DISTANCE -> -2000
read   axis 3  REMAINING -> 500
read   axis 3  DISTANCE -> -2000
command axes 0xA  CMD_RESTART
)");
    CHECK(TrevikA_3Axis_restart(0, 2) == TREVIK_OK);
    CHECK(Has(driver.log(), "command axes 0xD  CMD_RESTART"));
    CHECK(TrevikA_4Axis_restart(0) == TREVIK_OK);
    CHECK(Has(driver.log(), "command axes 0xF  CMD_RESTART"));
    CHECK(shadow(0).LastTarget == 2000u);
    CHECK(shadow(1).LastTarget == Pulses(-500));

    // No such group: found out after the card number, before the handle.
    CHECK(TrevikA_2Axis_restart(16, 6) == TREVIK_ERR_CARD);
    CHECK(TrevikA_2Axis_restart(3, 6) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_3Axis_restart(0, 4) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_4Axis_restart(3) == TREVIK_ERR_HANDLE);
    CHECK(driver.requests() == 0);
}
