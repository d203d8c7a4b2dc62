// Counters, limits, comparators, latch, events and outputs of the chip.
#include "support/virtual_machine.h"

#include <map>
#include <tuple>
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
std::int32_t Counter(std::uint8_t axis, std::uint8_t counter)
{
    return Value(TrevikVirtual_counter_read, 0, axis, counter);
}
void ScaleEncoder(unsigned axis, std::int32_t counts)
{
    OnChip([=](auto &chip, auto now_ns) { chip.set_encoder_scale(axis, counts, now_ns); });
}
void Move(std::uint8_t axis, std::int32_t pulses)
{
    CHECK(TrevikA_T_position_move(0, axis, Unsigned(pulses), 0, 500, 20000, 50, 50, 0) == TREVIK_OK);
}
void Set(Register reg, std::uint32_t value)
{
    WriteRegister(0, reg, value);
}

} // namespace

TEST_CASE_FIXTURE(VirtualMachine, "the encoder counts the machine's way, counter 3 what it lacks")
{
    Move(0, 1000);
    run_out();
    CHECK((Counter(0, 2) == 1000 && Counter(0, 3) == 0));
    CHECK(TrevikVirtual_position_set(0, 0, 990) == TREVIK_OK);
    CHECK((Counter(0, 1) == 1000 && Counter(0, 2) == 990 && Counter(0, 3) == 10));
    Set(Register::SIGNAL_CONFIG2, 1u << 22); // backwards
    Move(0, 100);
    run_out();
    CHECK((Counter(0, 2) == 890 && Counter(0, 3) == 210));
}

namespace
{

// Limits of axis 1 on both sides: software limits on this counter, 0: switches.
struct Limits {
    unsigned counter;
    bool slowly;
    int side;
    // The encoder, where that is compared, counts backwards, 2 for each pulse.
    int way = counter == 2 ? -side : side;
    std::int32_t outside = counter == 0 ? 3333 : counter == 1 ? 4001 : 2001; // the first pulse, as a size
    std::uint32_t error = (side > 0 ? 1u : 2u) << (counter == 0 ? 5 : 0);

    void set_up() const
    {
        WriteRegister(1, Register::SIGNAL_CONFIG1, slowly ? 1u << 3 : 0);
        if (counter == 0) {
            TrevikVirtual_switch_set(0, 1, TREVIK_VIRTUAL_PLUS_LIMIT, outside, INT32_MAX);
            TrevikVirtual_switch_set(0, 1, TREVIK_VIRTUAL_MINUS_LIMIT, INT32_MIN, -outside);
            return;
        }
        ScaleEncoder(1, counter == 2 ? -2 : 1);
        const std::uint32_t this_one = (counter - 1) | (slowly ? 2u : 1u) << 5;
        const std::uint32_t other = 3; // the handwheel, and does nothing
        WriteRegister(1, Register::LIMIT_CONFIG,
                      soft_limits_on | (side > 0 ? this_one | other << 8 : other | this_one << 8));
        WriteRegister(1, Register::SOFTLIMIT1, 4000);
        WriteRegister(1, Register::SOFTLIMIT2, Unsigned(-4000));
    }
    // A line of axis 1 and a longer axis 0.
    void line(std::int32_t pulses, std::uint32_t up_ms = 50) const
    {
        CHECK(TrevikA_T_LINE2_move(0, 0, std::abs(pulses) * 8 / 5, way * pulses, relative, 500, 20000, up_ms, 50,
                                   0) == TREVIK_OK);
    }
    void check(std::int32_t size, std::uint32_t errors) const
    {
        VirtualMachine::run_out();
        CHECK((VirtualMachine::stands(1) == way * size && VirtualMachine::idle(0) && VirtualMachine::idle(1)));
        CHECK((Errors(1) == errors && Errors(0) == 0));
        const bool beyond = counter != 0 && size >= outside;
        CHECK((MainStatusOf(1) & 0x300) == (beyond ? error << 8 : 0));
    }
};

} // namespace

TEST_CASE("limits stop what goes farther out, on the first pulse beyond, and nothing else")
{
    for (const int side : {1, -1})
        for (const unsigned counter : {0u, 1u, 2u})
            for (const bool slowly : {false, true}) {
                INFO("side " << side << ", counter " << counter << (slowly ? ", slowly" : ", at once"));
                const VirtualMachine machine;
                const Limits limits{counter, slowly, side};
                limits.set_up();
                limits.line(limits.outside - 1);
                limits.check(limits.outside - 1, 0);
                limits.line(1 - limits.outside);
                limits.check(0, 0);
                const std::int32_t begin = machine.stands(0);
                TrevikA_continuous_flag_set(0, 0, 1);
                TrevikA_continuous_flag_set(0, 1, 1);
                limits.line(limits.outside + 2999);
                limits.line(-5000); // queued, and dropped with the first one
                machine.run_out();
                const std::int32_t size = std::abs(machine.stands(1));
                const std::int32_t beyond = size - limits.outside;
                CHECK((slowly ? beyond > 50 && beyond < 1000 : beyond == 0));
                CHECK(std::abs(machine.stands(0) - begin - size * 8 / 5.0) <= 1);
                limits.check(size, limits.error);
                limits.line(10, 0); // farther out: not a pulse, at full speed neither
                limits.check(size, limits.error);
                limits.line(5 - size); // back
                limits.check(5, 0);
            }
}

TEST_CASE("an axis of a circle stays inside its limits")
{
    // Round a center to the right: the second axis goes out, or from beyond its limit back in, and then out again.
    const std::tuple<std::int32_t, std::uint8_t, std::int32_t> rows[] = {
        {3000, 0, 3001}, {3000, 1, 3001}, {-15000, 1, -10000}, {-15000, 0, 0}};
    for (const auto &[limit, direction, end] : rows) {
        const VirtualMachine machine;
        WriteRegister(1, Register::LIMIT_CONFIG, soft_limits_on | 1u << 5 | 1u << 13);
        WriteRegister(1, Register::SOFTLIMIT1, Unsigned(limit));
        WriteRegister(1, Register::SOFTLIMIT2, Unsigned(-15000));
        CHECK(TrevikA_T_ARC_center_move(0, 0, 10000, 0, 0, 0, relative, 500, 5000, 0, direction, 0) == TREVIK_OK);
        machine.run_out();
        CHECK(machine.stands(1) == end);
        CHECK(Errors(1) == 1);
    }
}

TEST_CASE("comparator output: what its conditions say, on the exact pulse, both ways")
{
    // From 0 to 100 and back, compared with 60. Positions at which the flag goes on and off, in order.
    using Changes = std::vector<std::int32_t>;
    const std::map<unsigned, Changes> rows = {{0, {}},       {1, {60, 61, 60, 59}}, {2, {60, 61}},
                                              {3, {60, 59}}, {4, {60, 59}},         {5, {61, 60}}};
    for (const auto &row : rows) {
        const auto &[condition, expected] = row;
        for (const std::uint32_t counter : {0u, 1u, 2u}) {
            CAPTURE(counter);
            const VirtualMachine machine;
            ScaleEncoder(0, counter == 2 ? 0 : 1); // counter 3 then counts what is put out
            Set(Register::START_TRIGGER_ENV, counter | condition << 3);
            Set(Register::COMPARATOR_DATA, 60);
            bool on = condition == 4;
            Changes changes;
            for (const std::int32_t way : {100, -100}) {
                Move(0, way);
                while (!machine.idle(0)) {
                    TrevikHost_advance(machine.next_event());
                    const bool met = Value(TrevikVirtual_output_read, 0, 0, TREVIK_VIRTUAL_OUTPUT3) != 0;
                    if (std::exchange(on, met) != met)
                        changes.push_back(machine.stands(0));
                }
                CHECK((MainStatusOf(0) >> 12 & 1) == on);
                CHECK((SubStatusOf(0) >> 7 & 1) != on);
            }
            CHECK_MESSAGE(changes == expected, "condition " << row.first);
        }
    }
}

TEST_CASE("comparator output stops its axis when it becomes met, not before a start")
{
    for (const std::uint32_t action : {1u, 2u}) {
        CAPTURE(action);
        const VirtualMachine machine;
        Set(Register::START_TRIGGER_ENV, 1u << 3 | action << 6); // counter 1, equal
        Set(Register::COMPARATOR_DATA, 5000);
        Move(0, 10000);
        machine.run_out();
        const std::int32_t end = machine.stands(0);
        CHECK((action == 1 ? end == 5000 : end > 5100 && end < 6000));
        CHECK(Errors(0) == 1u << 4);
        Move(0, 7);
        machine.run_out();
        CHECK((Errors(0) == 0 && machine.stands(0) == end + 7));
    }
}

TEST_CASE("a compare start watches any counter, and starts on the exact pulse")
{
    struct Row {
        std::uint8_t counter, condition; // against 2500
        std::int32_t distance;           // of axis 0, the shorter one of a line, at 1000 pulses/s
        double start_s;
        std::uint8_t watched = 0; // axis
    };
    const double never = 100;
    for (const Row &row : {Row{1, 2, 5000, 2.5}, Row{1, 3, 5000, never}, Row{1, 3, -5000, never},
                           Row{1, 5, 5000, 2.501}, Row{1, 4, 5000, 0}, Row{1, 1, 2000, never}, Row{3, 2, 5000, 2.5},
                           Row{1, 2, 5000, 1.25, 2}, Row{4, 2, 0, 2.5}}) {
        INFO("counter " << +row.counter << ", condition " << +row.condition << ", distance " << row.distance);
        const VirtualMachine machine;
        ScaleEncoder(0, row.counter == 3 ? 0 : 1);
        const auto watched_counter = static_cast<std::uint8_t>(row.counter - 1);
        CHECK(TrevikA_compare_start_set(0, row.watched, watched_counter, row.condition) == TREVIK_OK);
        CHECK(TrevikA_compare_start_data_set(0, 2500) == TREVIK_OK);
        CHECK(TrevikA_T_position_move(0, 3, 5000, 0, 1000, 1000, 0, 0, 2) == TREVIK_OK);
        if (row.counter == 4)
            TrevikVirtual_handwheel_turn(0, 0, 5000, 5);
        else
            CHECK(TrevikA_T_LINE3_move(0, 0, row.distance, 2 * row.distance, 2 * row.distance, relative, 3000, 3000,
                                       0, 0, 0) == TREVIK_OK);
        TrevikHost_advance(row.start_s);
        CHECK((!machine.idle(3) && machine.at(3) == 0));
        TrevikHost_advance(0.5);
        CHECK(machine.at(3) == (row.start_s < never ? 500 : 0));
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "latched is the pulse on which the input came, or all axes at one moment")
{
    const auto latched = [](unsigned axis) {
        return static_cast<std::int32_t>(ReadStatus(axis, StatusRegister::LATCH_DATA));
    };
    TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_LATCH, 1234, 2000);
    ScaleEncoder(0, 3);
    for (const auto &[way, expected] : {std::pair{5000, 1234}, {-3766, 2000}, {-1234, 2000}, {1234, 1234}}) {
        Move(0, way); // two of them end on the switch
        run_out();
        CHECK(latched(0) == 3 * expected);
    }
    Set(Register::START_TRIGGER_ENV, 1u << 15); // off
    CHECK(TrevikVirtual_position_set(0, 0, 1500) == TREVIK_OK);
    CHECK(latched(0) == 3 * 1234);

    CHECK(TrevikA_T_LINE2_move(0, 3, 10000, 5000, relative, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    TrevikHost_advance(1.5);
    SendCommand(0xF, Command::CMD_LATCH_COUNTERS);
    const std::int32_t here[] = {at(1), at(2)};
    TrevikHost_advance(1);
    CHECK((here[0] > 1000 && latched(1) == here[0] && latched(2) == here[1] && latched(3) == 0));
}

TEST_CASE_FIXTURE(VirtualMachine, "events come when they happen, only those that are enabled")
{
    // Runs out: the time in ms, rounded to `step`, at which axis 0 raises bits, and these bits.
    using Seen = std::map<int, std::uint32_t>;
    const auto run = [](int step) {
        Seen seen;
        double total = 0;
        for (double seconds = 0; std::isfinite(seconds); seconds = next_event()) {
            TrevikHost_advance(seconds);
            total += seconds;
            if (const std::uint32_t flags = ReadStatus(0, StatusRegister::EVENT_FLAGS); flags != 0)
                seen[step * static_cast<int>(std::lround(total * 1e3 / step))] |= flags;
        }
        return seen;
    };
    const auto bits = [](auto... bit) { return (... | (1u << bit)); };
    // 500 to 20500 pulses/s in 1 s: 10500 pulses a ramp; 10250 pulses at 20500 take 500 ms. The ramps are
    // made of whole register values.
    const Seen all = {{0, bits(4)}, {1000, bits(5)}, {1500, bits(6)}, {2500, bits(0, 7)}};
    for (const Seen &expected : {all, Seen{{2500, bits(0)}}}) {
        Set(Register::EVENT_ENABLE, expected == all ? 0x55BF3 : bits(0));
        CHECK(TrevikA_T_position_move(0, 0, 31250, 0, 500, 20500, 1000, 1000, 0) == TREVIK_OK);
        CHECK(run(100) == expected);
    }

    // A queued move, a common start, slow-down, comparators, latch; nothing for a move that is stopped.
    Set(Register::EVENT_ENABLE, bits(0, 1, 8, 9, 11, 12, 14, 16, 18));
    Set(Register::LIMIT_CONFIG, soft_limits_on | 1u << 18);
    Set(Register::START_TRIGGER_ENV, 1u << 3);
    TrevikVirtual_counter_set(0, 0, 1, 0);
    Set(Register::SOFTLIMIT1, 299);
    Set(Register::SOFTLIMIT2, Unsigned(-1));
    Set(Register::COMPARE_START_DATA, 500);
    Set(Register::COMPARATOR_DATA, 700);
    const std::int32_t here = stands(0);
    TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_LATCH, here + 900, here + 950);
    TrevikVirtual_switch_set(0, 0, TREVIK_VIRTUAL_SLOW_DOWN, here + 1100, here + 1150);
    ReadStatus(0, StatusRegister::EVENT_FLAGS);
    TrevikA_continuous_flag_set(0, 0, 1);
    CHECK(TrevikA_T_position_move(0, 0, 1000, 0, 1000, 1000, 0, 0, 1) == TREVIK_OK);
    CHECK(TrevikA_T_position_move(0, 0, 200, 0, 1000, 1000, 0, 0, 0) == TREVIK_OK);
    SendCommand(0xF, Command::CMD_CSTA_PULSE);
    CHECK(run(1) == Seen{{0, bits(1, 18)},
                         {300, bits(8)},
                         {500, bits(11)},
                         {700, bits(12)},
                         {900, bits(14)},
                         {1000, bits(0, 1)},
                         {1100, bits(16)},
                         {1200, bits(0)}});
    TrevikA_continuous_flag_set(0, 0, 0);
    for (const auto &[stop, error] : {std::pair{Command::CMD_CSTP_PULSE, 8}, {Command::CMD_EMERGENCY_STOP, 9}}) {
        Move(0, -5000);
        SendCommand(0xF, stop);
        CHECK((idle(0) && ReadStatus(0, StatusRegister::EVENT_FLAGS) == 0));
        CHECK((Errors(0) == 1u << error && Errors(1) == 0)); // the other one did not move
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "outputs are switched, and read back where they can be")
{
    WriteRegister(1, Register::SIGNAL_CONFIG2, 1u << 6 | 1u << 10); // ports 3 and 5 are outputs
    struct Row {
        std::uint8_t output;
        unsigned on, off;
        std::uint32_t sub_status; // bit that it moves
    };
    const Row rows[] = {{TREVIK_VIRTUAL_OUTPUT0, 0x24, 0x25, 0},
                        {TREVIK_VIRTUAL_OUTPUT1, 0x11, 0x19, 1u << 1},
                        {TREVIK_VIRTUAL_OUTPUT2, 0x10, 0x18, 1u << 0},
                        {TREVIK_VIRTUAL_OUTPUT3, 0x17, 0x1F, 1u << 7},
                        {TREVIK_VIRTUAL_OUTPUT_PORT3, 0x1B, 0x13, 1u << 3},
                        {TREVIK_VIRTUAL_OUTPUT_PORT5, 0x1D, 0x15, 1u << 5}};
    const auto send = [](unsigned code) { SendCommand(1u << 1, static_cast<Command>(code)); };
    const auto reads = [](std::uint8_t output) { return Value(TrevikVirtual_output_read, 0, 1, output); };
    const std::uint32_t quiet = SubStatusOf(1);
    for (const Row &row : rows) {
        CAPTURE(row.output);
        send(row.on);
        CHECK((reads(row.output) == 1 && SubStatusOf(0) == SubStatusOf(3)));
        CHECK((SubStatusOf(1) ^ quiet) == row.sub_status);
        CHECK((ReadStatus(1, StatusRegister::EXT_STATUS) >> 9 & 1) == (row.sub_status == 0));
        send(row.off);
        CHECK((reads(row.output) == 0 && SubStatusOf(1) == quiet));
    }
    // An input reads what stands at it, not what was switched.
    send(0x1C);
    CHECK((reads(TREVIK_VIRTUAL_OUTPUT_PORT4) == 0 && SubStatusOf(1) == quiet));
    // The drive's deviation is cleared after a stop by a fault, where that is enabled.
    WriteRegister(1, Register::SIGNAL_CONFIG1, 1u << 11);
    Move(1, 1000);
    TrevikVirtual_switch_set(0, 1, TREVIK_VIRTUAL_ALARM, 500, 600);
    run_out();
    CHECK(reads(TREVIK_VIRTUAL_OUTPUT0) == 1);
}
