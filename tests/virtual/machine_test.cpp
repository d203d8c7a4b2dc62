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

constexpr std::uint32_t move_ended = 1u << 0;
constexpr std::uint32_t minus_error = 1u << 6;
constexpr std::uint32_t alarm_error = 1u << 7;
constexpr std::uint32_t slow_down_error = 1u << 10;

// Home from 1000 to 1400, the end limit from 3000 on; mirrored for the minus side.
void PlaceSwitches(bool minus)
{
    TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_HOME, minus ? -1400 : 1000, minus ? -1000 : 1400);
    TrevikVirtual_switch_set(0, 0, minus ? TREVIK_VIRTUAL_MINUS_LIMIT : TREVIK_VIRTUAL_PLUS_LIMIT,
                             minus ? INT32_MIN : 3000, minus ? -3000 : INT32_MAX);
}

} // namespace

TEST_CASE("home modes")
{
    struct Row {
        std::uint8_t mode;
        std::int32_t end;
        int slowing; // the ramp down comes on top, this way
    };
    // An index pulse at 180, 380, ...; three of them are counted.
    const Row rows[] = {{0, 1000, 1},  {1, 1000, 0}, {2, 1580, 0}, {3, 1580, 1},  {4, 580, 0},
                        {5, 580, -1},  {6, 2999, 0}, {7, 2580, 0}, {8, 2580, -1}, {9, 1000, 0},
                        {10, 1580, 0}, {11, 580, 0}, {12, 2580, 0}};
    for (const Row &row : rows) {
        for (const int side : {1, -1}) {
            for (const std::uint32_t ramp_ms : {50u, 0u}) {
                INFO("mode " << int{row.mode} << ", side " << side << ", ramps of " << ramp_ms << " ms");
                const VirtualMachine machine;
                PlaceSwitches(side < 0);
                CHECK(TrevikVirtual_index_set(0, 0, side * 180, 200) == TREVIK_OK);
                CHECK(TrevikA_home_mode_set(0, 0, row.mode, 2) == TREVIK_OK);
                WriteRegister(0, Register::EVENT_ENABLE, move_ended);
                CHECK(TrevikA_home_start(0, 0, 500, 5000, ramp_ms, side < 0) == TREVIK_OK);
                double last_pps = 0;
                while (!machine.idle(0)) {
                    last_pps = machine.speed(0) != 0 ? std::abs(machine.speed(0)) : last_pps;
                    TrevikHost_advance(std::min(machine.next_event(), 1e-4));
                }
                const bool slowly = row.mode == 1 || (row.mode == 2 && ramp_ms != 0) || row.mode == 4 ||
                                    row.mode == 6 || row.mode == 7;
                CHECK((last_pps == doctest::Approx(500).epsilon(0.001) || !slowly));
                // 4500 pulses/s in 50 ms, 2750 pulses/s on average; without ramps it stops at once.
                const int slowing = ramp_ms == 0 ? 0 : row.slowing;
                const double end = side * (row.end + slowing * 2750 * 0.05);
                CHECK(std::abs(machine.stands(0) - end) <= (slowing == 0 ? 0 : 0.15 * 2750 * 0.05));
                CHECK((machine.at(0) == machine.stands(0) && Errors(0) == 0));
                CHECK(ReadStatus(0, StatusRegister::EVENT_FLAGS) == move_ended);
            }
        }
    }
}

TEST_CASE("a search finds home from the asked side, wherever it begins")
{
    for (const int side : {1, -1}) {
        for (const std::int32_t begin : {0, 999, 1000, 1200, 1400, 2000, 3000}) {
            for (const std::uint32_t ramp_ms : {0u, 50u}) {
                INFO("side " << side << ", from " << begin << ", ramps of " << ramp_ms << " ms");
                const VirtualMachine machine;
                PlaceSwitches(side < 0);
                CHECK(TrevikVirtual_position_set(0, 0, side * begin) == TREVIK_OK);
                CHECK(TrevikA_home_search(0, 0, 500, 5000, ramp_ms, side < 0, 300) == TREVIK_OK);
                std::int32_t nearest = begin;
                while (!machine.idle(0)) {
                    TrevikHost_advance(std::min(machine.next_event(), 1e-3));
                    nearest = std::min(nearest, side * machine.stands(0));
                }
                CHECK(nearest == (begin < 1000 ? begin : 999 - 300));
                const std::int32_t beyond = side * machine.stands(0) - 1000;
                CHECK((beyond >= 0 && beyond <= (ramp_ms == 0 ? 0 : 160) && Errors(0) == 0));
            }
        }
    }
    // With no home switch it ends at the other limit.
    const VirtualMachine machine;
    TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_PLUS_LIMIT, 3000, INT32_MAX);
    TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_MINUS_LIMIT, INT32_MIN, -500);
    CHECK(TrevikA_home_search(0, 0, 500, 5000, 50, 0, 300) == TREVIK_OK);
    machine.run_out();
    CHECK((machine.stands(0) == -500 && Errors(0) == minus_error && Errors(0) == 0));
}

TEST_CASE("an alarm stops at once, or slowly as its pin is configured")
{
    for (const std::uint8_t slowly : {std::uint8_t{0}, std::uint8_t{1}}) {
        const VirtualMachine machine;
        CHECK(TrevikA_ALM_PIN_set(0, 0, 0, slowly) == TREVIK_OK);
        TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_ALARM, 3000, INT32_MAX);
        CHECK(TrevikA_T_position_move(0, 0, 10000, 0, 500, 20000, 50, 50, 0) == TREVIK_OK);
        machine.run_out();
        CHECK((slowly != 0 ? machine.at(0) > 3100 && machine.at(0) < 4000 : machine.at(0) == 3000));
        CHECK(Errors(0) == alarm_error);
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "no start on an active alarm or slow-down stop")
{
    const auto fails = [](std::uint8_t input, std::uint32_t error) {
        TrevikVirtual_input_set(0, 0, input, 1);
        CHECK(TrevikA_T_position_move(0, 0, 10, 0, 500, 500, 0, 0, 0) == TREVIK_OK);
        CHECK((idle(0) && at(0) == 0 && Errors(0) == error));
        TrevikVirtual_input_set(0, 0, input, 0);
    };
    fails(TREVIK_VIRTUAL_ALARM, alarm_error);
    TrevikA_SD_PIN_set(0, 0, 1, 0, 0, 1);
    fails(TREVIK_VIRTUAL_SLOW_DOWN, slow_down_error);
}

TEST_CASE("the slow-down input slows down as the pin is configured, where the mode word heeds it")
{
    // The input from 2000 to 3000; bit 8 of the mode word.
    struct Row {
        std::uint32_t mode, config;
        double speed_inside, speed_beyond;
        std::uint32_t error;
    };
    for (const Row &row : {Row{0x41, 0, 20000, 20000, 0}, Row{0x141, 0, 500, 20000, 0},
                           Row{0x141, 1u << 5, 500, 500, 0}, Row{0x141, 1u << 4, 0, 0, slow_down_error}}) {
        INFO("mode " << row.mode << ", config " << row.config);
        const VirtualMachine machine;
        WriteRegister(0, Register::SIGNAL_CONFIG1, row.config);
        TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_SLOW_DOWN, 2000, 3000);
        CHECK(TrevikA_T_position_move(0, 0, 6000, 0, 500, 20000, 50, 50, 0) == TREVIK_OK);
        WriteRegister(0, Register::MODE, row.mode);
        const auto speed_at = [&](std::int32_t position) {
            while (!machine.idle(0) && machine.at(0) < position)
                TrevikHost_advance(1e-3);
            return machine.speed(0);
        };
        CHECK(speed_at(1900) > 15000);
        CHECK(speed_at(2900) == doctest::Approx(row.speed_inside).epsilon(0.001));
        CHECK(speed_at(4300) == doctest::Approx(row.speed_beyond).epsilon(0.01));
        machine.run_out();
        CHECK((Errors(0) == row.error && (row.error != 0 || machine.at(0) == 6000)));
    }
}

namespace
{

// What a program and a machine may do at any moment, on one axis or two.
void DoSomething(Draw &draw)
{
    const auto a = static_cast<std::uint8_t>(draw.between(0, 1));
    const std::uint8_t axes[4] = {static_cast<std::uint8_t>(a == 0), a, 0, 0};
    const std::uint32_t speed = draw.magnitude(1000, 1e6);
    const std::uint32_t up = draw.between(0, 2) * 40;
    const std::uint32_t down = draw.between(0, 2) * 40;
    const std::int32_t way = draw.distance(1, 1e5);
    const std::int32_t first = draw.distance(1, 3e4);
    const auto side = static_cast<std::uint8_t>(draw.between(0, 1));
    const auto input = static_cast<std::uint8_t>(draw.between(0, 5));
    const std::function<void()> doings[] = {
        [&] { TrevikA_S_position_move(0, a, Unsigned(way), side, 100, speed, up, down, 0, 10, 0); },
        [&] { TrevikA_T_LINE2_move(0, 0, way, first, relative, 100, speed, up, down, 0); },
        [&] { TrevikA_T_onLINE_change(0, a, Unsigned(way), 1, 100, speed, up, down); },
        [&] { TrevikA_home_mode_set(0, a, static_cast<std::uint8_t>(draw.between(0, 12)), side); },
        [&] { TrevikA_home_search(0, a, 100, speed, up, side, 500); },
        [&] { TrevikA_stop(0, axes, down); },
        [&] { TrevikA_2Axis_restart(0, 0); },
        [&] { TrevikVirtual_switch_set(0, a, input, first, first + 2000); },
        [&] { TrevikVirtual_handwheel_turn(0, a, way, up * 1e-3); },
        [&] { WriteRegister(a, Register::LIMIT_CONFIG, 6u << 2 | 6u << 10 | side | (up / 40) << 5 | 0x50000); },
        [&] { WriteRegister(a, Register::START_TRIGGER_ENV, draw.between(0, 3) | draw.between(0, 23) << 3); },
        [&] { WriteRegister(a, side != 0 ? Register::SOFTLIMIT1 : Register::COMPARATOR_DATA, Unsigned(way)); },
        [&] { WriteRegister(a, Register::EVENT_ENABLE, side * 0x55BF3u); }};
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
            seen.push_back(VirtualMachine::stands(axis));
            seen.push_back(VirtualMachine::idle(axis));
            for (const auto status : {StatusRegister::REMAINING, StatusRegister::ERROR_FLAGS,
                                      StatusRegister::EVENT_FLAGS, StatusRegister::LATCH_DATA})
                seen.push_back(ReadStatus(axis, status));
            for (std::uint8_t counter = 1; counter <= 4; ++counter)
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
