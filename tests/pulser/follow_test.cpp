// The handwheel: request logs of its settings and of its ticks, worked out by hand.
#include "support/started_library.h"

using namespace trevik;
using namespace trevik::test;

namespace
{

struct Handwheel : StartedLibrary {
    // Axis 1 follows the handwheel of axis 3 from position 5000.
    void follow(std::uint8_t reverse, std::uint16_t ratio)
    {
        driver.reg(3, Register::COUNTER4) = 100;
        driver.reg(1, Register::COUNTER1) = 5000;
        CHECK(TrevikA_pulser_map_set(0, 1, 3, reverse) == TREVIK_OK);
        CHECK(TrevikA_pulser_motion_enable(0, 1, 1, ratio) == TREVIK_OK);
        driver.forget();
    }
    void turn(std::int32_t counts) { driver.reg(3, Register::COUNTER4) += Pulses(counts); }
    // The requests of one tick after the handwheel turned.
    std::string tick(std::int32_t counts)
    {
        turn(counts);
        driver.forget();
        TrevikHost_advance(0.020);
        return driver.log();
    }
};

} // namespace

TEST_CASE_FIXTURE(Handwheel, "mapping and switching on take the axis and the handwheel where they are")
{
    driver.reg(3, Register::COUNTER4) = 100;
    driver.reg(1, Register::COUNTER1) = 5000;
    driver.reg(3, Register::MOTION_CONFIG) = 0xFFFFFFFF;
    CHECK(sent(TrevikA_pulser_map_set(0, 1, 3, 1)) == Requests(R"(
        read axis 3: COUNTER4 -> 100
        read axis 1: COUNTER1 -> 5000)"));
    CHECK(shadow(1).PulserBase == -100);
    CHECK(sent(TrevikA_pulser_motion_enable(0, 1, 1, 3)) == Requests(R"(
        read axis 3: COUNTER4 -> 100
        read axis 1: COUNTER1 -> 5000
        modify axis 3: MOTION_CONFIG 0xFFFFFFFF -> 0x00003FFF)"));
    CHECK(shadow(1).LastTarget == 5000u);
    CHECK(TrevikA_pulser_motion_enable(0, 1, 1, 7) == TREVIK_OK); // on already: the ratio alone
    CHECK(shadow(1).PulserRatio == 7);
    CHECK(TrevikA_pulser_motion_enable(0, 1, 0, 7) == TREVIK_OK);
    CHECK(driver.requests() == 0);
}

TEST_CASE_FIXTURE(Handwheel, "+10 a tick with ratio 3: 30 pulses a tick, at 1500 pulses/s from the fifth tick on")
{
    follow(0, 3);
    TrevikA_velocity_range_fix(0, 1, 50); // does not bind the tick
    // Idle: the online change is refused, a move of its own starts. Speed (30 / 5) * 50 = 300.
    CHECK(tick(10) == Requests(R"(
        read axis 3: COUNTER4 -> 110
        read axis 1: main status -> 0x0008, main status -> 0x0008
        write axis 1: DISTANCE = 30, START_SPEED = 4096, MAX_SPEED = 4096, ACCEL_RATE = 1, DECEL_RATE = 1,
            MULTIPLIER = 4095, RAMPDOWN_POINT = 0, MODE = 0x05002041, CORRECTION_SPEED = 13653
        command axes 0x2  CMD_START_HIGH_DEC)"));
    busy(1);
    driver.reg(1, Register::DISTANCE) = 30;
    CHECK(tick(10) == Requests(R"(
        read axis 3: COUNTER4 -> 120
        read axis 1: main status -> 0x0000, DISTANCE -> 30
        write axis 1: DISTANCE = 60, MULTIPLIER = 4095, MAX_SPEED = 8192, START_SPEED = 8192, ACCEL_RATE = 1,
            DECEL_RATE = 1, RAMPDOWN_POINT = 0, MODE = 0x05002041)"));
    for (const char *speed : {"= 12288\n", "= 16384\n", "= 20480\n", "= 20480\n"}) // 1500 at last
        CHECK(Has(tick(10), speed));
    CHECK(shadow(1).PulserTarget == 5180u);
    CHECK(shadow(1).RangeFixed == 1);
    // It stands still: the same target, slower and slower, then at the last speed.
    for (const char *speed : {"= 16384\n", "= 12288\n", "= 8192\n", "= 4096\n", "= 4096\n"})
        CHECK(Has(tick(0), speed));
    CHECK(shadow(1).PulserTarget == 5180u);
    CHECK(TrevikA_pulser_motion_enable(0, 1, 0, 1) == TREVIK_OK);
    CHECK(tick(1000).empty());
}

TEST_CASE_FIXTURE(Handwheel, "turned backwards, reversed, and by less than five pulses")
{
    follow(1, 1);
    shadow(1).PulserLastSpeed = 0;
    // Average trunc(-4 / 5) = 0: no speed yet, the slowest there is.
    CHECK(Includes(tick(4), "write axis 1: DISTANCE = -4, MAX_SPEED = 1"));
    CHECK(Has(tick(-1000), "MAX_SPEED = 65505\n")); // (-4 + 1000) / 5 * 50 = 9950
    CHECK(shadow(1).PulserTarget == 5996u);
    CHECK(Has(tick(2000), "START_SPEED = 65534\n")); // (-4 + 1000 - 2000) / 5 * 50 = -10000: its magnitude counts
    CHECK(shadow(1).PulserLastSpeed == -10000);
    TrevikA_pulser_motion_enable(0, 1, 0, 1);
    TrevikA_pulser_motion_enable(0, 1, 1, 1);     // forgets how fast it was turned
    CHECK(Includes(tick(-5), "MAX_SPEED = 683")); // 50 pulses/s
}

TEST_CASE_FIXTURE(Handwheel, "nothing jumps when the counter is set")
{
    follow(1, 2);
    CHECK(TrevikA_pulser_counter_set(0, 3, 40) == TREVIK_OK); // axis 1 follows it, reversed
    driver.reg(3, Register::COUNTER4) = 40;
    tick(0);
    CHECK(shadow(1).PulserTarget == 5000u);
}

TEST_CASE_FIXTURE(Handwheel, "an axis that was never mapped does not move, and every start-up adds a tick")
{
    shadow(0).PulserDirection = 0; // as loaded: start-up does not reset it
    CHECK(TrevikA_pulser_motion_enable(0, 0, 1, 5) == TREVIK_OK);
    driver.reg(0, Register::COUNTER4) = 5000;
    CHECK(!Has(tick(0), "write"));
    CHECK(TrevikA_initial() == TREVIK_OK); // switches following off
    CHECK(TrevikA_pulser_motion_enable(0, 0, 1, 5) == TREVIK_OK);
    CHECK(Includes(tick(0), "read axis 0: COUNTER4 -> 5000, COUNTER4 -> 5000"));
    TrevikA_close();
    CHECK(!Has(tick(0), "COUNTER4"));
}
