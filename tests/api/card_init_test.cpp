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
    const auto expected = [](const std::string &looked_at) {
        return Requests(R"(
            command axis 0123: CMD_OUTPUT_OFF
            command axis 0123: CMD_PORT1_HIGH
            command axis 0123: CMD_PORT0_HIGH
            command axis 0123: CMD_PORT7_HIGH
            write axis 0123: CORRECTION_SPEED = 256
            write axis 0123: SIGNAL_CONFIG1 = 0xB0077007
            write axis 012: SIGNAL_CONFIG2 = 0x02204005
            write axis 3: SIGNAL_CONFIG2 = 0x02204145
            write axis 0123: HOME_CONFIG = 0x00F02000
            write axis 0123: LIMIT_CONFIG = 0x00000000
            write axis 0123: START_TRIGGER_ENV = 0x00000000
            write axis 0123: MOTION_CONFIG = 0x00000000
            )" + looked_at +
                        R"(
            write axis 0123: COUNTER1 = 0
            write axis 0123: COUNTER2 = 0
            write axis 0123: COUNTER3 = 0
            write axis 0123: COUNTER4 = 0
            write axis 0123: COUNTER4 = 0
            command axis 3: CMD_PORT3_LOW, CMD_PORT4_LOW
            modify axis 12: SIGNAL_CONFIG2 0x02205545 -> 0x02204005
            write  port 72 = 0x0000
            write  port 70 = 0x2710)");
    };
    CHECK(sent(TrevikA_init_card(0)) == expected("command axis 0123: CMD_STOP_IMMEDIATE"));
    std::string once_moved;
    for (const char *axis : {"0", "1", "2", "3"})
        once_moved += std::string("command axis ") + axis + ": CMD_STOP_IMMEDIATE\nread axis " + axis +
                      ": main status -> 0x0000\n";
    CHECK(sent(TrevikA_init_card(0)) == expected(once_moved));

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
