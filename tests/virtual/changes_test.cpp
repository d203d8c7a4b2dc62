// Moves that change while they run, that are stopped and go on, and that take up backlash.
#include "support/virtual_machine.h"

#include <array>

using namespace trevik::test;
using trevik::Command;
using trevik::Register;
using trevik::StatusRegister;

namespace
{

constexpr std::uint8_t first_axis[4] = {1, 0, 0, 0};
constexpr std::uint8_t all_axes[4] = {1, 1, 1, 1};

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
    std::uint32_t change(std::int32_t end) const
    {
        const std::uint32_t e = Unsigned(end);
        return s_curve ? TrevikA_S_onLINE_change(0, 0, e, 1, start, max, up_ms, down_ms, curved_ms, curved_ms)
                       : TrevikA_T_onLINE_change(0, 0, e, 1, start, max, up_ms, down_ms);
    }
};

} // namespace

TEST_CASE_FIXTURE(VirtualMachine, "moves that change all the time keep their speed at each change and end exactly")
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        CAPTURE(seed);
        Draw draw(seed);
        RandomMove values(draw);
        std::int32_t end = at(0) + draw.distance(10, 1e5);
        CHECK(values.move(end - at(0)) == TREVIK_OK);
        for (int change = 0; change < 30 && !idle(0); ++change) {
            TrevikHost_advance(draw.between(0, 4) == 0 ? 0 : draw.between(1, 40) * 1e-3);
            if (idle(0))
                break;
            const double before = speed(0);
            const std::int32_t position = at(0);
            const std::uint32_t old_start = values.start;
            values = RandomMove(draw);
            end = draw.between(0, 3) == 0 ? end : position + draw.distance(1, 1e5);
            CHECK(values.change(end) == TREVIK_OK);
            CHECK(at(0) == position);
            // An axis that turns round at its start speed does so at once.
            CHECK(std::abs(speed(0) - before) <
                  1e-3 * std::abs(before) + 2.0 * std::max(values.start, old_start) + 10);
        }
        run_out();
        CHECK(at(0) == end);
        CHECK(TrevikA_T_position_move(0, 0, Unsigned(end), 1, 500, 500, 0, 0, 0) == TREVIK_ERR_PARAM);
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "a new end every 20 ms, for an hour")
{
    std::int32_t end = 30;
    CHECK(TrevikA_T_position_move(0, 0, Unsigned(end), 1, 1500, 1500, 0, 0, 0) == TREVIK_OK);
    for (int tick = 1; tick < 180000; ++tick) {
        TrevikHost_advance(0.019999); // the move would end with the tick
        end += 30;
        if (TrevikA_T_onLINE_change(0, 0, Unsigned(end), 1, 1500, 1500, 0, 0) != TREVIK_OK)
            FAIL("the axis stood at ", at(0));
    }
    CHECK(std::abs(speed(0)) == doctest::Approx(1500).epsilon(1e-4));
    run_out();
    CHECK(at(0) == end);
}

TEST_CASE_FIXTURE(VirtualMachine, "a running velocity move takes another speed in the time given")
{
    struct Row {
        std::int32_t speed_pps;
        std::uint32_t ms;
    };
    for (const bool s_curve : {false, true}) {
        for (const std::uint32_t fixed : {0u, 40000u}) {
            CAPTURE(s_curve);
            CAPTURE(fixed);
            if (fixed != 0)
                TrevikA_velocity_range_fix(0, 0, fixed);
            const std::uint32_t result = s_curve ? TrevikA_S_velocity_move(0, 0, 100, 10000, 100, 20)
                                                 : TrevikA_T_velocity_move(0, 0, 100, 10000, 100);
            CHECK(result == TREVIK_OK);
            TrevikHost_advance(0.11);
            CHECK(speed(0) == doctest::Approx(10000).epsilon(1e-3));
            for (const Row row :
                 {Row{30000, 200}, Row{5000, 100}, Row{5000, 100}, Row{-20000, 300}, Row{700, 50}}) {
                CAPTURE(row.speed_pps);
                const double before = speed(0);
                CHECK(TrevikA_velocity_change(0, 0, Unsigned(row.speed_pps), row.ms) == TREVIK_OK);
                CHECK(speed(0) == doctest::Approx(before));
                const bool straight_on = before * row.speed_pps > 0 && fixed != 0;
                if (straight_on) { // the rate was made for this ramp
                    TrevikHost_advance(row.ms * 0.5e-3);
                    CHECK(speed(0) == doctest::Approx((before + row.speed_pps) / 2).epsilon(0.05));
                }
                TrevikHost_advance(straight_on ? row.ms * 0.55e-3 : 2000);
                CHECK(speed(0) == doctest::Approx(row.speed_pps).epsilon(1e-3));
            }
            // A new velocity move on the running axis changes it, too.
            CHECK(TrevikA_T_velocity_move(0, 0, 100, Unsigned(-8000), 100) == TREVIK_OK);
            TrevikHost_advance(2000);
            CHECK(speed(0) == doctest::Approx(-8000).epsilon(1e-3));
            CHECK(TrevikA_stop(0, first_axis, 100) == TREVIK_OK);
            CHECK(run_out() == doctest::Approx(0.1).epsilon(0.02));
            CHECK(ReadStatus(0, StatusRegister::REMAINING) == 0);
            TrevikA_velocity_range_unfix(0, 0);
        }
    }
}

TEST_CASE_FIXTURE(VirtualMachine,
                  "a stopped move restarts and ends where it was to end, however often it is stopped")
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

TEST_CASE_FIXTURE(VirtualMachine, "a stopped line restarts as the line that it was")
{
    for (unsigned seed = 0; seed < 50; ++seed) {
        CAPTURE(seed);
        Draw draw(seed);
        std::array<std::int32_t, 4> d{};
        std::array<std::int32_t, 4> begin{};
        for (std::uint8_t axis = 0; axis < 4; ++axis) {
            begin[axis] = at(axis);
            d[axis] = draw.distance(1, 1e5);
        }
        CHECK(TrevikA_T_LINE4_move(0, d[0], d[1], d[2], d[3], relative, 100, draw.magnitude(200, 2e5), 50, 200,
                                   0) == TREVIK_OK);
        TrevikHost_advance(next_event() * draw.between(0, 99) / 100);
        CHECK(TrevikA_stop(0, all_axes, draw.between(0, 1) * 50) == TREVIK_OK);
        run_out();
        CHECK(TrevikA_3Axis_restart(0, 0) == TREVIK_OK); // the fourth axis is not named
        CHECK((idle(0) && idle(1) && idle(2)));
        CHECK(TrevikA_4Axis_restart(0) == TREVIK_OK);
        const double length = std::hypot(std::hypot(d[0], d[1]), std::hypot(d[2], d[3]));
        const double step = std::max(1e-4, next_event() / 17);
        while (std::isfinite(step) && !idle(0)) {
            TrevikHost_advance(step);
            double along = 0;
            for (std::uint8_t axis = 0; axis < 4; ++axis)
                along += (at(axis) - begin[axis]) * (d[axis] / length);
            for (std::uint8_t axis = 0; axis < 4; ++axis)
                CHECK(std::abs(at(axis) - begin[axis] - along * d[axis] / length) <= 1.5);
        }
        for (std::uint8_t axis = 0; axis < 4; ++axis)
            CHECK((idle(axis) && at(axis) - begin[axis] == d[axis]));
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "only what a stop interrupted restarts")
{
    const auto restart_does_nothing = [&] {
        CHECK(TrevikA_2Axis_restart(0, 0) == TREVIK_OK);
        CHECK((idle(0) && idle(1)));
    };
    restart_does_nothing();
    CHECK(TrevikA_T_LINE2_move(0, 0, 1000, 500, relative, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    run_out();
    restart_does_nothing(); // finished
    CHECK(TrevikA_T_LINE2_move(0, 0, 1000, 500, relative, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    TrevikHost_advance(0.5);
    CHECK(TrevikA_stop_emg(0) == TREVIK_OK);
    CHECK(TrevikA_T_position_move(0, 1, 10, 0, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    run_out();
    restart_does_nothing(); // one of its axes has moved since
    CHECK(TrevikA_T_position_move(0, 0, 1000, 0, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    TrevikHost_advance(0.5);
    CHECK(TrevikA_stop(0, first_axis, 0) == TREVIK_OK);
    WriteRegister(0, Register::DISTANCE, 300);
    restart_does_nothing(); // the registers hold another move now
}

TEST_CASE_FIXTURE(VirtualMachine, "backlash is taken up before a move that turns the axis round")
{
    WriteRegister(0, Register::MOTION_CONFIG, 1u << 12 | 50);
    WriteRegister(0, Register::MULTIPLIER, 299); // one pulse/s a unit
    WriteRegister(0, Register::START_SPEED, 1000);
    WriteRegister(0, Register::MAX_SPEED, 1000);
    WriteRegister(0, Register::CORRECTION_SPEED, 500);
    struct Row {
        std::uint32_t code;
        std::int32_t distance;
        double seconds;
    };
    // 100 pulses take 0.1 s, and so do the 50 of the correction.
    const Row rows[] = {{0x49, 100, 0.1}, {0x49, 100, 0.1},  {0x49, -100, 0.2}, {0x49, -100, 0.1},
                        {0x41, 100, 0.1}, {0x49, -100, 0.2}, {0x49, 100, 0.2}};
    std::int32_t expected = 0;
    for (const Row &row : rows) {
        WriteRegister(0, Register::DISTANCE, Unsigned(row.distance));
        WriteRegister(0, Register::MODE, row.code);
        SendCommand(1, Command::CMD_START_HIGH);
        if (row.seconds > 0.15) {
            TrevikHost_advance(0.0995);
            CHECK((at(0) == expected && stands(0) == expected && !idle(0)));
            CHECK(ReadStatus(0, StatusRegister::REMAINING) == 100);
            CHECK(ReadStatus(0, StatusRegister::CURRENT_SPEED) == 500);
            CHECK(run_out() == doctest::Approx(0.1005));
        } else {
            CHECK(run_out() == doctest::Approx(row.seconds));
        }
        expected += row.distance;
        CHECK((at(0) == expected && stands(0) == expected));
    }
}
