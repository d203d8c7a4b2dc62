// Request logs of velocity moves, speed changes and stops, worked out by hand.
#include "support/started_library.h"

#include <trevik/Trevik.h>

using namespace trevik;
using namespace trevik::test;

TEST_CASE_FIXTURE(StartedLibrary, "a velocity move writes the one rate that it ramps by")
{
    busy(0); // not asked
    // trunc(0.2 s * clock / ((65533 - 13107) * 4)) - 1
    CHECK(sent(TrevikA_T_velocity_move(0, 0, 1000, Pulses(-5000), 200)) == Requests(R"(
        write axis 0: ACCEL_RATE = 17, MODE = 0x01000008, START_SPEED = 13107, MAX_SPEED = 65533, MULTIPLIER = 3931
        command axes 0x1  CMD_START_ACC_DEC)"));
    CHECK(sent(TrevikA_T_velocity_move(0, 0, 5000, 1000, 200)) == Requests(R"(
        write axis 0: DECEL_RATE = 17, MODE = 0x01000000, START_SPEED = 65535, MAX_SPEED = 13653, MULTIPLIER = 4095
        command axes 0x1  CMD_START_ACC_DEC)"));
    TrevikA_velocity_range_fix(0, 0, 3000); // counts although the axis queues nothing
    CHECK(Includes(sent(TrevikA_T_velocity_move(0, 0, 3000, 3000, 0)), R"(
        write axis 0: MAX_SPEED = 40960, MULTIPLIER = 4095
        command axes 0x1  CMD_START_HIGH_DEC)"));
    // The sign of the start speed does not count, that of the maximum does.
    CHECK(Includes(sent(TrevikA_T_velocity_move(0, 0, Pulses(-3000), Pulses(-3000), 0)), R"(
        write axis 0: START_SPEED = 40960, MAX_SPEED = 40960, MULTIPLIER = 4095
        command axes 0x1  CMD_START_HIGH)"));
}

TEST_CASE_FIXTURE(StartedLibrary, "an S-curve velocity move has the range of the same rise whichever way it goes")
{
    // trunc(4000 * 40 / (160 * 2)) = 500 pulses/s: 6553 units.
    CHECK(sent(TrevikA_S_velocity_move(0, 3, 1000, Pulses(-5000), 200, 40)) == Requests(R"(
        write axis 3: ACCEL_RATE = 14, S_ACCEL_RANGE = 6553, MODE = 0x01000408, START_SPEED = 13107,
            MAX_SPEED = 65534, MULTIPLIER = 3931
        command axes 0x8  CMD_START_ACC_DEC)"));
    TrevikA_velocity_range_fix(0, 3, 5000);
    CHECK(Includes(sent(TrevikA_S_velocity_move(0, 3, 5000, 1000, 200, 40)),
                   "write axis 3: DECEL_RATE = 14, S_DECEL_RANGE = 6553"));
    CHECK(TrevikA_S_velocity_move(0, 3, 6553501, 1000, 200, 40) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_velocity_move(0, 3, 0, Pulses(-6553501), 200) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_velocity_change(0, 3, 6553501, 200) == TREVIK_ERR_PARAM);
    CHECK(Trevik_S1_velocity_change(0, 3, Pulses(-6553501), 200, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_velocity_range_fix(0, 3, 6553501) == TREVIK_ERR_PARAM);
    CHECK(driver.requests() == 0);
}

TEST_CASE_FIXTURE(StartedLibrary, "speed changes compare register values and keep the curve of the move")
{
    TrevikA_velocity_range_fix(0, 1, 10000);
    driver.reg(1, Register::MODE) = 0x01000041;
    CHECK(sent(TrevikA_velocity_change(0, 1, 3000, 300), TREVIK_ERR_NOT_MOVING) ==
          Requests("read axis 1: MODE -> 0x01000041"));

    driver.reg(1, Register::MODE) = 0x01000008;
    driver.reg(1, Register::MAX_SPEED) = 52427; // 8000 pulses/s
    driver.reg(1, Register::S_DECEL_RANGE) = 4000;
    CHECK(sent(TrevikA_velocity_change(0, 1, Pulses(-3002), 300)) == Requests(R"(
        read axis 1: MODE -> 0x01000008, MAX_SPEED -> 52427, S_ACCEL_RANGE -> 0, S_DECEL_RANGE -> 4000
        write axis 1: DECEL_RATE = 44, MODE = 0x01000008, MULTIPLIER = 1965, MAX_SPEED = 19673)"));
    const auto change = [this](std::uint32_t mode_word, std::uint32_t speed, std::uint32_t ms) {
        shadow(1).ModeWord = mode_word;
        return sent(TrevikA_velocity_change(0, 1, speed, ms));
    };
    CHECK(Includes(change(0x1000000, 9500, 50), "write axis 1: ACCEL_RATE = 24, MODE = 0x01000000"));
    CHECK(Includes(change(0x1000400, 3000, 300), "write axis 1: DECEL_RATE = 35, MODE = 0x01000400"));
    CHECK(Includes(change(0x1000000, 9500, 0), "write axis 1: ACCEL_RATE = 1"));
    CHECK(Includes(change(0x1000000, 8000, 0), "write axis 1: ACCEL_RATE = 65535"));
}

TEST_CASE_FIXTURE(StartedLibrary, "the earlier speed change by linear and curved times")
{
    TrevikA_velocity_range_fix(0, 1, 10000);
    driver.reg(1, Register::MODE) = 0x41; // not looked at
    driver.reg(1, Register::MAX_SPEED) = 52427;
    shadow(1).ModeWord = 0x1000400;
    // S = trunc(32767 * 60 / (2 * 60 + 2 * 200)); rate of 320 ms over 32767 + 2 * 3780 units.
    CHECK(sent(Trevik_S1_velocity_change(0, 1, 3000, 200, 60)) == Requests(R"(
        read axis 1: MAX_SPEED -> 52427, S_ACCEL_RANGE -> 0, S_DECEL_RANGE -> 0
        write axis 1: DECEL_RATE = 38, S_DECEL_RANGE = 3780, MODE = 0x01000400, MULTIPLIER = 1965,
            MAX_SPEED = 19660)"));
    // Without a curved section the ramp is curved throughout: trunc(0.2 s * clock / (32767 * 8)) - 1.
    CHECK(Includes(sent(Trevik_S1_velocity_change(0, 1, 3000, 200, 0)),
                   "write axis 1: DECEL_RATE = 14, S_DECEL_RANGE = 0"));
    shadow(1).ModeWord = 0x1000000; // a T-curve keeps to it
    CHECK(Includes(sent(Trevik_S1_velocity_change(0, 1, 3000, 300, 60)),
                   "write axis 1: DECEL_RATE = 44, S_DECEL_RANGE = 0"));
}

TEST_CASE_FIXTURE(StartedLibrary, "stops")
{
    const std::uint8_t axes[4] = {1, 2, 1, 255};
    const std::string rebased = "read axis 0: main status -> 0x0008, COUNTER1 -> 0\n"
                                "read axis 2: main status -> 0x0008, COUNTER1 -> 0";
    driver.reg(0, Register::MAX_SPEED) = driver.reg(2, Register::MAX_SPEED) = 65535;
    driver.reg(0, Register::S_DECEL_RANGE) = driver.reg(2, Register::S_DECEL_RANGE) = 8000;
    shadow(2).ModeWord = 0x1000400;
    // trunc(0.2 s * clock / (65535 * 4)) - 1 = 14, and over 65535 + 2 * 8000 of an S-curve 11.
    CHECK(sent(TrevikA_stop(0, axes, 200)) == Requests(R"(
        read axis 0: MAX_SPEED -> 65535, S_DECEL_RANGE -> 8000
        write axis 0: DECEL_RATE = 14
        read axis 2: MAX_SPEED -> 65535, S_DECEL_RANGE -> 8000
        write axis 2: DECEL_RATE = 11
        command axes 0x5  CMD_STOP_DECEL)"));
    CHECK(sent(TrevikA_stop(0, axes, 0)) == Requests("command axes 0x5  CMD_STOP_IMMEDIATE\n" + rebased));
    busy(3);
    CHECK(sent(TrevikA_stop_emg(0)) == Requests("command axes 0xF  CMD_EMERGENCY_STOP\n" + rebased));
    driver.reg(1, StatusRegister::CURRENT_SPEED) = 0xABCDFFFE;
    driver.reg(1, Register::MULTIPLIER) = 1965;
    double speed = 0;
    CHECK(TrevikA_velocity_read(0, 1, &speed) == TREVIK_OK);
    CHECK(speed == doctest::Approx(65534.0 * 300 / 1966));
}
