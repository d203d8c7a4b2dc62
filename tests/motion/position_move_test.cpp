// Request logs of whole position moves, worked out by hand.
#include "support/recording_driver.h"

#include "api/card_manager.h"

#include <doctest/doctest.h>

using namespace trevik;
using trevik::test::RecordingDriver;

namespace
{

constexpr std::uint32_t Pulses(std::int32_t value)
{
    return static_cast<std::uint32_t>(value);
}

// A started library on one card whose axes are idle.
struct Fixture {
    RecordingDriver driver;

    Fixture()
    {
        REQUIRE(TrevikA_initial() == TREVIK_OK);
        driver.forget();
    }
    void busy(std::uint32_t axis) { driver.port(MainStatusPort(axis)) = 0; }
    void preset_full(std::uint32_t axis) { driver.port(MainStatusPort(axis)) = MainStatus::preset_full_bit; }
};

} // namespace

TEST_CASE_FIXTURE(Fixture, "a move with equal ramps lets the chip find the ramp-down point")
{
    // m = 19660500 / 20000 - 1 = 982; FH = trunc(983 * 20000 / 300 + 0.95); rate = trunc(0.1 s * clock / 255580) -
    // 1
    CHECK(TrevikA_T_position_move(0, 1, 10000, 0, 500, 20000, 100, 100, 0) == TREVIK_OK);
    CHECK(driver.log() == R"(read   axis 1  main status -> 0x0008
write  axis 1  DISTANCE = 10000
write  axis 1  START_SPEED = 1639
write  axis 1  MAX_SPEED = 65534
write  axis 1  ACCEL_RATE = 6
write  axis 1  DECEL_RATE = 6
write  axis 1  MULTIPLIER = 982
write  axis 1  RAMPDOWN_POINT = 0
write  axis 1  MODE = 0x01000041
write  axis 1  CORRECTION_SPEED = 3276
command axes 0x2  CMD_START_ACC_DEC
)");
}

TEST_CASE_FIXTURE(Fixture, "a later move re-bases the target on where the axis stands")
{
    CHECK(TrevikA_T_position_move(0, 2, 10000, 0, 500, 20000, 100, 100, 0) == TREVIK_OK);
    driver.reg(2, Register::COUNTER1) = 9998; // stopped early
    driver.forget();
    // From 9998 to 6998; 0.1 s up, 1 s down: manual point trunc((FH^2 - FL^2) * 75 / (1966 * 32768)) = 4999, but
    // the whole profile needs 5466 pulses, so the ramps share the distance: trunc(75 * 3000 / 82) = 2743.
    CHECK(TrevikA_T_position_move(0, 2, 6998, 1, 100, 10000, 100, 1000, 1) == TREVIK_OK);
    CHECK(driver.log() == R"(read   axis 2  main status -> 0x0008
read   axis 2  main status -> 0x0008
read   axis 2  COUNTER1 -> 9998
write  axis 2  DISTANCE = -3000
write  axis 2  START_SPEED = 656
write  axis 2  MAX_SPEED = 65534
write  axis 2  ACCEL_RATE = 6
write  axis 2  DECEL_RATE = 74
write  axis 2  MULTIPLIER = 1965
write  axis 2  RAMPDOWN_POINT = 2743
write  axis 2  MODE = 0x05042041
write  axis 2  CORRECTION_SPEED = 6553
command axes 0x4  CMD_START_ACC_DEC
)");
    // The trigger does not outlive its move; without ramps nothing decelerates.
    CHECK(TrevikA_T_position_move(0, 2, Pulses(-10000), 0, 100, 10000, 0, 0, 0) == TREVIK_OK);
    CHECK(driver.log() == R"(read   axis 2  main status -> 0x0008
read   axis 2  main status -> 0x0008
read   axis 2  COUNTER1 -> 9998
write  axis 2  DISTANCE = -10000
write  axis 2  START_SPEED = 656
write  axis 2  MAX_SPEED = 65534
write  axis 2  ACCEL_RATE = 1
write  axis 2  DECEL_RATE = 1
write  axis 2  MULTIPLIER = 1965
write  axis 2  RAMPDOWN_POINT = 0
write  axis 2  MODE = 0x05002041
write  axis 2  CORRECTION_SPEED = 6553
command axes 0x4  CMD_START_HIGH
)");
}

TEST_CASE_FIXTURE(Fixture, "a queued move goes to the preset registers with the fixed multiplier")
{
    CHECK(TrevikA_velocity_range_fix(0, 0, 10000) == TREVIK_OK);
    CHECK(TrevikA_continuous_flag_set(0, 0, 2) == TREVIK_OK);
    busy(0);
    driver.reg(0, Register::START_TRIGGER_ENV) = 0x00330007;
    // m stays 1965 for 1000 pulses/s: FH = FL = trunc(1966 * 1000 / 300 + 0.95) = 6554; equal speeds: rate 65535.
    CHECK(TrevikA_T_position_move(0, 0, 20000, 0, 1000, 1000, 100, 300, 2) == TREVIK_OK);
    CHECK(driver.log() == R"(read   axis 0  main status -> 0x0000
read   axis 0  START_TRIGGER_ENV -> 0x00330007
write  axis 0  START_TRIGGER_ENV = 0x00030007
write  axis 0  PRESET_DISTANCE = 20000
write  axis 0  PRESET_START_SPEED = 6554
write  axis 0  PRESET_MAX_SPEED = 6554
write  axis 0  PRESET_ACCEL_RATE = 65535
write  axis 0  PRESET_DECEL_RATE = 65535
write  axis 0  PRESET_MULTIPLIER = 1965
write  axis 0  PRESET_RAMPDOWN_POINT = 1
write  axis 0  PRESET_MODE = 0x01082041
write  axis 0  CORRECTION_SPEED = 6553
command axes 0x1  CMD_START_HIGH_DEC
)");
    preset_full(0);
    CHECK(TrevikA_T_position_move(0, 0, 20000, 0, 1000, 1000, 100, 300, 0) == TREVIK_ERR_QUEUE_FULL);
    CHECK(driver.log() == "read   axis 0  main status -> 0x4000\n");
}

TEST_CASE_FIXTURE(Fixture, "refusals write nothing, and what they leave behind counts")
{
    CHECK(TrevikA_T_position_move(0, 3, 100, 0, 0, 1000, 0, 0, 3) == TREVIK_ERR_PARAM);
    CHECK(driver.requests() == 0);
    CHECK(TrevikA_T_position_move(0, 3, 0, 1, 0, 1000, 0, 0, 0) == TREVIK_ERR_PARAM); // already there
    CHECK(TrevikA_T_position_move(0, 3, 100, 0, 0, 6553501, 0, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(TrevikA_T_position_move(0, 3, 100, 0, 0, Pulses(-6553501), 0, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(driver.log().find("write") == std::string::npos);
    CHECK(TrevikA_T_position_move(0, 3, 100, 0, 9999999, 6553500, 0, 0, 0) == TREVIK_OK);
    busy(3);
    driver.forget();
    CHECK(TrevikA_T_position_move(0, 3, 100, 0, 0, 1000, 0, 0, 0) == TREVIK_ERR_BUSY);
    CHECK(driver.log() == "read   axis 3  main status -> 0x0000\n");
}

TEST_CASE_FIXTURE(Fixture, "after an arc that ended short, a relative move starts from where the arc was to end")
{
    Axis axis;
    REQUIRE(manager.checked(0, 1, axis) == Result::Ok);
    const auto arc_ended = [&](std::int32_t target, std::int32_t position) {
        axis.shadow().LastTarget = Pulses(target);
        axis.shadow().LastMoveWasArc = std::uint8_t{1};
        axis.shadow().MoveIssued = std::uint8_t{1};
        driver.reg(1, Register::COUNTER1) = Pulses(position);
        driver.forget();
    };
    axis.shadow().BacklashEnabled = std::uint8_t{1};
    arc_ended(1000, 997);
    CHECK(TrevikA_T_position_move(0, 1, 0, 0, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    const std::string log = driver.log();
    CHECK(log.find("DISTANCE = 3\n") != std::string::npos);
    CHECK(log.find("MODE = 0x05002049\n") != std::string::npos); // with backlash correction
    // Used up: the next move that stands at 1000 has nothing to make good.
    driver.reg(1, Register::COUNTER1) = 1000;
    CHECK(TrevikA_T_position_move(0, 1, 0, 0, 1000, 1000, 0, 0, 0) == TREVIK_ERR_PARAM);

    // An absolute move needs no correction and leaves the arc marked; lines correct each axis.
    arc_ended(1000, 997);
    CHECK(TrevikA_T_position_move(0, 1, 1000, 1, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    CHECK(driver.log().find("DISTANCE = 3\n") != std::string::npos);
    CHECK(axis.shadow().LastMoveWasArc == 1);
    arc_ended(1000, 1004);
    const std::uint8_t relative[4] = {0, 0, 0, 0};
    CHECK(TrevikA_T_LINE2_move(0, 0, 50, 60, relative, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    CHECK(driver.log().find("axis 1  DISTANCE = 56\n") != std::string::npos);
    CHECK(axis.shadow().LastTarget == 1060u);
}

TEST_CASE_FIXTURE(Fixture, "the end of a running move changes, measured from its start")
{
    struct Row {
        std::uint32_t position;
        std::uint8_t absolute;
        const char *written;
        std::uint32_t next_target; // absolute target that is then no distance away
    };
    // The running move went from 1000 to 6000.
    const Row rows[] = {{8000, 1, "write  axis 0  DISTANCE = 7000\n", 8000},
                        {Pulses(-200), 0, "write  axis 0  DISTANCE = -200\n", 800},
                        {1000, 1, "write  axis 0  DISTANCE = 0\n", 1000}};
    for (const Row &row : rows) {
        CAPTURE(row.written);
        driver.port(MainStatusPort(0)) = MainStatus::idle_bit;
        CHECK(TrevikA_position_change(0, 0, row.position, row.absolute) == TREVIK_ERR_NOT_MOVING);
        CHECK(TrevikA_current_position_set(0, 0, 1000) == TREVIK_OK);
        driver.reg(0, Register::COUNTER1) = 1000;
        CHECK(TrevikA_T_position_move(0, 0, 5000, 0, 500, 20000, 100, 100, 0) == TREVIK_OK);
        busy(0);
        driver.reg(0, Register::DISTANCE) = 5000;
        driver.forget();
        CHECK(TrevikA_position_change(0, 0, row.position, row.absolute) == TREVIK_OK);
        CHECK(driver.log() ==
              std::string("read   axis 0  main status -> 0x0000\nread   axis 0  DISTANCE -> 5000\n") + row.written);
        TrevikA_continuous_flag_set(0, 0, 1);
        CHECK(TrevikA_position_change(0, 0, row.position, row.absolute) == TREVIK_ERR_NOT_MOVING);
        CHECK(TrevikA_T_position_move(0, 0, row.next_target, 1, 500, 20000, 0, 0, 0) == TREVIK_ERR_PARAM);
        TrevikA_continuous_flag_set(0, 0, 0);
    }
}

TEST_CASE_FIXTURE(Fixture, "stops")
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
