// The machine around an axis: switches, limits, homing, the handwheel.
#include "support/virtual_machine.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <vector>

using namespace trevik::test;
using trevik::Register;
using trevik::StatusRegister;

namespace
{

constexpr std::uint32_t plus_error = 1u << 5;
constexpr std::uint32_t minus_error = 1u << 6;
constexpr std::uint32_t alarm_error = 1u << 7;
constexpr std::uint32_t slow_down_error = 1u << 10;

std::uint32_t Errors(unsigned axis)
{
    return ReadStatus(axis, StatusRegister::ERROR_FLAGS);
}

// A switch from `first` to `last` on the plus side, mirrored for the minus side.
void Place(int side, std::uint8_t input, std::int32_t first, std::int32_t last)
{
    const std::int32_t low = side > 0 ? first : last == INT32_MAX ? INT32_MIN : -last;
    CHECK(TrevikVirtual_switch_set(0, 0, input, low, side > 0 ? last : -first) == TREVIK_OK);
}

} // namespace

TEST_CASE_FIXTURE(VirtualMachine, "home modes")
{
    struct Row {
        std::uint8_t mode;
        std::int32_t end;
        int slowing; // the ramp down comes on top, this way
    };
    // Home from 1000 to 1400, the end limit from 3000 on, an index pulse at 180, 380, ...; three of them are
    // counted.
    const Row rows[] = {{0, 1000, 1},  {1, 1000, 0}, {2, 1580, 0}, {3, 1580, 1},  {4, 580, 0},
                        {5, 580, -1},  {6, 2999, 0}, {7, 2580, 0}, {8, 2580, -1}, {9, 1000, 0},
                        {10, 1580, 0}, {11, 580, 0}, {12, 2580, 0}};
    for (const Row &row : rows) {
        for (const int side : {1, -1}) {
            for (const std::uint32_t ramp_ms : {50u, 0u}) {
                CAPTURE(row.mode);
                CAPTURE(side);
                CAPTURE(ramp_ms);
                const VirtualMachine machine;
                Place(side, TREVIK_VIRTUAL_HOME, 1000, 1400);
                Place(side, side > 0 ? TREVIK_VIRTUAL_PLUS_LIMIT : TREVIK_VIRTUAL_MINUS_LIMIT, 3000, INT32_MAX);
                CHECK(TrevikVirtual_index_set(0, 0, side * 180, 200) == TREVIK_OK);
                CHECK(TrevikA_current_position_set(0, 0, 7) == TREVIK_OK);
                CHECK(TrevikA_home_mode_set(0, 0, row.mode, 2) == TREVIK_OK);
                CHECK(TrevikA_home_start(0, 0, 500, 5000, ramp_ms, side < 0) == TREVIK_OK);
                double last_pps = 0;
                while (!idle(0)) {
                    last_pps = speed(0) != 0 ? std::abs(speed(0)) : last_pps;
                    TrevikHost_advance(std::min(next_event(), 1e-4));
                }
                const bool slowly = row.mode == 1 || (row.mode == 2 && ramp_ms != 0) || row.mode == 4 ||
                                    row.mode == 6 || row.mode == 7;
                CHECK((last_pps == doctest::Approx(500).epsilon(0.001) || !slowly));
                // 4500 pulses/s in 50 ms, 2750 pulses/s on average; without ramps it stops at once.
                const int slowing = ramp_ms == 0 ? 0 : row.slowing;
                const double end = side * (row.end + slowing * 2750 * 0.05);
                CHECK(std::abs(stands(0) - end) <= (slowing == 0 ? 0 : 0.15 * 2750 * 0.05));
                CHECK(at(0) == stands(0) + 7);
                CHECK((idle(0) && Errors(0) == 0));
            }
        }
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "a search finds home from the asked side, wherever it begins")
{
    for (const int side : {1, -1}) {
        for (const std::int32_t begin : {0, 999, 1000, 1200, 1400, 2000, 3000}) {
            for (const std::uint32_t ramp_ms : {0u, 50u}) {
                CAPTURE(side);
                CAPTURE(begin);
                CAPTURE(ramp_ms);
                const VirtualMachine machine;
                Place(side, TREVIK_VIRTUAL_HOME, 1000, 1400);
                Place(side, side > 0 ? TREVIK_VIRTUAL_PLUS_LIMIT : TREVIK_VIRTUAL_MINUS_LIMIT, 3000, INT32_MAX);
                CHECK(TrevikVirtual_position_set(0, 0, side * begin) == TREVIK_OK);
                CHECK(TrevikA_home_search(0, 0, 500, 5000, ramp_ms, side < 0, 300) == TREVIK_OK);
                std::int32_t nearest = begin;
                while (!idle(0)) {
                    TrevikHost_advance(std::min(next_event(), 1e-3));
                    nearest = std::min(nearest, side * stands(0));
                }
                CHECK(nearest == (begin < 1000 ? begin : 999 - 300));
                CHECK(side * stands(0) >= 1000);
                CHECK(side * stands(0) <= (ramp_ms == 0 ? 1000 : 1160));
                CHECK(Errors(0) == 0);
            }
        }
    }
    // With no home switch it ends at the other limit; a stop ends it, too.
    const VirtualMachine machine;
    CHECK(TrevikA_home_mode_set(0, 0, 1, 0) == TREVIK_OK);
    CHECK(TrevikA_home_start(0, 0, 500, 5000, 50, 0) == TREVIK_OK);
    TrevikHost_advance(0.1);
    CHECK(TrevikA_stop(0, first_axis, 100) == TREVIK_OK);
    CHECK(run_out() == doctest::Approx(0.1).epsilon(0.05));
    CHECK(TrevikVirtual_position_set(0, 0, 0) == TREVIK_OK);
    CHECK(TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_PLUS_LIMIT, 3000, INT32_MAX) == TREVIK_OK);
    CHECK(TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_MINUS_LIMIT, INT32_MIN, -500) == TREVIK_OK);
    CHECK(TrevikA_home_search(0, 0, 500, 5000, 50, 0, 300) == TREVIK_OK);
    run_out();
    CHECK((stands(0) == -500 && Errors(0) == minus_error && Errors(0) == 0));
}

TEST_CASE_FIXTURE(VirtualMachine, "alarm and slow-down inputs")
{
    // Alarm by hand: at once, and no start while it is on.
    CHECK(TrevikA_T_velocity_move(0, 0, 500, 20000, 100) == TREVIK_OK);
    TrevikHost_advance(0.5);
    const std::int32_t there = at(0);
    CHECK(TrevikVirtual_input_set(0, 0, TREVIK_VIRTUAL_ALARM, 1) == TREVIK_OK);
    CHECK((idle(0) && at(0) == there && Errors(0) == alarm_error));
    CHECK(TrevikA_T_position_move(0, 0, 10, 0, 500, 500, 0, 0, 0) == TREVIK_OK);
    CHECK((idle(0) && at(0) == there && Errors(0) == alarm_error));
    TrevikVirtual_input_set(0, 0, TREVIK_VIRTUAL_ALARM, 0);

    // Slow-down with its stop option: no start on it either.
    TrevikA_SD_PIN_set(0, 0, 1, 0, 0, 1);
    TrevikVirtual_input_set(0, 0, TREVIK_VIRTUAL_SLOW_DOWN, 1);
    CHECK(TrevikA_T_position_move(0, 0, 10, 0, 500, 500, 0, 0, 0) == TREVIK_OK);
    CHECK((idle(0) && at(0) == there && Errors(0) == slow_down_error));

    // Slow from 2000 to 3000, where the mode word heeds it (bit 8).
    struct Row {
        std::uint32_t mode, config;
        double speed_inside, speed_beyond;
        std::uint32_t error;
    };
    for (const Row &row : {Row{0x41, 0, 20000, 20000, 0}, Row{0x141, 0, 500, 20000, 0},
                           Row{0x141, 1u << 5, 500, 500, 0}, Row{0x141, 1u << 4, 0, 0, slow_down_error}}) {
        CAPTURE(row.mode);
        CAPTURE(row.config);
        const VirtualMachine machine;
        WriteRegister(0, Register::SIGNAL_CONFIG1, row.config);
        TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_SLOW_DOWN, 2000, 3000);
        CHECK(TrevikA_T_position_move(0, 0, 6000, 0, 500, 20000, 50, 50, 0) == TREVIK_OK);
        WriteRegister(0, Register::MODE, row.mode);
        const auto speed_at = [&](std::int32_t position) {
            while (!idle(0) && at(0) < position)
                TrevikHost_advance(1e-3);
            return speed(0);
        };
        CHECK(speed_at(1900) > 15000);
        CHECK(speed_at(2900) == doctest::Approx(row.speed_inside).epsilon(0.001));
        CHECK(speed_at(4300) == doctest::Approx(row.speed_beyond).epsilon(0.01));
        run_out();
        CHECK((row.error != 0 || at(0) == 6000));
        CHECK(Errors(0) == row.error);
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "a switch is met on its pulse, whatever the steps of the clock are")
{
    CHECK(TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_HOME, 100, 99) == TREVIK_ERR_PARAM);
    CHECK(TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_LATCH, -10, 1234) == TREVIK_OK);
    CHECK(TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_PLUS_LIMIT, 777'777, INT32_MAX) == TREVIK_OK);
    CHECK((ReadStatus(0, StatusRegister::EXT_STATUS) & 1u << 14) != 0);
    CHECK(TrevikA_T_position_move(0, 0, 1'000'000, 0, 500, 6'000'000, 30, 30, 0) == TREVIK_OK);
    TrevikHost_advance(next_event());
    CHECK((stands(0) == 1235 && (ReadStatus(0, StatusRegister::EXT_STATUS) & 1u << 14) == 0));
    TrevikHost_advance(10);
    CHECK((stands(0) == 777'777 && Errors(0) == plus_error));
    CHECK(TrevikVirtual_switch_clear(0, 0, TREVIK_VIRTUAL_PLUS_LIMIT) == TREVIK_OK);
    CHECK(TrevikA_OneAxis_restart(0, 0) == TREVIK_OK);
    run_out();
    CHECK(stands(0) == 1'000'000);
}

TEST_CASE("an axis follows the handwheel")
{
    const VirtualMachine machine("0:A", true);
    const auto at = [] { return VirtualMachine::at(1); };
    CHECK(TrevikA_pulser_map_set(0, 1, 0, 0) == TREVIK_OK);
    CHECK(TrevikA_pulser_motion_enable(0, 1, 1, 3) == TREVIK_OK);
    CHECK(TrevikVirtual_handwheel_turn(0, 0, 500, -1) == TREVIK_ERR_PARAM);
    CHECK(TrevikVirtual_handwheel_turn(0, 0, 500, 1) == TREVIK_OK); // 10 a tick
    TrevikHost_advance(0.5);
    CHECK(machine.speed(1) == doctest::Approx(1500).epsilon(0.001));
    const auto turned = [] { return Value(TrevikVirtual_counter_read, 0, 0, 4); };
    CHECK(turned() == 250);
    TrevikHost_advance(1);
    CHECK((at() == 1500 && machine.idle(1)));
    // For an hour; back and forth, faster and slower; what is left of an earlier turn is dropped.
    TrevikVirtual_handwheel_turn(0, 0, 1'800'000, 3600);
    TrevikHost_advance(3650); // the speeds of the ticks are cut to whole numbers: it comes a little late
    CHECK((at() == 1500 + 3 * 1'800'000 && machine.idle(1)));
    TrevikVirtual_handwheel_turn(0, 0, -2000, 0.5);
    TrevikHost_advance(0.25);
    TrevikVirtual_handwheel_turn(0, 0, 400, 0.1);
    TrevikHost_advance(0.3);
    TrevikVirtual_handwheel_turn(0, 0, -7, 0);
    TrevikHost_advance(5);
    CHECK(turned() == 1'800'500 - 1000 + 400 - 7);
    CHECK((at() == turned() * 3 && machine.idle(1)));
}

namespace
{

// What a program and a machine may do at any moment, on one axis or two.
void DoSomething(Draw &draw)
{
    const auto a = static_cast<std::uint8_t>(draw.between(0, 1));
    const std::uint8_t axes[4] = {static_cast<std::uint8_t>(a == 0), a, 0, 0};
    const std::uint32_t speed = draw.magnitude(1000, 1e6);
    const std::uint32_t start = draw.magnitude(10, 2000);
    const std::uint32_t up = draw.between(0, 2) * 40;
    const std::uint32_t down = draw.between(0, 2) * 40;
    const std::int32_t way = draw.distance(1, 1e5);
    const std::int32_t first = draw.distance(1, 3e4);
    const auto side = static_cast<std::uint8_t>(draw.between(0, 1));
    const auto input = static_cast<std::uint8_t>(draw.between(0, 5));
    const std::uint32_t signed_speed = side != 0 ? speed : 0 - speed;
    const std::function<void()> doings[] = {
        [&] { TrevikA_T_position_move(0, a, Unsigned(way), 0, start, speed, up, down, 0); },
        [&] { TrevikA_S_position_move(0, a, Unsigned(way), side, start, speed, up, down, 0, 10, 0); },
        [&] { TrevikA_T_LINE2_move(0, 0, way, first, relative, start, speed, up, down, 0); },
        [&] { TrevikA_T_velocity_move(0, a, start, signed_speed, up); },
        [&] { TrevikA_velocity_change(0, a, signed_speed, up); },
        [&] { TrevikA_T_onLINE_change(0, a, Unsigned(way), 1, start, speed, up, down); },
        [&] { TrevikA_S_onLINE_change(0, a, Unsigned(way), 0, start, speed, up, down, up / 2, 0); },
        [&] { TrevikA_home_mode_set(0, a, static_cast<std::uint8_t>(draw.between(0, 12)), side); },
        [&] { TrevikA_home_start(0, a, start, speed, up, side); },
        [&] { TrevikA_home_search(0, a, start, speed, up, side, 500); },
        [&] { TrevikA_stop(0, axes, down); },
        [&] { TrevikA_2Axis_restart(0, 0); },
        [&] { TrevikA_continuous_flag_set(0, a, side); },
        [&] { WriteRegister(a, Register::SIGNAL_CONFIG1, side * 0x108u); },
        [&] { TrevikVirtual_switch_set(0, a, input, first, first + 2000); },
        [&] { TrevikVirtual_index_set(0, a, first, draw.between(0, 1000)); },
        [&] { TrevikVirtual_switch_clear(0, a, input); },
        [&] { TrevikVirtual_switch_set(0, a, TREVIK_VIRTUAL_LATCH, first, first + 2000); },
        [&] { TrevikVirtual_handwheel_turn(0, a, way, up * 1e-3); },
        [&] { WriteRegister(a, Register::LIMIT_CONFIG, 6u << 2 | 6u << 10 | side | (up / 40) << 5 | 0x50000); },
        [&] { WriteRegister(a, Register::START_TRIGGER_ENV, draw.between(0, 3) | draw.between(0, 23) << 3); },
        [&] { WriteRegister(a, side != 0 ? Register::SOFTLIMIT1 : Register::COMPARATOR_DATA, Unsigned(way)); },
        [&] { WriteRegister(a, side != 0 ? Register::SOFTLIMIT2 : Register::COMPARE_START_DATA, Unsigned(way)); },
        [&] { WriteRegister(a, Register::EVENT_ENABLE, side * 0x55BF3u); },
        [&] {
            OnChip([=](auto &chip, auto now_ns) {
                chip.set_encoder_scale(a, first % 5, 2, now_ns);
                return 0;
            });
        }};
    doings[draw.between(0, std::size(doings) - 1)]();
}

// Everything that can be seen of the two axes after 60 random doings, the clock moving in `steps` between them.
std::vector<double> RandomLife(unsigned seed, int steps)
{
    const VirtualMachine machine;
    Draw draw(seed);
    std::vector<double> seen;
    for (int i = 0; i < 60; ++i) {
        DoSomething(draw);
        const double seconds = draw.between(0, 3) == 0 ? 0 : draw.magnitude(1, 1000) * 1e-3;
        for (int step = 0; step < steps; ++step) {
            TrevikHost_advance(seconds / steps);
            CHECK(VirtualMachine::next_event() >= 0);
        }
        for (std::uint8_t axis = 0; axis < 2; ++axis) {
            seen.push_back(VirtualMachine::at(axis));
            seen.push_back(VirtualMachine::stands(axis));
            seen.push_back(VirtualMachine::idle(axis));
            seen.push_back(Errors(axis));
            for (const auto status :
                 {StatusRegister::REMAINING, StatusRegister::EVENT_FLAGS, StatusRegister::LATCH_DATA})
                seen.push_back(ReadStatus(axis, status));
            for (std::uint8_t counter = 2; counter <= 4; ++counter)
                seen.push_back(Value(TrevikVirtual_counter_read, 0, axis, counter));
        }
    }
    return seen;
}

} // namespace

TEST_CASE("whatever happens, the steps of the clock make no difference")
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        CAPTURE(seed);
        CHECK(RandomLife(seed, 1) == RandomLife(seed, 8)); // steps of whole nanoseconds: ms / 8
    }
}
