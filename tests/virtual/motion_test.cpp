// What virtual cards do in motion besides the positions over time that tests/numbers compares: queues, stops,
// restarts, changes of lines, backlash.
#include "support/virtual_machine.h"

#include <trevik/Trevik.h>

#include <cstdlib>
#include <functional>
#include <tuple>

using namespace trevik::test;
using trevik::Command;
using trevik::Register;
using trevik::StatusRegister;

namespace
{

void Line(std::int32_t x, std::int32_t y, std::uint32_t pps, std::uint32_t ramp_ms)
{
    CHECK(TrevikA_T_LINE2_move(0, 0, x, y, relative, ramp_ms != 0 ? 100 : pps, pps, ramp_ms, ramp_ms, 0) ==
          TREVIK_OK);
}

void QueueMoves()
{
    for (std::uint8_t axis = 0; axis < 3; ++axis)
        CHECK(TrevikA_continuous_flag_set(0, axis, 1) == TREVIK_OK);
}

} // namespace

TEST_CASE_FIXTURE(VirtualMachine,
                  "a queued line starts when all of its axes are free; none of them is idle meanwhile")
{
    QueueMoves();
    Line(1000, 800, 10000, 0);
    CHECK(TrevikA_T_LINE3_move(0, 0, 10, 20, 30, relative, 500, 500, 0, 0, 0) == TREVIK_OK);
    CHECK((queued(0) && queued(2) && !idle(2) && Value(TrevikA_continuous_buffer_no_read, 0, 1) == 2));
    TrevikHost_advance(next_event());
    CHECK((at(0) == 1000 && at(2) == 0 && !queued(2) && !idle(2)));
    run_out();
    CHECK((at(0) == 1010 && at(1) == 820 && at(2) == 30 && idle(0) && idle(2)));
}

TEST_CASE_FIXTURE(VirtualMachine, "a stop drops what is queued behind any axis of its operation")
{
    const std::function<std::uint32_t()> stops[] = {[] { return TrevikA_stop_emg(0); },
                                                    [] { return TrevikA_stop(0, first_axis, 0); },
                                                    [] { return TrevikA_stop(0, first_axis, 50); }};
    QueueMoves();
    for (const auto &stop : stops) {
        CAPTURE(&stop - stops);
        Line(10000, 10000, 10000, 100);
        CHECK(TrevikA_T_LINE2_move(0, 3, 500, 500, relative, 1000, 10000, 100, 100, 0) == TREVIK_OK);
        TrevikHost_advance(0.3);
        const std::int32_t there = at(0);
        CHECK(stop() == TREVIK_OK);
        run_out();
        CHECK((&stop == &stops[2] || at(0) == there));
        for (std::uint8_t axis = 0; axis < 3; ++axis)
            CHECK((idle(axis) && !queued(axis)));
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "stops and changes that follow one another slow down by the rate asked for")
{
    const auto begin_to_stop = [] {
        CHECK(TrevikA_T_position_move(0, 0, 1000000, 0, 100, 10000, 100, 100, 0) == TREVIK_OK);
        TrevikHost_advance(1);
        TrevikA_stop(0, first_axis, 100);
    };
    // A second, longer stop is not cut short by where the first one would have ended.
    begin_to_stop();
    TrevikHost_advance(0.01);
    TrevikA_stop(0, first_axis, 2000);
    CHECK(run_out() == doctest::Approx(1.8).epsilon(0.05));
    // A change during a stop does not set the axis going again.
    begin_to_stop();
    TrevikHost_advance(0.05);
    TrevikA_position_change(0, 0, 50000, 0);
    CHECK(run_out() < 0.1);
}

TEST_CASE_FIXTURE(VirtualMachine, "a move waits for the simultaneous-start signal, and takes a new end meanwhile")
{
    CHECK(TrevikA_T_position_move(0, 2, 100, 0, 1000, 1000, 0, 0, 1) == TREVIK_OK);
    CHECK(TrevikA_position_change(0, 2, 5000, 0) == TREVIK_OK);
    TrevikHost_advance(10);
    CHECK((!idle(2) && at(2) == 0));
    SendCommand(0xF, Command::CMD_CSTA_PULSE);
    run_out();
    CHECK(at(2) == 5000);
}

TEST_CASE_FIXTURE(VirtualMachine, "only what a stop interrupted restarts, with all of its axes")
{
    Line(1000, 500, 1000, 0);
    TrevikHost_advance(0.5);
    CHECK(TrevikA_stop_emg(0) == TREVIK_OK);
    CHECK(ReadStatus(0, StatusRegister::REMAINING) == Unsigned(1000 - at(0)));
    CHECK(TrevikA_2Axis_restart(0, 1) == TREVIK_OK); // axes 0 and 2
    CHECK((idle(0) && idle(1)));
    CHECK(TrevikA_2Axis_restart(0, 0) == TREVIK_OK);
    run_out();
    CHECK((at(0) == 1000 && at(1) == 500 && ReadStatus(0, StatusRegister::REMAINING) == 0));
}

TEST_CASE_FIXTURE(VirtualMachine,
                  "a running line changes its end: straight on from where it is, at the speed it has")
{
    Line(10000, 0, 10000, 100);
    TrevikHost_advance(0.5);
    const double before = speed(0);
    const int from = at(0);
    REQUIRE(Trevik_OnLine_T_curve_change_LINE2(0, 0, 20000, -3000, 1, 500, 10000, 0.1, 0.1) == TREVIK_OK);
    CHECK(speed(0) == doctest::Approx(before).epsilon(0.001));
    while (!idle(0)) {
        TrevikHost_advance(0.003);
        const double share = (at(0) - from) / (20000.0 - from);
        CHECK(std::abs(at(1) + 3000 * share) <= 1);
    }
    CHECK((at(0) == 20000 && at(1) == -3000));
}

TEST_CASE_FIXTURE(VirtualMachine, "backlash is taken up before a move that turns the axis round")
{
    WriteRegister(0, Register::MOTION_CONFIG, 1u << 12 | 50);
    WriteRegister(0, Register::MULTIPLIER, 299); // one pulse/s a unit
    WriteRegister(0, Register::MAX_SPEED, 1000);
    WriteRegister(0, Register::CORRECTION_SPEED, 500);
    const std::tuple<std::uint32_t, std::int32_t, bool> moves[] = {{0x49, 100, false}, {0x49, 100, false},
                                                                   {0x49, -100, true}, {0x41, 100, false},
                                                                   {0x49, -100, true}, {0x49, 100, true}};
    std::int32_t expected = 0;
    for (const auto &[code, distance, corrected] : moves) {
        WriteRegister(0, Register::DISTANCE, Unsigned(distance));
        WriteRegister(0, Register::MODE, code);
        SendCommand(1, Command::CMD_START_HIGH);
        TrevikHost_advance(0.0995); // of 0.1 s for the move, and the same for its correction
        CHECK((at(0) == stands(0) && (at(0) == expected) == corrected));
        CHECK(ReadStatus(0, StatusRegister::CURRENT_SPEED) == (corrected ? 500 : 1000));
        CHECK(run_out() == doctest::Approx(corrected ? 0.1005 : 0.0005));
        expected += distance;
        CHECK((at(0) == expected && stands(0) == expected));
    }
}
