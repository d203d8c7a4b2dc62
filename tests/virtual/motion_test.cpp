// What virtual cards do in motion, through the public functions.
#include "support/virtual_machine.h"

#include <array>
#include <cstdlib>
#include <functional>

using namespace trevik::test;
using trevik::Command;
using trevik::Register;

TEST_CASE_FIXTURE(
    VirtualMachine,
    "ramps last as long as they were asked to, within a step of the rate; speed is the derivative of position")
{
    struct Row {
        std::uint32_t up_ms, down_ms, curved_ms;
        bool s_curve;
        double clocks; // of one step of the rate, for each unit of the rise
    };
    const Row rows[] = {{20, 20, 0, false, 4},    {333, 100, 0, false, 4}, {1000, 1000, 0, false, 4},
                        {100, 900, 0, false, 4},  {200, 300, 0, true, 8},  {100, 100, 50, true, 8},
                        {500, 250, 100, true, 8}, {100, 300, 30, true, 8}, {100, 0, 0, false, 4}};
    for (const Row &row : rows) {
        CAPTURE(row.up_ms);
        const std::uint32_t result =
            row.s_curve ? TrevikA_S_position_move(0, 0, Unsigned(-100000), 0, 100, 50000, row.up_ms, row.down_ms,
                                                  row.curved_ms, row.curved_ms, 0)
                        : TrevikA_T_position_move(0, 0, 100000, 0, 100, 50000, row.up_ms, row.down_ms, 0);
        CHECK(result == TREVIK_OK);
        const double dt = 1e-4;
        const std::int32_t begin = at(0);
        double travelled = 0;
        double up_s = 0;
        double down_s = 0;
        double total_s = 0;
        double highest = 0;
        while (!idle(0)) {
            const double before = std::abs(speed(0));
            TrevikHost_advance(dt);
            total_s += dt;
            const double now = std::abs(speed(0));
            travelled += (before + now) / 2 * dt;
            // 2 pulses: one for counting whole pulses, one for the last step, which ends between two samples.
            REQUIRE(std::abs(std::abs(at(0) - begin) - travelled) <= 2.0);
            highest = std::max(highest, now);
            up_s = now > before ? total_s : up_s;
            down_s += now < before ? dt : 0;
        }
        CHECK(highest == doctest::Approx(50000).epsilon(0.001));
        const double step_s = (65535.0 - 130) * row.clocks / 19660800;
        CHECK(std::abs(up_s - row.up_ms * 1e-3) < step_s + 2 * dt);
        CHECK(std::abs(down_s - row.down_ms * 1e-3) < step_s + 2 * dt);
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "queued lines follow one another without a stop")
{
    for (std::uint8_t axis = 0; axis < 3; ++axis) {
        CHECK(TrevikA_velocity_range_fix(0, axis, 10000) == TREVIK_OK);
        CHECK(TrevikA_continuous_flag_set(0, axis, 1) == TREVIK_OK);
    }
    const auto line = [](std::int32_t x, std::int32_t y, std::uint32_t start, std::uint32_t accel,
                         std::uint32_t decel) {
        return TrevikA_T_LINE2_move(0, 0, x, y, relative, start, 10000, accel, decel, 0);
    };
    CHECK(line(1000, 0, 500, 50, 0) == TREVIK_OK);
    CHECK_FALSE(queued(0)); // it started at once
    CHECK(line(600, 800, 10000, 0, 0) == TREVIK_OK);
    CHECK(queued(1));
    CHECK(line(0, 1000, 500, 0, 50) == TREVIK_ERR_QUEUE_FULL);
    std::uint8_t count = 0;
    CHECK((TrevikA_continuous_buffer_no_read(0, 1, &count) == TREVIK_OK && count == 2));

    TrevikHost_advance(next_event());
    CHECK((at(0) == 1000 && !queued(0) && !idle(0)));
    CHECK(std::hypot(speed(0), speed(1)) == doctest::Approx(10000).epsilon(0.001));
    CHECK(line(0, 1000, 500, 0, 50) == TREVIK_OK);
    TrevikHost_advance(next_event());
    CHECK((at(0) == 1600 && at(1) == 800));
    CHECK(speed(1) == doctest::Approx(10000).epsilon(0.001));

    // A line with a third axis waits for the two that still run; the third one is not idle meanwhile.
    CHECK(TrevikA_T_LINE3_move(0, 0, 10, 20, 30, relative, 500, 500, 0, 0, 0) == TREVIK_OK);
    CHECK((queued(2) && !idle(2)));
    TrevikHost_advance(next_event());
    CHECK((at(1) == 1800 && !idle(2) && !queued(2)));
    run_out();
    CHECK((at(0) == 1610 && at(1) == 1820 && at(2) == 30 && idle(0) && idle(2)));
}

TEST_CASE_FIXTURE(VirtualMachine, "a stop drops what is queued behind any axis of its operation")
{
    const std::function<std::uint32_t()> stops[] = {[] { return TrevikA_stop_emg(0); },
                                                    [] { return TrevikA_stop(0, first_axis, 0); },
                                                    [] { return TrevikA_stop(0, first_axis, 50); }};
    for (const auto &stop : stops) {
        for (const bool waiting : {false, true}) {
            CAPTURE(&stop - stops);
            CAPTURE(waiting);
            for (std::uint8_t axis = 0; axis < 3; ++axis)
                TrevikA_continuous_flag_set(0, axis, 1);
            CHECK(TrevikA_T_LINE2_move(0, 0, 10000, 10000, relative, 1000, 10000, 100, 100, waiting) == TREVIK_OK);
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
    // Turning back close before the end: past it, by the deceleration ramp, and back.
    TrevikA_current_position_set(0, 0, 0);
    CHECK(TrevikA_T_position_move(0, 0, 10000, 0, 1000, 10000, 100, 0, 0) == TREVIK_OK);
    while (at(0) < 9980)
        TrevikHost_advance(1e-4);
    CHECK(TrevikA_position_change(0, 0, 0, 0) == TREVIK_OK);
    std::int32_t highest = 0;
    while (!idle(0)) {
        TrevikHost_advance(1e-4);
        highest = std::max(highest, at(0));
    }
    CHECK((highest > 10050 && at(0) == 0));
    // A line stopped by its shorter axis takes the time given for that axis.
    CHECK(TrevikA_T_LINE2_move(0, 0, 50000, 100000, relative, 100, 10000, 100, 100, 0) == TREVIK_OK);
    TrevikHost_advance(1);
    TrevikA_stop(0, first_axis, 2000);
    CHECK(run_out() == doctest::Approx(2).epsilon(0.05));
    // A queued move whose start was refused is not what a later direct move runs.
    TrevikA_continuous_flag_set(0, 0, 1);
    TrevikVirtual_refuse(0, 12, 1, 31);
    CHECK(TrevikA_T_position_move(0, 0, 7777, 0, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    CHECK(idle(0));
    TrevikA_continuous_flag_set(0, 0, 0);
    const std::int32_t there = at(0);
    CHECK(TrevikA_T_position_move(0, 0, 100, 0, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    run_out();
    CHECK(at(0) == there + 100);
}

TEST_CASE_FIXTURE(VirtualMachine, "moves wait for the simultaneous-start signal, and take a new end meanwhile")
{
    CHECK(TrevikA_T_LINE2_move(0, 0, 100, 50, relative, 1000, 1000, 0, 0, 1) == TREVIK_OK);
    CHECK(TrevikA_T_position_move(0, 2, 100, 0, 1000, 1000, 0, 0, 1) == TREVIK_OK);
    CHECK(TrevikA_position_change(0, 2, 5000, 0) == TREVIK_OK);
    TrevikHost_advance(10);
    CHECK((!idle(0) && !idle(2) && at(0) == 0 && at(2) == 0));
    SendCommand(0xF, Command::CMD_CSTA_PULSE);
    run_out();
    CHECK((at(0) == 100 && at(1) == 50 && at(2) == 5000));
}
