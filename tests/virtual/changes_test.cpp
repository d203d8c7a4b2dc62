// Moves that change while they run, that are stopped and go on, and that take up backlash.
#include "support/virtual_machine.h"

using namespace trevik::test;
using trevik::Command;
using trevik::Register;
using trevik::StatusRegister;

namespace
{

// Speeds and times of a random move.
struct RandomMove {
    std::uint32_t start, max, up_ms, down_ms, curved_ms;
    bool s_curve;

    explicit RandomMove(Draw &draw)
        : start(draw.magnitude(10, 500)),
          max(start + draw.magnitude(1000, 2e5)),
          up_ms(draw.between(0, 200)),
          down_ms(draw.between(0, 500)),
          curved_ms(std::min(up_ms, down_ms) * draw.between(0, 4) / 8),
          s_curve(draw.between(0, 1) != 0)
    {
    }
    std::uint32_t move(std::int32_t distance) const
    {
        const std::uint32_t d = Unsigned(distance);
        return s_curve ? TrevikA_S_position_move(0, 0, d, 0, start, max, up_ms, down_ms, curved_ms, curved_ms, 0)
                       : TrevikA_T_position_move(0, 0, d, 0, start, max, up_ms, down_ms, 0);
    }
};

} // namespace

TEST_CASE_FIXTURE(VirtualMachine, "an online change brings its speeds and ramps with it")
{
    CHECK(TrevikA_T_position_move(0, 0, 100000, 0, 500, 20000, 100, 100, 0) == TREVIK_OK);
    TrevikHost_advance(0.5);
    CHECK(TrevikA_T_onLINE_change(0, 0, 150000, 1, 100, 60000, 200, 300) == TREVIK_OK);
    TrevikHost_advance(0.3);
    CHECK(speed(0) == doctest::Approx(60000).epsilon(0.001));
    CHECK(TrevikA_S_onLINE_change(0, 0, 20000, 0, 5000, 5000, 0, 0, 0, 0) == TREVIK_OK); // behind
    TrevikHost_advance(1);
    CHECK(speed(0) == doctest::Approx(-5000).epsilon(0.001));
    // At its start speed an axis needs no ramp, whatever the rate is, and turns round at once.
    const std::int32_t there = at(0);
    CHECK(TrevikA_position_change(0, 0, 100000, 1) == TREVIK_OK);
    CHECK(run_out() == doctest::Approx((100000 - there) / 5000.0).epsilon(0.001));
    CHECK(at(0) == 100000);
}

TEST_CASE_FIXTURE(VirtualMachine, "a running velocity move takes another speed in the time given")
{
    for (const bool s_curve : {false, true}) {
        for (const bool fixed : {false, true}) { // otherwise the unit of speed changes, too
            CAPTURE(s_curve);
            CAPTURE(fixed);
            fixed ? TrevikA_velocity_range_fix(0, 0, 40000) : TrevikA_velocity_range_unfix(0, 0);
            CHECK((s_curve ? TrevikA_S_velocity_move(0, 0, 100, 10000, 200, 20)
                           : TrevikA_T_velocity_move(0, 0, 100, 10000, 200)) == TREVIK_OK);
            TrevikHost_advance(0.21);
            for (const std::int32_t pps : {30000, 5000, 5000, -20000, 700}) {
                CAPTURE(pps);
                const double before = speed(0);
                CHECK(TrevikA_velocity_change(0, 0, Unsigned(pps), 200) == TREVIK_OK);
                CHECK(speed(0) == doctest::Approx(before));
                TrevikHost_advance(0.1);
                if (before * pps > 0 && fixed) // the rate was made for this ramp
                    CHECK(speed(0) == doctest::Approx((before + pps) / 2).epsilon(0.05));
                TrevikHost_advance(fixed && before * pps > 0 ? 0.11 : 2000);
                CHECK(speed(0) == doctest::Approx(pps).epsilon(1e-3));
            }
            CHECK(TrevikA_T_velocity_move(0, 0, 100, Unsigned(-8000), 100) == TREVIK_OK); // changes it, too
            TrevikHost_advance(2000);
            CHECK(speed(0) == doctest::Approx(-8000).epsilon(1e-3));
            CHECK(TrevikA_stop(0, first_axis, 100) == TREVIK_OK);
            CHECK(run_out() == doctest::Approx(0.1).epsilon(0.02));
        }
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "a stopped move restarts and ends where it was to end")
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        CAPTURE(seed);
        Draw draw(seed);
        const RandomMove values(draw);
        const std::int32_t begin = at(0);
        const std::int32_t distance = draw.distance(100, 1e5);
        CHECK(values.move(distance) == TREVIK_OK);
        const bool at_once = draw.between(0, 1) != 0;
        for (int stop = 0; stop < 4; ++stop) {
            TrevikHost_advance(std::min(next_event(), draw.between(1, 500) * 1e-3));
            const bool running = !idle(0);
            CHECK(TrevikA_stop(0, first_axis, at_once ? 0 : draw.between(1, 200)) == TREVIK_OK);
            run_out();
            const std::int32_t left = std::abs(begin + distance - at(0));
            CHECK(ReadStatus(0, StatusRegister::REMAINING) == Unsigned(left));
            if (running) {
                CHECK(TrevikA_OneAxis_restart(0, 0) == TREVIK_OK);
                CHECK(idle(0) == (left == 0));
            }
        }
        run_out();
        CHECK(at(0) == begin + distance);
        CHECK(ReadStatus(0, StatusRegister::REMAINING) == 0);
        if (at_once) // the library knows where the axis stands
            CHECK(TrevikA_T_position_move(0, 0, Unsigned(begin + distance), 1, 500, 500, 0, 0, 0) ==
                  TREVIK_ERR_PARAM);
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "only what a stop interrupted restarts")
{
    for (const int hindrance : {0, 1, 2, 3}) {
        CAPTURE(hindrance);
        CHECK(TrevikA_T_LINE2_move(0, 0, 1000, 500, relative, 1000, 1000, 0, 0, 0) == TREVIK_OK);
        if (hindrance == 0)
            run_out(); // it has finished
        TrevikHost_advance(0.5);
        CHECK(TrevikA_stop_emg(0) == TREVIK_OK);
        if (hindrance == 1)
            CHECK(TrevikA_T_position_move(0, 1, 10, 0, 1000, 1000, 0, 0, 0) == TREVIK_OK);
        if (hindrance == 2)
            WriteRegister(0, Register::DISTANCE, 300);
        run_out();
        // The last time one axis is not named.
        CHECK((hindrance == 3 ? TrevikA_2Axis_restart(0, 1) : TrevikA_2Axis_restart(0, 0)) == TREVIK_OK);
        CHECK((idle(0) && idle(1)));
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "backlash is taken up before a move that turns the axis round")
{
    WriteRegister(0, Register::MOTION_CONFIG, 1u << 12 | 50);
    WriteRegister(0, Register::MULTIPLIER, 299); // one pulse/s a unit
    WriteRegister(0, Register::MAX_SPEED, 1000);
    WriteRegister(0, Register::CORRECTION_SPEED, 500);
    struct Row {
        std::uint32_t code;
        std::int32_t distance;
        bool corrected;
    };
    std::int32_t expected = 0;
    for (const Row &row : {Row{0x49, 100, false}, Row{0x49, 100, false}, Row{0x49, -100, true},
                           Row{0x41, 100, false}, Row{0x49, -100, true}, Row{0x49, 100, true}}) {
        WriteRegister(0, Register::DISTANCE, Unsigned(row.distance));
        WriteRegister(0, Register::MODE, row.code);
        SendCommand(1, Command::CMD_START_HIGH);
        TrevikHost_advance(0.0995); // of 0.1 s for the move, and the same for its correction
        CHECK((at(0) == stands(0) && (at(0) == expected) == row.corrected));
        CHECK(ReadStatus(0, StatusRegister::CURRENT_SPEED) == (row.corrected ? 500 : 1000));
        CHECK(run_out() == doctest::Approx(row.corrected ? 0.1005 : 0.0005));
        expected += row.distance;
        CHECK((at(0) == expected && stands(0) == expected));
    }
}
