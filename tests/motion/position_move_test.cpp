// Request logs of whole position moves, worked out by hand.
#include "support/started_library.h"

using namespace trevik;
using namespace trevik::test;

TEST_CASE_FIXTURE(StartedLibrary, "a move with equal ramps lets the chip find the ramp-down point")
{
    // m = 19660500 / 20000 - 1 = 982; FH = trunc(983 * 20000 / 300 + 0.95); rate = trunc(0.1 s * clock / 255580) - 1
    TrevikA_velocity_range_fix(0, 1, 50); // binds queued moves only
    CHECK(sent(TrevikA_T_position_move(0, 1, 10000, 0, 500, 20000, 100, 100, 0)) == Requests(R"(
        read axis 1: main status -> 0x0008
        write axis 1: DISTANCE = 10000, START_SPEED = 1639, MAX_SPEED = 65534, ACCEL_RATE = 6, DECEL_RATE = 6,
            MULTIPLIER = 982, RAMPDOWN_POINT = 0, MODE = 0x01000041, CORRECTION_SPEED = 3276
        command axes 0x2  CMD_START_ACC_DEC)"));
}

TEST_CASE_FIXTURE(StartedLibrary, "a later move re-bases the target on where the axis stands")
{
    CHECK(TrevikA_T_position_move(0, 2, 10000, 0, 500, 20000, 100, 100, 0) == TREVIK_OK);
    driver.reg(2, Register::COUNTER1) = 9998; // stopped early
    driver.forget();
    // From 9998 to 6998; 0.1 s up, 1 s down: manual point trunc((FH^2 - FL^2) * 75 / (1966 * 32768)) = 4999, but
    // the whole profile needs 5466 pulses, so the ramps share the distance: trunc(75 * 3000 / 82) = 2743.
    CHECK(sent(TrevikA_T_position_move(0, 2, 6998, 1, 100, 10000, 100, 1000, 1)) == Requests(R"(
        read axis 2: main status -> 0x0008, main status -> 0x0008, COUNTER1 -> 9998
        write axis 2: DISTANCE = -3000, START_SPEED = 656, MAX_SPEED = 65534, ACCEL_RATE = 6, DECEL_RATE = 74,
            MULTIPLIER = 1965, RAMPDOWN_POINT = 2743, MODE = 0x05042041, CORRECTION_SPEED = 6553
        command axes 0x4  CMD_START_ACC_DEC)"));
    CHECK(shadow(2).ModeWord == 0x05002041u); // the trigger does not outlive its move
    // Without ramps nothing decelerates.
    CHECK(Includes(sent(TrevikA_T_position_move(0, 2, Pulses(-10000), 0, 100, 10000, 0, 0, 0)), R"(
        write axis 2: RAMPDOWN_POINT = 0, MODE = 0x05002041, CORRECTION_SPEED = 6553
        command axes 0x4  CMD_START_HIGH)"));
}

TEST_CASE_FIXTURE(StartedLibrary, "a queued move goes to the preset registers with the fixed multiplier")
{
    CHECK(TrevikA_velocity_range_fix(0, 0, 10000) == TREVIK_OK);
    CHECK(TrevikA_continuous_flag_set(0, 0, 2) == TREVIK_OK);
    busy(0);
    driver.reg(0, Register::START_TRIGGER_ENV) = 0x00330007;
    // m stays 1965 for 1000 pulses/s: FH = FL = trunc(1966 * 1000 / 300 + 0.95) = 6554; equal speeds: rate 65535.
    CHECK(sent(TrevikA_T_position_move(0, 0, 20000, 0, 1000, 1000, 100, 300, 2)) == Requests(R"(
        read axis 0: main status -> 0x0000
        modify axis 0: START_TRIGGER_ENV 0x00330007 -> 0x00030007
        write axis 0: PRESET_DISTANCE = 20000, PRESET_START_SPEED = 6554, PRESET_MAX_SPEED = 6554,
            PRESET_ACCEL_RATE = 65535, PRESET_DECEL_RATE = 65535, PRESET_MULTIPLIER = 1965,
            PRESET_RAMPDOWN_POINT = 1, PRESET_MODE = 0x01082041, CORRECTION_SPEED = 6553
        command axes 0x1  CMD_START_HIGH_DEC)"));
    preset_full(0);
    CHECK(sent(TrevikA_T_position_move(0, 0, 20000, 0, 1000, 1000, 100, 300, 0), TREVIK_ERR_QUEUE_FULL) ==
          Requests("read axis 0: main status -> 0x4000"));
}

TEST_CASE_FIXTURE(StartedLibrary, "refusals write nothing, and what they leave behind counts")
{
    CHECK(TrevikA_T_position_move(0, 3, 100, 0, 0, 1000, 0, 0, 3) == TREVIK_ERR_PARAM);
    CHECK(driver.requests() == 0);
    CHECK(TrevikA_T_position_move(0, 3, 0, 1, 0, 1000, 0, 0, 0) == TREVIK_ERR_PARAM); // already there
    CHECK(TrevikA_T_position_move(0, 3, 100, 0, 0, 6553501, 0, 0, 0) == TREVIK_ERR_PARAM);
    CHECK(!Has(driver.log(), "write"));
    CHECK(TrevikA_T_position_move(0, 3, 100, 0, 9999999, 6553500, 0, 0, 0) == TREVIK_OK);
    busy(3);
    driver.forget();
    CHECK(sent(TrevikA_T_position_move(0, 3, 100, 0, 0, 1000, 0, 0, 0), TREVIK_ERR_BUSY) ==
          Requests("read axis 3: main status -> 0x0000"));
}

TEST_CASE_FIXTURE(StartedLibrary, "S-curve moves: mode word before ramp-down point, S ranges last")
{
    // FL 6554, Sa 7372, Sd 4207, a 5, d 28; whole profile 2682 pulses: from 30000 on full, from 1500 on not.
    TrevikA_continuous_flag_set(0, 0, 1);
    shadow(0).BacklashEnabled = std::uint8_t{1};
    CHECK(sent(TrevikA_S_position_move(0, 0, Pulses(-30000), 1, 1000, 10000, 100, 400, 20, 50, 1)) == Requests(R"(
        read axis 0: main status -> 0x0008
        write axis 0: PRESET_DISTANCE = -30000, PRESET_START_SPEED = 6554, PRESET_MAX_SPEED = 65534,
            PRESET_ACCEL_RATE = 5, PRESET_DECEL_RATE = 28, PRESET_MULTIPLIER = 1965, PRESET_MODE = 0x01042449,
            PRESET_RAMPDOWN_POINT = 2186, PRESET_S_ACCEL_RANGE = 7372, PRESET_S_DECEL_RANGE = 4207,
            CORRECTION_SPEED = 6553
        command axes 0x1  CMD_START_ACC_DEC)"));
    TrevikA_continuous_flag_set(0, 0, 0);
    shadow(0).BacklashEnabled = std::uint8_t{0};
    driver.reg(0, Register::COUNTER1) = Pulses(-30000);
    // Short: its maximum speed is lowered.
    CHECK(Includes(sent(TrevikA_S_position_move(0, 0, Pulses(-1500), 0, 1000, 10000, 100, 400, 20, 50, 0)), R"(
        write axis 0: DISTANCE = -1500, START_SPEED = 6554, MAX_SPEED = 43043, ACCEL_RATE = 5, DECEL_RATE = 28,
            MULTIPLIER = 1965, MODE = 0x05002441, RAMPDOWN_POINT = 1002, S_ACCEL_RANGE = 7372)"));
}

TEST_CASE_FIXTURE(StartedLibrary, "a ramp shorter than its curved sections is refused before the card is looked at")
{
    for (const std::uint32_t result :
         {TrevikA_S_position_move(99, 9, 1, 0, 0, 1000, 100, 100, 51, 0, 0),
          TrevikA_S_position_move(99, 9, 1, 0, 0, 1000, 100, 100, 50, 51, 0),
          TrevikA_S_onLINE_change(99, 9, 1, 0, 0, 1000, 100, 100, 50, 51),
          TrevikA_S_velocity_move(99, 9, 0, 1000, 100, 51),
          TrevikA_S_LINE4_move(99, 1, 1, 1, 1, relative, 1, 9, 99, 99, 50, 0, 0),
          TrevikA_S_LINE4_move(99, 1, 1, 1, 1, relative, 1, 9, 100, 99, 50, 50, 0),
          TrevikA_S_ArcXY_LineZ_Radius_move(99, 9, 9, 9, 4, relative, 400, 8000, 99, 50, 0, 0)})
        CHECK(result == TREVIK_ERR_PARAM);
    // Just long enough; the third one is never too short.
    for (const std::uint32_t result :
         {TrevikA_S_position_move(99, 9, 1, 0, 0, 1000, 100, 100, 50, 50, 0),
          TrevikA_S_LINE4_move(99, 1, 1, 1, 1, relative, 1, 9, 100, 100, 50, 50, 0),
          TrevikA_S_ArcXY_LineZ_center_move(99, 9, 9, 9, 4, 4, relative, 400, 8000, 99, 50, 0, 0)})
        CHECK(result == TREVIK_ERR_CARD);
}
