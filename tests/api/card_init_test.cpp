// Card initialisation, request by request.
#include "support/started_library.h"

#include <doctest/doctest.h>

using namespace trevik;
using namespace trevik::test;

namespace
{

std::string OnAxes(const std::string &line)
{
    std::string lines;
    for (const char axis : {'0', '1', '2', '3'})
        lines += "write  axis " + std::string(1, axis) + "  " + line + "\n";
    return lines;
}

std::string Commands(const std::string &command)
{
    return "command axes 0x1  " + command + "\ncommand axes 0x2  " + command + "\ncommand axes 0x4  " + command +
           "\ncommand axes 0x8  " + command + "\n";
}

// An axis that was moved before is looked at: here it still moves, and is not re-based.
std::string Stop(char axis, char set, bool moved)
{
    const std::string command = std::string("command axes 0x") + set + "  CMD_STOP_IMMEDIATE\n";
    return moved ? command + "read   axis " + axis + "  main status -> 0x0000\n" : command;
}

} // namespace

TEST_CASE_FIXTURE(StartedLibrary, "card initialisation")
{
    for (std::uint32_t axis = 0; axis < 4; ++axis)
        busy(axis);
    driver.reg(1, Register::SIGNAL_CONFIG2) = 0x02205545; // as axes with outputs hold it
    driver.reg(2, Register::SIGNAL_CONFIG2) = 0x02205545;
    const auto expected = [](bool moved) {
        return Commands("CMD_OUTPUT_OFF") + Commands("CMD_PORT1_HIGH") + Commands("CMD_PORT0_HIGH") +
               Commands("CMD_PORT7_HIGH") + OnAxes("CORRECTION_SPEED = 256") +
               OnAxes("SIGNAL_CONFIG1 = 0xB0077007") +
               R"(write  axis 0  SIGNAL_CONFIG2 = 0x02204005
write  axis 1  SIGNAL_CONFIG2 = 0x02204005
write  axis 2  SIGNAL_CONFIG2 = 0x02204005
write  axis 3  SIGNAL_CONFIG2 = 0x02204145
)" + OnAxes("HOME_CONFIG = 0x00F02000") +
               OnAxes("LIMIT_CONFIG = 0x00000000") + OnAxes("START_TRIGGER_ENV = 0x00000000") +
               OnAxes("MOTION_CONFIG = 0x00000000") + Stop('0', '1', moved) + Stop('1', '2', moved) +
               Stop('2', '4', moved) + Stop('3', '8', moved) + OnAxes("COUNTER1 = 0") + OnAxes("COUNTER2 = 0") +
               OnAxes("COUNTER3 = 0") + OnAxes("COUNTER4 = 0") + OnAxes("COUNTER4 = 0") +
               R"(command axes 0x8  CMD_PORT3_LOW
command axes 0x8  CMD_PORT4_LOW
read   axis 1  SIGNAL_CONFIG2 -> 0x02205545
write  axis 1  SIGNAL_CONFIG2 = 0x02204005
read   axis 2  SIGNAL_CONFIG2 -> 0x02205545
write  axis 2  SIGNAL_CONFIG2 = 0x02204005
write  port 72 = 0x0000
write  port 70 = 0x2710
)";
    };
    for (const bool moved : {false, true}) {
        CHECK(TrevikA_init_card(0) == TREVIK_OK);
        CHECK(driver.log() == expected(moved));
    }

    // Only the refusal of the TTL mode's last write is reported.
    for (const std::size_t request : {0, 16, 30, 52, 78, 79})
        driver.refuse(request, 31);
    CHECK(TrevikA_init_card(0) == TREVIK_OK);
    const std::size_t last_ttl_write = 77;
    driver.refuse(last_ttl_write, 31);
    CHECK(TrevikA_init_card(0) == 31);

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
