// Request logs of changes of a running move, worked out by hand.
#include "support/started_library.h"

#include <trevik/Trevik.h>

using namespace trevik;
using namespace trevik::test;

TEST_CASE_FIXTURE(StartedLibrary, "the end of a running move changes, measured from its start")
{
    // The running move goes from 1000 to 6000.
    const auto change = [this](std::uint32_t position, std::uint8_t absolute) {
        driver.forget();
        shadow(0).LastTarget = 6000;
        return sent(TrevikA_position_change(0, 0, position, absolute));
    };
    CHECK(TrevikA_position_change(0, 0, 8000, 1) == TREVIK_ERR_NOT_MOVING);
    busy(0);
    driver.reg(0, Register::DISTANCE) = 5000;
    CHECK(change(8000, 1) == Requests(R"(
        read axis 0: main status -> 0x0000, DISTANCE -> 5000
        write axis 0: DISTANCE = 7000)"));
    CHECK(shadow(0).LastTarget == 8000u);
    CHECK(Includes(change(Pulses(-200), 0), "write axis 0: DISTANCE = -200"));
    CHECK(shadow(0).LastTarget == 800u);
    TrevikA_continuous_flag_set(0, 0, 1);
    CHECK(TrevikA_position_change(0, 0, 8000, 1) == TREVIK_ERR_NOT_MOVING);
}

TEST_CASE_FIXTURE(StartedLibrary,
                  "an online change rewrites the running move: the ramp-down point is always manual")
{
    // The running move went from 1000 to 11000. A whole profile of the new one takes 1865 pulses.
    shadow(2).LastTarget = 11000;
    driver.reg(2, Register::DISTANCE) = 10000;
    CHECK(sent(TrevikA_T_onLINE_change(0, 2, 4000, 1, 500, 20000, 100, 100), TREVIK_ERR_NOT_MOVING) ==
          Requests("read axis 2: main status -> 0x0008"));
    busy(2);
    TrevikA_continuous_flag_set(0, 2, 1); // the registers of the running move all the same
    CHECK(sent(TrevikA_T_onLINE_change(0, 2, 4000, 1, 500, 20000, 100, 100)) == Requests(R"(
        read axis 2: main status -> 0x0000, DISTANCE -> 10000
        write axis 2: DISTANCE = 3000, MULTIPLIER = 982, MAX_SPEED = 65534, START_SPEED = 1639,
            ACCEL_RATE = 6, DECEL_RATE = 6, RAMPDOWN_POINT = 932, MODE = 0x01002041)"));
    CHECK(shadow(2).LastTarget == 4000u);

    // Relative to the start, 1000; too short for the profile.
    driver.reg(2, Register::DISTANCE) = 3000;
    CHECK(Includes(sent(TrevikA_T_onLINE_change(0, 2, Pulses(-1500), 0, 500, 20000, 100, 100)),
                   "write axis 2: DISTANCE = -1500, RAMPDOWN_POINT = 750, MODE = 0x05002041"));
    CHECK(shadow(2).LastTarget == Pulses(-500));
    CHECK(TrevikA_T_onLINE_change(0, 2, 1, 0, 500, 6553501, 100, 0) == TREVIK_ERR_PARAM);
}

TEST_CASE_FIXTURE(StartedLibrary,
                  "an S-curve online change lets the chip find the point of long decelerations only")
{
    busy(0);
    driver.reg(0, Register::DISTANCE) = 5000;
    shadow(0).LastTarget = 5000;
    // Ranges: trunc(19500 * 20 / (80 * 2)) = 2437 and trunc(19500 * 30 / (70 * 2)) = 4178 pulses/s, times 983 /
    // 300. Rates: trunc(1966080 / ((63895 + 2 * 7985) * 4)) - 1 and with 13689.
    CHECK(sent(TrevikA_S_onLINE_change(0, 0, 10000, 0, 500, 20000, 100, 100, 20, 30)) == Requests(R"(
        read axis 0: main status -> 0x0000, DISTANCE -> 5000
        write axis 0: DISTANCE = 10000, MULTIPLIER = 982, MAX_SPEED = 65534, START_SPEED = 1639,
            ACCEL_RATE = 5, DECEL_RATE = 4, S_ACCEL_RANGE = 7985, S_DECEL_RANGE = 13689, RAMPDOWN_POINT = 0,
            MODE = 0x01000441)"));
    driver.reg(0, Register::DISTANCE) = 10000;
    CHECK(Includes(sent(TrevikA_S_onLINE_change(0, 0, Pulses(-2000), 1, 1000, 10000, 100, 400, 20, 50)),
                   "write axis 0: DISTANCE = -2000, MAX_SPEED = 50355, RAMPDOWN_POINT = 1337, MODE = 0x05002441"));
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
    CHECK(sent(Trevik_OnLine_T_curve_change_LINE2(0, 1, 20000, 3000, 1, 500, 10000, 0.1, 0.4)) == Requests(R"(
        read axis 02: main status -> 0x0000
        read axis 0: DISTANCE -> 10000
        read axis 2: DISTANCE -> 0
        write axis 0: DISTANCE = 20000, MULTIPLIER = 1965, MAX_SPEED = 64809, START_SPEED = 3241, ACCEL_RATE = 6,
            DECEL_RATE = 30, RAMPDOWN_POINT = 2016, MODE = 0x01002061
        write axis 2: DISTANCE = 3000, MULTIPLIER = 1965, MAX_SPEED = 64809, START_SPEED = 3241, ACCEL_RATE = 6,
            DECEL_RATE = 30, RAMPDOWN_POINT = 2016, MODE = 0x01002061)"));
    driver.reg(0, Register::DISTANCE) = 20000;
    driver.reg(2, Register::DISTANCE) = 3000;
    CHECK(Includes(sent(Trevik_OnLine_T_curve_change_LINE2(0, 1, 5000, 0, 0, 500, 10000, 0.4, 0.4)),
                   "write axis 2: DISTANCE = 0, RAMPDOWN_POINT = 2061, MODE = 0x01002061"));
    CHECK((shadow(0).LastTarget == 5000u && shadow(2).LastTarget == 0u));
    CHECK(Trevik_OnLine_T_curve_change_LINE2(0, 1, 7, 0, 1, 500, 6553501, 0.3, 0.4) == TREVIK_ERR_PARAM);
    CHECK(shadow(0).LastTarget == 7u); // moved before the speed was looked at
    CHECK(Trevik_OnLine_T_curve_change_LINE3(0, 4, 1, 1, 1, 1, 1, 1, 1, 1) == TREVIK_ERR_PARAM);
}

TEST_CASE_FIXTURE(StartedLibrary, "restarts move the targets on by what is left")
{
    for (std::uint8_t axis = 0; axis < 4; ++axis) {
        shadow(axis).LastTarget = 1000;
        driver.reg(axis, StatusRegister::REMAINING) = 500;
        driver.reg(axis, Register::DISTANCE) = axis % 2 == 0 ? 0u : Pulses(-2000);
    }
    CHECK(sent(TrevikA_OneAxis_restart(0, 1)) == Requests(R"(
        read axis 1: REMAINING -> 500, DISTANCE -> -2000
        command axes 0x2  CMD_RESTART)"));
    CHECK(sent(TrevikA_2Axis_restart(0, 4)) == Requests(R"(
        read axis 13: REMAINING -> 500, DISTANCE -> -2000
        command axes 0xA  CMD_RESTART)"));
    CHECK(Includes(sent(TrevikA_3Axis_restart(0, 2)), "command axes 0xD  CMD_RESTART"));
    CHECK(Includes(sent(TrevikA_4Axis_restart(0)), "command axes 0xF  CMD_RESTART"));
    CHECK((shadow(0).LastTarget == 2000u && shadow(1).LastTarget == Pulses(-500)));

    // No such group: found out before the handle.
    CHECK(TrevikA_2Axis_restart(3, 6) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_3Axis_restart(0, 4) == TREVIK_ERR_PARAM);
    CHECK(driver.requests() == 0);
}
