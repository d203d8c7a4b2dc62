// Card initialisation, request by request.
#include "support/started_library.h"

#include <doctest/doctest.h>

using namespace trevik;
using namespace trevik::test;

TEST_CASE_FIXTURE(StartedLibrary, "card initialisation")
{
    for (std::uint32_t axis = 0; axis < 4; ++axis)
        busy(axis);
    driver.reg(1, Register::SIGNAL_CONFIG2) = 0x02205545; // as axes with outputs hold it
    driver.reg(2, Register::SIGNAL_CONFIG2) = 0x02205545;
    // An axis that was moved before is looked at: here it still moves, and is not re-based.
    const auto expected = [](bool moved) {
        std::string log;
        for (const char *lines :
             {"command axes 0x@  CMD_OUTPUT_OFF\n", "command axes 0x@  CMD_PORT1_HIGH\n",
              "command axes 0x@  CMD_PORT0_HIGH\n", "command axes 0x@  CMD_PORT7_HIGH\n",
              "write  axis #  CORRECTION_SPEED = 256\n", "write  axis #  SIGNAL_CONFIG1 = 0xB0077007\n"})
            log += EachAxis("0123", lines);
        log += EachAxis("012", "write  axis #  SIGNAL_CONFIG2 = 0x02204005\n");
        log += "write  axis 3  SIGNAL_CONFIG2 = 0x02204145\n";
        for (const char *lines :
             {"write  axis #  HOME_CONFIG = 0x00F02000\n", "write  axis #  LIMIT_CONFIG = 0x00000000\n",
              "write  axis #  START_TRIGGER_ENV = 0x00000000\n", "write  axis #  MOTION_CONFIG = 0x00000000\n",
              moved ? "command axes 0x@  CMD_STOP_IMMEDIATE\nread   axis #  main status -> 0x0000\n"
                    : "command axes 0x@  CMD_STOP_IMMEDIATE\n",
              "write  axis #  COUNTER1 = 0\n", "write  axis #  COUNTER2 = 0\n", "write  axis #  COUNTER3 = 0\n",
              "write  axis #  COUNTER4 = 0\n", "write  axis #  COUNTER4 = 0\n"})
            log += EachAxis("0123", lines);
        log += "command axes 0x8  CMD_PORT3_LOW\ncommand axes 0x8  CMD_PORT4_LOW\n";
        log += EachAxis("12", "read   axis #  SIGNAL_CONFIG2 -> 0x02205545\n"
                              "write  axis #  SIGNAL_CONFIG2 = 0x02204005\n");
        return log + "write  port 72 = 0x0000\nwrite  port 70 = 0x2710\n";
    };
    for (const bool moved : {false, true}) {
        CHECK(TrevikA_init_card(0) == TREVIK_OK);
        CHECK(driver.log() == expected(moved));
    }

    // What was configured since start-up stays; the next move counts from the cleared position.
    TrevikA_SD_PIN_set(0, 0, 1, 0, 0, 0);
    idle(0);
    driver.reg(0, Register::COUNTER1) = 40;
    CHECK(TrevikA_init_card(0) == TREVIK_OK);
    CHECK(shadow(0).ModeWord == 0x1000141);
    CHECK(shadow(0).MoveIssued == 1);
    driver.reg(0, Register::COUNTER1) = 0;
    CHECK(TrevikA_T_position_move(0, 0, 25, 1, 1, 1, 0, 0, 0) == TREVIK_OK);
    CHECK(Has(driver.log(), "axis 0  DISTANCE = 25\n"));
}
