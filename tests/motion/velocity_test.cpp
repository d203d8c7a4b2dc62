// Request logs of velocity moves, speed changes and stops, worked out by hand.
#include "support/started_library.h"

#include <trevik/Trevik.h>

using namespace trevik;
using namespace trevik::test;

TEST_CASE_FIXTURE(StartedLibrary, "a velocity move writes the one rate that it ramps by")
{
    busy(0); // not asked
    CHECK(TrevikA_T_velocity_move(0, 0, 1000, Pulses(-5000), 200) == TREVIK_OK);
    // trunc(0.2 s * clock / ((65533 - 13107) * 4)) - 1
    CHECK(driver.log() == R"(write  axis 0  ACCEL_RATE = 17
write  axis 0  MODE = 0x01000008
write  axis 0  START_SPEED = 13107
write  axis 0  MAX_SPEED = 65533
write  axis 0  MULTIPLIER = 3931
command axes 0x1  CMD_START_ACC_DEC
)");
    CHECK(TrevikA_T_velocity_move(0, 0, 5000, 1000, 200) == TREVIK_OK);
    CHECK(driver.log() == R"(write  axis 0  DECEL_RATE = 17
write  axis 0  MODE = 0x01000000
write  axis 0  START_SPEED = 65535
write  axis 0  MAX_SPEED = 13653
write  axis 0  MULTIPLIER = 4095
command axes 0x1  CMD_START_ACC_DEC
)");
    TrevikA_velocity_range_fix(0, 0, 3000); // counts although the axis queues nothing
    CHECK(TrevikA_T_velocity_move(0, 0, 3000, 3000, 0) == TREVIK_OK);
    CHECK(Has(driver.log(),
              "MAX_SPEED = 40960\nwrite  axis 0  MULTIPLIER = 4095\ncommand axes 0x1  CMD_START_HIGH_DEC"));
}

TEST_CASE_FIXTURE(StartedLibrary, "an S-curve velocity move has the range of the same rise whichever way it goes")
{
    // trunc(4000 * 40 / (160 * 2)) = 500 pulses/s: 6553 units.
    CHECK(TrevikA_S_velocity_move(0, 3, 1000, Pulses(-5000), 200, 40) == TREVIK_OK);
    CHECK(driver.log() == R"(write  axis 3  ACCEL_RATE = 14
write  axis 3  S_ACCEL_RANGE = 6553
write  axis 3  MODE = 0x01000408
write  axis 3  START_SPEED = 13107
write  axis 3  MAX_SPEED = 65534
write  axis 3  MULTIPLIER = 3931
command axes 0x8  CMD_START_ACC_DEC
)");
    TrevikA_velocity_range_fix(0, 3, 5000);
    CHECK(TrevikA_S_velocity_move(0, 3, 5000, 1000, 200, 40) == TREVIK_OK);
    CHECK(driver.log().starts_with("write  axis 3  DECEL_RATE = 14\nwrite  axis 3  S_DECEL_RANGE = 6553\n"));
    CHECK(TrevikA_S_velocity_move(0, 3, 6553501, 1000, 200, 40) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_velocity_move(0, 3, 0, Pulses(-6553501), 200) == TREVIK_ERR_PARAM);
    CHECK(driver.requests() == 0);
}

TEST_CASE_FIXTURE(StartedLibrary, "speed changes compare register values and keep the curve of the move")
{
    TrevikA_velocity_range_fix(0, 1, 10000);
    driver.reg(1, Register::MODE) = 0x01000041;
    CHECK(TrevikA_velocity_change(0, 1, 3000, 300) == TREVIK_ERR_NOT_MOVING);
    CHECK(driver.log() == "read   axis 1  MODE -> 0x01000041\n");

    driver.reg(1, Register::MODE) = 0x01000008;
    driver.reg(1, Register::MAX_SPEED) = 52427; // 8000 pulses/s
    driver.reg(1, Register::S_DECEL_RANGE) = 4000;
    CHECK(TrevikA_velocity_change(0, 1, Pulses(-3000), 300) == TREVIK_OK);
    CHECK(driver.log() == R"(read   axis 1  MODE -> 0x01000008
read   axis 1  MAX_SPEED -> 52427
read   axis 1  S_ACCEL_RANGE -> 0
read   axis 1  S_DECEL_RANGE -> 4000
write  axis 1  DECEL_RATE = 44
write  axis 1  MODE = 0x01000008
write  axis 1  MULTIPLIER = 1965
write  axis 1  MAX_SPEED = 19660
)");
    struct Row {
        std::uint32_t speed, ms;
        bool s_curve;
        const char *rate;
    };
    const Row rows[] = {{9500, 50, false, "ACCEL_RATE = 24"},
                        {3000, 300, true, "DECEL_RATE = 35"},
                        {9500, 0, false, "ACCEL_RATE = 1\n"},
                        {8000, 0, false, "ACCEL_RATE = 65535"},
                        {8000, 50, true, "ACCEL_RATE = 65535"}};
    for (const Row &row : rows) {
        CAPTURE(row.rate);
        shadow(1).ModeWord = row.s_curve ? 0x1000400u : 0x1000000u;
        driver.forget();
        CHECK(TrevikA_velocity_change(0, 1, row.speed, row.ms) == TREVIK_OK);
        const std::string log = driver.log();
        CHECK(Has(log, row.rate));
        CHECK(Has(log, "write  axis 1  MODE = 0x01000400") == row.s_curve);
    }
}

TEST_CASE_FIXTURE(StartedLibrary, "the earlier speed change by linear and curved times")
{
    TrevikA_velocity_range_fix(0, 1, 10000);
    driver.reg(1, Register::MODE) = 0x41; // not looked at
    driver.reg(1, Register::MAX_SPEED) = 52427;
    shadow(1).ModeWord = 0x1000400;
    // S = trunc(32767 * 60 / (2 * 60 + 2 * 200)); rate of 320 ms over 32767 + 2 * 3780 units.
    CHECK(Trevik_S1_velocity_change(0, 1, 3000, 200, 60) == TREVIK_OK);
    CHECK(driver.log() == R"(read   axis 1  MAX_SPEED -> 52427
read   axis 1  S_ACCEL_RANGE -> 0
read   axis 1  S_DECEL_RANGE -> 0
write  axis 1  DECEL_RATE = 38
write  axis 1  S_DECEL_RANGE = 3780
write  axis 1  MODE = 0x01000400
write  axis 1  MULTIPLIER = 1965
write  axis 1  MAX_SPEED = 19660
)");
    CHECK(Trevik_S1_velocity_change(0, 1, 3000, 200, 0) == TREVIK_OK);
    CHECK(Has(driver.log(), "DECEL_RATE = 14\nwrite  axis 1  S_DECEL_RANGE = 0\n"));
    shadow(1).ModeWord = 0x1000000; // a T-curve keeps to it
    CHECK(Trevik_S1_velocity_change(0, 1, 3000, 300, 60) == TREVIK_OK);
    CHECK(Has(driver.log(), "DECEL_RATE = 44\nwrite  axis 1  S_DECEL_RANGE = 0\n"));
    CHECK(Trevik_S1_velocity_change(0, 1, 3000, 0, 0) == TREVIK_OK);
    CHECK(Has(driver.log(), "DECEL_RATE = 1\n"));
}

TEST_CASE_FIXTURE(StartedLibrary, "stops")
{
    const std::uint8_t axes[4] = {1, 2, 1, 255};
    driver.reg(0, Register::MAX_SPEED) = 65535;
    CHECK(TrevikA_stop(0, axes, 200) == TREVIK_OK);
    // trunc(0.2 s * clock / (65535 * 4)) - 1 = 14; an axis without a speed gets the slowest rate.
    CHECK(driver.log() == R"(read   axis 0  MAX_SPEED -> 65535
read   axis 0  S_DECEL_RANGE -> 0
write  axis 0  DECEL_RATE = 14
read   axis 2  MAX_SPEED -> 0
read   axis 2  S_DECEL_RANGE -> 0
write  axis 2  DECEL_RATE = 65535
command axes 0x5  CMD_STOP_DECEL
)");
    CHECK(TrevikA_stop(0, axes, 0) == TREVIK_OK);
    CHECK(driver.log() == R"(command axes 0x5  CMD_STOP_IMMEDIATE
read   axis 0  main status -> 0x0008
read   axis 0  COUNTER1 -> 0
read   axis 2  main status -> 0x0008
read   axis 2  COUNTER1 -> 0
)");
    busy(3);
    CHECK(TrevikA_stop_emg(0) == TREVIK_OK);
    CHECK(driver.log() == R"(command axes 0xF  CMD_EMERGENCY_STOP
read   axis 0  main status -> 0x0008
read   axis 0  COUNTER1 -> 0
read   axis 2  main status -> 0x0008
read   axis 2  COUNTER1 -> 0
)");
    driver.reg(1, StatusRegister::CURRENT_SPEED) = 0xABCDFFFE;
    driver.reg(1, Register::MULTIPLIER) = 1965;
    double speed = 0;
    CHECK(TrevikA_velocity_read(0, 1, &speed) == TREVIK_OK);
    CHECK(speed == doctest::Approx(65534.0 * 300 / 1966));
}
