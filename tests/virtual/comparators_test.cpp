// Counters, software limits, comparators, latch and events of the chip.
#include "support/virtual_machine.h"

#include <map>
#include <utility>
#include <vector>

using namespace trevik;
using namespace trevik::test;

namespace
{

constexpr std::uint32_t soft_limits_on = 6u << 2 | 6u << 10; // LIMIT_CONFIG

std::uint32_t MainStatusOf(unsigned axis)
{
    return OnChip([=](auto &chip, auto now_ns) { return chip.main_status(axis, now_ns); });
}
std::uint32_t SubStatusOf(unsigned axis)
{
    return OnChip([=](auto &chip, auto now_ns) { return chip.sub_status(axis, now_ns); });
}
std::uint32_t Errors(unsigned axis)
{
    return ReadStatus(axis, StatusRegister::ERROR_FLAGS);
}
std::int32_t Counter(std::uint8_t axis, std::uint8_t counter)
{
    return Value(TrevikVirtual_counter_read, 0, axis, counter);
}
void ScaleEncoder(unsigned axis, std::int32_t counts, std::int32_t pulses)
{
    OnChip([=](auto &chip, auto now_ns) {
        chip.set_encoder_scale(axis, counts, pulses, now_ns);
        return 0;
    });
}
void Move(std::uint8_t axis, std::int32_t pulses, std::uint32_t ramp_ms = 50)
{
    CHECK(TrevikA_T_position_move(0, axis, Unsigned(pulses), 0, 500, 20000, ramp_ms, ramp_ms, 0) == TREVIK_OK);
}

} // namespace

TEST_CASE_FIXTURE(VirtualMachine, "the encoder counts the machine's way, counter 3 what it lacks")
{
    Move(0, 1000);
    run_out();
    CHECK((Counter(0, 2) == 1000 && Counter(0, 3) == 0));
    CHECK(TrevikVirtual_position_set(0, 0, 990) == TREVIK_OK);
    CHECK((Counter(0, 1) == 1000 && Counter(0, 2) == 990 && Counter(0, 3) == 10));
    TrevikVirtual_counter_set(0, 0, 2, 0);
    CHECK(Counter(0, 3) == 10); // of the way, not of the registers
    TrevikVirtual_counter_set(0, 0, 3, 0);

    // Backwards, and by scales; a change does not jump, and whole counts are those below.
    WriteRegister(0, Register::SIGNAL_CONFIG2, 1u << 22);
    Move(0, 100);
    run_out();
    CHECK((Counter(0, 2) == -100 && Counter(0, 3) == 200));
    for (const auto &[counts, pulses, after_10] :
         {std::array{4, 1, -40}, {-5, 2, 25}, {1, 3, -4}, {-1, 3, 3}, {2'000'000'000, 2'000'000'000, -10}}) {
        CAPTURE(counts);
        ScaleEncoder(0, counts, pulses);
        CHECK(TrevikVirtual_position_set(0, 0, 0) == TREVIK_OK);
        TrevikVirtual_counter_set(0, 0, 2, 0);
        TrevikVirtual_counter_set(0, 0, 3, 0);
        Move(0, 10);
        TrevikHost_advance(next_event());
        CHECK((Counter(0, 2) == after_10 && Counter(0, 3) == 10 - after_10));
    }
}

namespace
{

// Limits of axis 1 on both sides, and the line or move into one of them.
struct Limits {
    unsigned counter; // that software limits compare; 0: switches instead
    unsigned action;  // 0: none, 1: at once, 2: slowly
    int side;
    bool line;
    // The encoder, where that is compared, counts backwards, 2 for each pulse.
    int way = counter == 2 ? -side : side;
    std::int32_t outside = counter == 0 ? 3333 : counter == 1 ? 4001 : 2001; // the first pulse, as a size
    std::uint32_t status = counter == 0 ? 0 : side > 0 ? 0x100 : 0x200;
    std::uint32_t error = counter == 0 ? side > 0 ? 1u << 5 : 1u << 6 : status >> 8;

    void set_up() const
    {
        TrevikA_continuous_flag_set(0, 0, action != 0);
        TrevikA_continuous_flag_set(0, 1, action != 0);
        if (counter == 0) {
            WriteRegister(1, Register::SIGNAL_CONFIG1, action == 2 ? 1u << 3 : 0);
            TrevikVirtual_switch_set(0, 1, TREVIK_VIRTUAL_PLUS_LIMIT, outside, INT32_MAX);
            TrevikVirtual_switch_set(0, 1, TREVIK_VIRTUAL_MINUS_LIMIT, INT32_MIN, -outside);
            return;
        }
        ScaleEncoder(1, counter == 2 ? -2 : 1, 1);
        const std::uint32_t compared = counter - 1;
        WriteRegister(1, Register::LIMIT_CONFIG,
                      soft_limits_on | compared | compared << 8 | action << 5 | action << 13);
        WriteRegister(1, Register::SOFTLIMIT1, 4000);
        WriteRegister(1, Register::SOFTLIMIT2, Unsigned(-4000));
    }
    // Queued behind one that still runs.
    void go(std::int32_t pulses, std::uint32_t up_ms = 50) const
    {
        CHECK(
            (line ? TrevikA_T_LINE2_move(0, 0, std::abs(pulses) * 8 / 5, pulses, relative, 500, 20000, up_ms, 50, 0)
                  : TrevikA_T_position_move(0, 1, Unsigned(pulses), 0, 500, 20000, up_ms, 50, 0)) == TREVIK_OK);
    }
    bool stopped(std::int32_t size) const
    {
        return VirtualMachine::stands(1) == way * size && VirtualMachine::idle(0) && VirtualMachine::idle(1) &&
               Errors(1) == (action == 0 ? 0 : error) && Errors(0) == 0 && (MainStatusOf(1) & 0x300) == status;
    }
    bool inside(std::int32_t size) const
    {
        return VirtualMachine::stands(1) == way * size && Errors(1) == 0 && (MainStatusOf(1) & 0x300) == 0;
    }
};

void GoBeyond(const Limits &limits)
{
    const VirtualMachine machine;
    limits.set_up();
    limits.go(limits.way * (limits.outside - 1));
    machine.run_out();
    CHECK(limits.inside(limits.outside - 1));
    limits.go(-limits.way * (limits.outside - 1));
    machine.run_out();
    const std::int32_t begin = machine.stands(0);
    const std::int32_t distance = limits.outside + 2999;
    limits.go(limits.way * distance);
    if (limits.action != 0)
        limits.go(-limits.way * 5000); // dropped with the first one
    machine.run_out();
    const std::int32_t size = std::abs(machine.stands(1));
    CHECK(limits.stopped(size));
    CHECK((limits.action == 0   ? size == distance
           : limits.action == 1 ? size == limits.outside
                                : size > limits.outside + 50 && size < limits.outside + 1000));
    if (limits.line)
        CHECK(std::abs(machine.stands(0) - begin - size * 8 / 5.0) <= 1);
    if (limits.action == 0)
        return;
    // Farther out: not a pulse, from full speed neither. Back: freely. Homing heeds no counter.
    limits.go(limits.way * 10, 0);
    CHECK(limits.stopped(size));
    limits.go(-limits.way * (size - 5));
    machine.run_out();
    CHECK(limits.inside(5));
    if (limits.counter == 0)
        return;
    TrevikA_continuous_flag_set(0, 1, 0);
    TrevikVirtual_switch_set(0, 1, TREVIK_VIRTUAL_HOME, limits.way * 6000 - 500, limits.way * 6000 + 500);
    CHECK(TrevikA_home_start(0, 1, 500, 5000, 0, limits.way < 0) == TREVIK_OK);
    machine.run_out();
    CHECK((machine.stands(1) == limits.way * 5500 && Errors(1) == 0));
}

} // namespace

TEST_CASE("limits stop what goes farther out, on the first pulse beyond, and nothing else")
{
    for (const unsigned counter : {0u, 1u, 2u})
        for (const unsigned action : {0u, 1u, 2u})
            for (const int side : {1, -1})
                for (const bool line : {false, true}) {
                    CAPTURE(counter);
                    CAPTURE(action);
                    CAPTURE(side);
                    CAPTURE(line);
                    if (counter != 0 || action != 0) // switches always stop
                        GoBeyond({counter, action, side, line});
                }
}

TEST_CASE_FIXTURE(VirtualMachine, "an axis of a circle stays inside its software limits")
{
    struct Row {
        std::int32_t limit; // of the second axis, upwards
        std::uint8_t direction;
        std::int32_t end;
    };
    // Round a center to the right: the second axis goes out, or from beyond its limit back in, and then out again.
    for (const Row &row : {Row{3000, 0, 3001}, Row{3000, 1, 3001}, Row{-15000, 1, -10000}, Row{-15000, 0, 0}}) {
        CAPTURE(row.limit);
        CAPTURE(row.direction);
        const VirtualMachine machine;
        WriteRegister(1, Register::LIMIT_CONFIG, soft_limits_on | 1u << 5 | 1u << 13);
        WriteRegister(1, Register::SOFTLIMIT1, Unsigned(row.limit));
        WriteRegister(1, Register::SOFTLIMIT2, Unsigned(-15000));
        CHECK(TrevikA_T_ARC_center_move(0, 0, 10000, 0, 0, 0, relative, 500, 5000, 0, row.direction, 0) ==
              TREVIK_OK);
        run_out();
        CHECK(stands(1) == row.end);
        CHECK(Errors(1) == 1);
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "comparator output: what its conditions say, on the exact pulse, both ways")
{
    // From 0 to 100 and back, compared with 60. Positions at which the flag goes on and off, in order.
    using Changes = std::vector<std::int32_t>;
    const std::map<unsigned, Changes> rows = {{0, {}},       {1, {60, 61, 60, 59}}, {2, {60, 61}},
                                              {3, {60, 59}}, {4, {60, 59}},         {5, {61, 60}}};
    for (const std::uint32_t counter : {0u, 1u, 2u}) {
        for (const auto &[condition, expected] : rows) {
            CAPTURE(counter);
            CAPTURE(condition);
            const VirtualMachine machine;
            ScaleEncoder(0, counter == 2 ? 0 : 1, 1); // counter 3 then counts what is put out
            WriteRegister(0, Register::START_TRIGGER_ENV, counter | condition << 3);
            WriteRegister(0, Register::COMPARATOR_DATA, 60);
            bool on = condition == 4;
            Changes changes;
            for (const std::int32_t way : {100, -100}) {
                Move(0, way);
                while (!idle(0)) {
                    TrevikHost_advance(next_event());
                    CHECK(((MainStatusOf(0) >> 12 & 1) != 0) == ((SubStatusOf(0) >> 7 & 1) == 0));
                    if (((MainStatusOf(0) >> 12 & 1) != 0) != on)
                        changes.push_back(stands(0));
                    on = (MainStatusOf(0) >> 12 & 1) != 0;
                }
            }
            CHECK(changes == expected);
        }
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "comparator output stops its axis when it becomes met, not before a start")
{
    for (const std::uint32_t action : {1u, 2u}) {
        CAPTURE(action);
        const VirtualMachine machine;
        WriteRegister(0, Register::START_TRIGGER_ENV, 1u << 3 | action << 6); // counter 1, equal
        WriteRegister(0, Register::COMPARATOR_DATA, 5000);
        Move(0, 10000);
        run_out();
        CHECK((action == 1 ? stands(0) == 5000 : stands(0) > 5100 && stands(0) < 6000));
        CHECK(Errors(0) == 1u << 4);
        Move(0, 7);
        run_out();
        CHECK(Errors(0) == 0);
        CHECK((action == 2 || stands(0) == 5007));
    }
}

TEST_CASE("a compare start watches any counter, and starts on the exact pulse")
{
    struct Row {
        std::uint32_t counter, condition; // against 2500
        std::int32_t distance;            // of axis 0, at 1000 pulses/s
        bool line;                        // axis 0 is the shorter axis of a line
        double start_s;                   // infinite: never
    };
    const double never = HUGE_VAL;
    for (const Row &row : {Row{1, 1, 5000, false, 2.5}, Row{1, 2, 5000, true, 2.5}, Row{1, 3, 5000, false, never},
                           Row{1, 3, -5000, false, never}, Row{1, 5, 5000, false, 2.501}, Row{1, 4, 5000, false, 0},
                           Row{1, 1, 2000, false, never}, Row{1, 0, 5000, false, never},
                           Row{2, 2, 5000, false, 2.5}, Row{3, 2, 5000, false, 2.5}, Row{4, 2, 0, false, 2.5}}) {
        CAPTURE(row.counter);
        CAPTURE(row.condition);
        CAPTURE(row.distance);
        const VirtualMachine machine;
        ScaleEncoder(0, row.counter == 3 ? 0 : 1, 1);
        WriteRegister(0, Register::LIMIT_CONFIG, (row.counter - 1) << 16 | row.condition << 18);
        WriteRegister(0, Register::COMPARE_START_DATA, 2500);
        CHECK(TrevikA_T_position_move(0, 1, 5000, 0, 1000, 1000, 0, 0, 2) == TREVIK_OK);
        if (row.counter == 4)
            TrevikVirtual_handwheel_turn(0, 0, 5000, 5);
        else if (row.line)
            CHECK(TrevikA_T_LINE3_move(0, 2, row.distance, 10000, 10000, relative, 3000, 3000, 0, 0, 0) ==
                  TREVIK_OK);
        else
            CHECK(TrevikA_T_position_move(0, 0, Unsigned(row.distance), 0, 1000, 1000, 0, 0, 0) == TREVIK_OK);
        const double start_s = std::min(row.start_s, 100.0);
        TrevikHost_advance(start_s);
        CHECK((!machine.idle(1) && machine.at(1) == 0));
        TrevikHost_advance(0.5);
        CHECK(machine.at(1) == (row.start_s < never ? 500 : 0));
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "latched is the pulse on which the input came, or all axes at one moment")
{
    const auto latched = [](unsigned axis) {
        return static_cast<std::int32_t>(ReadStatus(axis, StatusRegister::LATCH_DATA));
    };
    TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_LATCH, 1234, 2000);
    ScaleEncoder(0, 3, 1);
    for (const auto &[way, expected] : {std::pair{5000, 3 * 1234}, {-5000, 3 * 2000}, {2000, 3 * 1234}}) {
        Move(0, way);
        TrevikHost_advance(10);
        CHECK(latched(0) == expected);
    }
    CHECK(TrevikVirtual_position_set(0, 0, 3000) == TREVIK_OK);
    WriteRegister(0, Register::START_TRIGGER_ENV, 1u << 15); // off: 2000 is not latched on the way back
    Move(0, -2500);
    run_out();
    CHECK(latched(0) == 3 * 1234);
    WriteRegister(0, Register::START_TRIGGER_ENV, 0);
    CHECK(TrevikVirtual_position_set(0, 0, 0) == TREVIK_OK);
    Move(0, 1234); // it ends on the switch
    run_out();
    CHECK(latched(0) == 3 * 1234);
    CHECK(TrevikVirtual_position_set(0, 0, 0) == TREVIK_OK);
    CHECK(TrevikVirtual_position_set(0, 0, 1500) == TREVIK_OK); // by hand
    CHECK(latched(0) == 3 * 1500);

    CHECK(TrevikA_T_LINE2_move(0, 3, 10000, 5000, relative, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    TrevikHost_advance(1.5);
    SendCommand(0xF, Command::CMD_LATCH_COUNTERS);
    const std::int32_t here[] = {at(1), at(2)};
    TrevikHost_advance(1);
    CHECK((here[0] > 1000 && latched(1) == here[0] && latched(2) == here[1] && latched(3) == 0));
}

TEST_CASE_FIXTURE(VirtualMachine, "events come when they happen, only those that are enabled")
{
    using Seen = std::vector<std::pair<double, std::uint32_t>>;
    // Runs out, and notes the bits that each axis raises, with the time in ms.
    const auto run = [](unsigned axis) {
        Seen seen;
        double total = 0;
        for (;;) {
            const std::uint32_t flags = ReadStatus(axis, StatusRegister::EVENT_FLAGS);
            if (flags != 0)
                seen.emplace_back(std::round(total * 1e3), flags);
            const double seconds = next_event();
            if (!std::isfinite(seconds))
                return seen;
            TrevikHost_advance(seconds);
            total += seconds;
        }
    };
    const auto bits = [](auto... bit) { return (... | (1u << bit)); };
    // 500 to 20500 pulses/s in 1 s: 10500 pulses a ramp; 10250 pulses at 20500 take 500 ms.
    const auto move = [] {
        CHECK(TrevikA_T_position_move(0, 0, 31250, 0, 500, 20500, 1000, 1000, 0) == TREVIK_OK);
    };
    WriteRegister(0, Register::EVENT_ENABLE, 0x55BF3);
    move();
    const Seen whole = run(0);
    const Seen expected = {{0, bits(4)}, {1000, bits(5)}, {1500, bits(6)}, {2500, bits(0, 7)}};
    REQUIRE(whole.size() == expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        CHECK(whole[i].first == doctest::Approx(expected[i].first).epsilon(0.02));
        CHECK(whole[i].second == expected[i].second);
    }
    WriteRegister(0, Register::EVENT_ENABLE, bits(0));
    move();
    CHECK(next_event() == doctest::Approx(2.5).epsilon(0.02)); // nothing else is waited for
    CHECK(run(0) == Seen{{whole.back().first, bits(0)}});

    // A queued move, a common start, slow-down, comparators, latch; nothing for a move that is stopped.
    WriteRegister(0, Register::EVENT_ENABLE, bits(0, 1, 8, 9, 11, 12, 14, 16, 18));
    WriteRegister(0, Register::LIMIT_CONFIG, soft_limits_on | 1u << 18);
    WriteRegister(0, Register::START_TRIGGER_ENV, 1u << 3);
    TrevikVirtual_counter_set(0, 0, 1, 0);
    WriteRegister(0, Register::SOFTLIMIT1, 299);
    WriteRegister(0, Register::SOFTLIMIT2, Unsigned(-1));
    WriteRegister(0, Register::COMPARE_START_DATA, 500);
    WriteRegister(0, Register::COMPARATOR_DATA, 700);
    const std::int32_t here = stands(0);
    TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_LATCH, here + 900, here + 950);
    TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_SLOW_DOWN, here + 1100, here + 1150);
    ReadStatus(0, StatusRegister::EVENT_FLAGS);
    TrevikA_continuous_flag_set(0, 0, 1);
    CHECK(TrevikA_T_position_move(0, 0, 1000, 0, 1000, 1000, 0, 0, 1) == TREVIK_OK);
    CHECK(TrevikA_T_position_move(0, 0, 200, 0, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    SendCommand(0xF, Command::CMD_CSTA_PULSE);
    CHECK(run(0) == Seen{{0, bits(1, 18)},
                         {300, bits(8)},
                         {500, bits(11)},
                         {700, bits(12)},
                         {900, bits(14)},
                         {1000, bits(0, 1)},
                         {1100, bits(16)},
                         {1200, bits(0)}});
    TrevikA_continuous_flag_set(0, 0, 0);
    Move(0, -5000);
    TrevikHost_advance(0.01);
    SendCommand(0xF, Command::CMD_CSTP_PULSE);
    CHECK((idle(0) && ReadStatus(0, StatusRegister::EVENT_FLAGS) == 0));
    CHECK(Errors(0) == 1u << 8);
    CHECK(Errors(1) == 0); // it did not move
    Move(0, -5000);
    SendCommand(0xF, Command::CMD_EMERGENCY_STOP);
    CHECK(Errors(0) == 1u << 9);
}

TEST_CASE_FIXTURE(VirtualMachine, "outputs are switched, and read back where they can be")
{
    WriteRegister(1, Register::SIGNAL_CONFIG2, 1u << 6 | 1u << 10); // ports 3 and 5 are outputs
    struct Row {
        std::uint8_t output, on, off;
        int bit; // of sub status that it moves; -1: none
    };
    const Row rows[] = {{TREVIK_VIRTUAL_OUTPUT0, 0x24, 0x25, -1},     {TREVIK_VIRTUAL_OUTPUT1, 0x11, 0x19, 1},
                        {TREVIK_VIRTUAL_OUTPUT2, 0x10, 0x18, 0},      {TREVIK_VIRTUAL_OUTPUT3, 0x17, 0x1F, 7},
                        {TREVIK_VIRTUAL_OUTPUT_PORT3, 0x1B, 0x13, 3}, {TREVIK_VIRTUAL_OUTPUT_PORT5, 0x1D, 0x15, 5}};
    const auto send = [](unsigned code) { SendCommand(1u << 1, static_cast<Command>(code)); };
    const auto reads = [](std::uint8_t output) { return Value(TrevikVirtual_output_read, 0, 1, output); };
    const std::uint32_t quiet = SubStatusOf(1);
    for (const Row &row : rows) {
        CAPTURE(row.output);
        CHECK(reads(row.output) == 0);
        send(row.on);
        CHECK((reads(row.output) == 1 && SubStatusOf(0) == SubStatusOf(3)));
        CHECK((SubStatusOf(1) ^ quiet) == (row.bit < 0 ? 0u : 1u << row.bit));
        CHECK((ReadStatus(1, StatusRegister::EXT_STATUS) >> 9 & 1) == (row.bit < 0));
        send(row.off);
        CHECK((reads(row.output) == 0 && SubStatusOf(1) == quiet));
    }
    // An input reads what stands at it, not what was switched.
    send(0x1C);
    CHECK((reads(TREVIK_VIRTUAL_OUTPUT_PORT4) == 0 && SubStatusOf(1) == quiet));
    CHECK(TrevikVirtual_output_read(0, 1, TREVIK_VIRTUAL_OUTPUT_COUNT, nullptr) == TREVIK_ERR_PARAM);
    WriteRegister(1, Register::COMPARATOR_DATA, 0xFFFFFFFF); // the counter is above it
    WriteRegister(1, Register::START_TRIGGER_ENV, 5u << 3);
    CHECK(reads(TREVIK_VIRTUAL_OUTPUT3) == 1);
    // The drive's deviation is cleared after a stop by a fault, where that is enabled.
    WriteRegister(1, Register::SIGNAL_CONFIG1, 1u << 11);
    Move(1, 1000);
    TrevikVirtual_switch_set(0, 1, TREVIK_VIRTUAL_ALARM, 500, 600);
    TrevikHost_advance(10);
    CHECK(reads(TREVIK_VIRTUAL_OUTPUT0) == 1);
}
