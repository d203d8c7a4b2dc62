// Random programs of a machine: any call with any arguments on virtual cards, steps of the clock and failures of the
// system. After each step the library and the cards must keep what is promised of them.
#include "fuzz/argument.h"

#include "api/card_manager.h"
#include "driver/simulation.h"
#include "platform/host/clock.h"
#include "platform/host/faults.h"
#include "platform/host/handles.h"
#include "virtual/bus.h"

#include <trevik/Trevik.h>
#include <trevik/TrevikAC.h>
#include <trevik/TrevikVirtual.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace trevik::fuzz
{
namespace
{

constexpr unsigned most_parameters = 16;
using Names = Name[most_parameters];

template <class R, class... P>
std::uint32_t CallWith(R (*function)(P...), const Names &names, Bytes &bytes)
{
    [[maybe_unused]] unsigned n = 0;
    std::tuple<Argument<P>...> arguments{Argument<P>(names[n++], bytes)...};
    return std::apply(
        [&](auto &...argument) {
            if constexpr (std::is_void_v<R>)
                return function(argument.get()...), TREVIK_OK;
            else
                return function(argument.get()...);
        },
        arguments);
}

template <auto function>
std::uint32_t Invoke(const Names &names, Bytes &bytes)
{
    return CallWith(function, names, bytes);
}

struct Entry {
    Name name;
    Names parameters;
    std::uint32_t (*invoke)(const Names &, Bytes &);

    bool has_card() const { return parameters[0] == "card"; }
    bool of_library() const { return !Has(name, "Virtual_") && !Has(name, "Host_"); }
    // Neither changes anything nor forgets an error.
    bool only_reads() const { return Has(name, "read") && !Has(name, "error_flag") && !Has(name, "config_file"); }
    // A move that ends exactly on its distance; not a change of one under way, which may come too late.
    bool moves_exactly() const { return Has(name, "position_move") || (Has(name, "LINE") && !Has(name, "change")); }
    bool stops_all() const { return name == "TrevikA_stop_emg" || name == "Trevik_emg_stop"; }
};

constexpr Entry entries[] = {
#define FUNCTION(function, counterpart, ...) {#function, {__VA_ARGS__}, Invoke<function>},
#include "functions.inc"
#undef FUNCTION
};

// What can come back: the library's codes, and Windows error numbers of the card, of the host layer and as injected.
bool Known(std::uint32_t result)
{
    constexpr std::uint32_t known[] = {0,   1,   2,   5,   6,   8,   21,  31,  32,  87,  100,  101,
                                       300, 301, 302, 303, 304, 305, 306, 308, 309, 311, 1167, 1450};
    return std::find(std::begin(known), std::end(known), result) != std::end(known);
}

// Before anything has changed.
bool Refused(std::uint32_t result)
{
    return result == TREVIK_ERR_HANDLE || result == TREVIK_ERR_CARD || result == TREVIK_ERR_AXIS ||
           (result >= TREVIK_ERR_BUSY && result <= TREVIK_ERR_CONTINUOUS_MIX);
}

// Everything that one program leaves behind for the next is taken away.
void StartAnew(const char *cards)
{
    manager.~CardManager();
    new (&manager) CardManager;
    SimulationMode = std::uint8_t{0};
    for (unsigned function = 0; function < static_cast<unsigned>(host::Function::Count); ++function)
        host::FailNext(static_cast<host::Function>(function), 0);
    for (host::DeviceSlot &slot : host::device_slots)
        if (slot.handle != 0)
            host::ReleaseHandle(host::HandleOf(slot.handle)); // events of TrevikA_IRQ_enable
    TrevikHost_clock_manual(1);
    host::MoveManualClock(0);
    TrevikVirtual_cards_set(cards);
    last_out = 0;
    Print("cards %s\n", cards);
}

class Program
{
  public:
    explicit Program(Bytes bytes) : bytes_(bytes)
    {
        StartAnew(card_lists[bytes_.take<std::uint8_t>() % good_card_lists]);
        TrevikA_initial();
    }

    void run()
    {
        constexpr unsigned longest = 400; // steps
        for (unsigned n = 0; n < longest && !bytes_.empty(); ++n) {
            step(bytes_.take<std::uint8_t>());
            for (std::uint8_t card = 0; card < card_count; ++card)
                check_card(card);
        }
    }

  private:
    // What is known of an axis before a call.
    struct Before {
        bool steady = false; // stands where the library knows, or is under way to its target
        bool issued = false;
    };

    static constexpr double longest_s = 20; // of a program: while axes follow handwheels it is stepped through
    static constexpr double longest_step_s = 5;

    void step(std::uint8_t kind)
    {
        constexpr std::uint8_t clock_steps = 64; // of 256
        constexpr std::uint8_t faults = 66;
        constexpr std::uint8_t moves = 80;
        if (kind < clock_steps)
            return advance(kind % 16);
        if (kind < faults)
            return fail_something();
        std::size_t number = (unsigned{kind} << 8 | bytes_.take<std::uint8_t>()) % std::size(entries);
        while (kind < moves && !entries[number].moves_exactly())
            number = (number + 1) % std::size(entries);
        call(entries[number]);
    }

    void advance(unsigned choice)
    {
        constexpr double steps[] = {1e-9, 1e-6, 1e-4, 1e-3, 0.01, 0.02, 0.05, 0.1, 0.5, 1};
        double seconds = choice < std::size(steps) ? steps[choice] : to_next_event();
        seconds = std::min(seconds, longest_s - passed_s_);
        passed_s_ += seconds;
        Print("advance %.10g\n", seconds);
        TrevikHost_advance(seconds);
    }

    // A tenth of a second when nothing is going to happen.
    static double to_next_event()
    {
        double nearest = std::numeric_limits<double>::infinity();
        for (std::uint8_t card = 0; card < card_count; ++card) {
            double seconds = nearest;
            TrevikVirtual_next_event_read(card, &seconds);
            Require(seconds >= 0, "card %d: next event in %g s", card, seconds);
            nearest = std::min(nearest, seconds);
        }
        return std::isinf(nearest) ? 0.1 : std::min(nearest, longest_step_s);
    }

    void fail_something()
    {
        const unsigned function = bytes_.take<std::uint8_t>() % static_cast<unsigned>(host::Function::Count);
        const std::uint32_t calls_before = bytes_.take<std::uint8_t>() % 4;
        Print("fails: function %u after %u calls\n", function, calls_before);
        host::FailNext(static_cast<host::Function>(function), os::ErrorNotEnoughMemory, calls_before);
    }

    void call(const Entry &entry)
    {
        Bytes ahead = bytes_;
        const std::uint8_t card =
            entry.has_card() ? std::min<std::uint8_t>(Take<std::uint8_t>("card", ahead), card_count) : card_count;
        Before before[axis_count];
        for (unsigned axis = 0; axis < axis_count; ++axis)
            before[axis] = look(card, axis);
        const bool simulated = SimulationOn();
        Print("%s", entry.name.data());
        const std::uint32_t result = entry.invoke(entry.parameters, bytes_);
        Print(": %u\n", result);
        Require(Known(result), "%s returns %u", entry.name.data(), result);
        Require(!simulated || !entry.of_library() || result == TREVIK_OK, "%s returns %u in simulation mode",
                entry.name.data(), result);
        note_refusals(entry, card, result);
        if (entry.moves_exactly() && result == TREVIK_OK && reached(card))
            note_moves(card, before);
        else if (!entry.only_reads() && !Refused(result))
            forget_targets(card);
        if (entry.stops_all() && result == TREVIK_OK && reached(card))
            check_standstill(card, before);
    }

    static virtual_card::Bus::Hold hold(std::uint8_t card) { return virtual_card::TheBus().hold(card); }

    static bool idle(std::uint8_t card, unsigned axis)
    {
        const auto held = hold(card);
        return held && MainStatus{held->chip().main_status(axis, held.now_ns())}.idle();
    }

    static std::uint32_t counter(std::uint8_t card, unsigned axis)
    {
        const auto held = hold(card);
        return held->chip().read(axis, ReadCode(Register::COUNTER1), held.now_ns());
    }

    // Null: the library has no such card open.
    static AxisShadow *shadow(std::uint8_t card, unsigned axis)
    {
        Axis checked;
        return manager.checked(card, static_cast<std::uint8_t>(axis), checked) == Result::Ok ? &checked.shadow()
                                                                                             : nullptr;
    }

    Before look(std::uint8_t card, unsigned axis) const
    {
        const AxisShadow *const known = shadow(card, axis);
        if (known == nullptr)
            return {};
        const bool issued =
            known->MoveIssued == 1; // else the library trusts that the axis stands where it believes
        const bool stands = idle(card, axis) && (issued || known->LastTarget == counter(card, axis));
        return {stands || on_target_[card][axis], issued};
    }

    // What the library sends to this card arrives there.
    bool reached(std::uint8_t card) const
    {
        Axis axis;
        std::uint32_t position = 0;
        return card < card_count && !refusing_[card] && !SimulationOn() &&
               manager.checked(card, 0, axis) == Result::Ok &&
               axis.read(Register::COUNTER1, position) == Result::Ok;
    }

    void note_refusals(const Entry &entry, std::uint8_t card, std::uint32_t result)
    {
        if (result != TREVIK_OK)
            return;
        if (entry.name == "TrevikVirtual_refuse")
            refusing_[card] = true;
        if (entry.name == "TrevikVirtual_cards_set")
            std::fill(std::begin(refusing_), std::end(refusing_), false);
    }

    void note_moves(std::uint8_t card, const Before (&before)[axis_count])
    {
        for (unsigned axis = 0; axis < axis_count; ++axis)
            if (!idle(card, axis))
                on_target_[card][axis] = before[axis].steady;
    }

    void forget_targets(std::uint8_t card)
    {
        for (std::uint8_t n = 0; n < card_count; ++n)
            if (card == card_count || card == n)
                std::fill(std::begin(on_target_[n]), std::end(on_target_[n]), false);
    }

    // Nothing moves any more, whatever time passes; unless axes follow a handwheel.
    void check_standstill(std::uint8_t card, const Before (&before)[axis_count])
    {
        std::int32_t stood[axis_count];
        bool follows = false;
        for (std::uint8_t axis = 0; axis < axis_count; ++axis) {
            Require(idle(card, axis), "card %d axis %d is not idle after an emergency stop", card, axis);
            TrevikVirtual_position_read(card, axis, &stood[axis]);
            const AxisShadow *const known = shadow(card, axis);
            Require(!before[axis].issued || known->LastTarget == counter(card, axis),
                    "card %d axis %d stands on %d, its last target is %d", card, axis, counter(card, axis),
                    std::uint32_t{known->LastTarget});
            follows = follows || known->PulserEnabled == 1;
        }
        if (follows)
            return;
        advance(8);
        for (std::uint8_t axis = 0; axis < axis_count; ++axis) {
            std::int32_t stands = 0;
            TrevikVirtual_position_read(card, axis, &stands);
            Require(idle(card, axis) && stands == stood[axis],
                    "card %d axis %d moves after an emergency stop: %d to %d", card, axis, stood[axis], stands);
        }
    }

    void check_card(std::uint8_t card)
    {
        const auto held = hold(card);
        if (!held)
            return;
        if (has_errors(held->chip(), held.now_ns()))
            forget_targets(card); // what stops one axis stops those that go with it
        for (unsigned axis = 0; axis < axis_count; ++axis) {
            check_status(held->chip(), card, axis, held.now_ns());
            if (!refusing_[card])
                check_registers(held->chip(), card, axis);
            check_target(held->chip(), card, axis, held.now_ns());
        }
    }

    static void check_status(virtual_card::Chip &chip, std::uint8_t card, unsigned axis, std::int64_t now_ns)
    {
        const MainStatus main{chip.main_status(axis, now_ns)};
        const unsigned sub = chip.sub_status(axis, now_ns);
        const std::uint32_t extended = chip.read(axis, ReadCode(StatusRegister::EXT_STATUS), now_ns);
        const unsigned operations = extended >> 20 & 3;
        const double speed = chip.speed(axis, now_ns);
        Require(main.idle() == (operations == 0), "card %d axis %d: status %#x, %u operations", card, axis,
                main.word, operations);
        // An axis may stand with a queued operation: the others of its line or circle are still under way.
        Require(main.preset_full() ? operations != 0 : operations != 2,
                "card %d axis %d: status %#x, %u operations", card, axis, main.word, operations);
        Require(std::isfinite(speed) && (!main.idle() || speed == 0), "card %d axis %d: status %#x, speed %g", card,
                axis, main.word, speed);
        using virtual_card::Input;
        constexpr Input shown[] = {Input::Alarm, Input::PlusLimit, Input::MinusLimit,
                                   Input::Home}; // from bit 11 on
        for (unsigned n = 0; n < std::size(shown); ++n)
            Require((sub >> (11 + n) & 1) == unsigned{chip.input(axis, shown[n], now_ns)},
                    "card %d axis %d: sub status %#x", card, axis, sub);
    }

    // No value is wider than its register, nor beyond what the library may ask of it. But the speed that an S-curve
    // move gets to fit its way is not clamped: long S ranges, or a line whose first axis has a short way, raise it. Nor
    // is the S range of a change from such a speed.
    void check_registers(const virtual_card::Chip &chip, std::uint8_t card, unsigned axis)
    {
        using enum Register;
        constexpr std::pair<Register, std::uint32_t> widths[] = {
            {START_SPEED, 65535},   {ACCEL_RATE, 65535},    {DECEL_RATE, 65535}, {MULTIPLIER, 4095},
            {S_ACCEL_RANGE, 32767}, {S_DECEL_RANGE, 32767}, {MAX_SPEED, 65535},  {RAMPDOWN_POINT, 0xFFFFFF}};
        for (const auto &[reg, highest] : widths)
            for (const Register of_set : {reg, PresetOf(reg)}) {
                const std::uint32_t value = chip.setting(axis, of_set);
                const Register mode = of_set == reg ? MODE : PresetOf(MODE);
                const bool s_curve = mode_field::s_curve.get(chip.setting(axis, mode)) != 0;
                const bool is_range = reg == S_ACCEL_RANGE || reg == S_DECEL_RANGE;
                if (reg == MAX_SPEED && value > highest)
                    was_raised_[card][axis] = true;
                Require(value <= highest ||
                            (s_curve && (reg == MAX_SPEED || (is_range && was_raised_[card][axis]))),
                        "card %d axis %d: register %#x holds %u", card, axis, WriteCode(of_set), value);
            }
        Require(chip.setting(axis, Register::CORRECTION_SPEED) <= 65535, "card %d axis %d: correction speed %u",
                card, axis, chip.setting(axis, Register::CORRECTION_SPEED));
    }

    static bool has_errors(const virtual_card::Chip &chip, std::int64_t now_ns)
    {
        virtual_card::Chip other = chip; // reading clears the flags
        std::uint32_t flags = 0;
        for (unsigned axis = 0; axis < axis_count; ++axis)
            flags |= other.read(axis, ReadCode(StatusRegister::ERROR_FLAGS), now_ns);
        return flags != 0;
    }

    // A move that nothing has ended early ends where the library thinks it does.
    void check_target(virtual_card::Chip &chip, std::uint8_t card, unsigned axis, std::int64_t now_ns)
    {
        const AxisShadow *const known = shadow(card, axis);
        if (!on_target_[card][axis] || known == nullptr || known->PulserEnabled == 1 ||
            !MainStatus{chip.main_status(axis, now_ns)}.idle())
            return;
        const std::uint32_t stands = chip.read(axis, ReadCode(Register::COUNTER1), now_ns);
        Require(known->LastTarget == stands, "card %d axis %d ended on %d, its target is %d", card, axis, stands,
                std::uint32_t{known->LastTarget});
    }

    Bytes bytes_;
    double passed_s_ = 0;
    bool refusing_[card_count] = {};               // requests may be refused
    bool was_raised_[card_count][axis_count] = {}; // maximum speed beyond its register
    bool on_target_[card_count][axis_count] = {};  // only exact moves have been made from standstill on
};

} // namespace
} // namespace trevik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    trevik::fuzz::Program({data, size}).run();
    if (truncate(trevik::fuzz::scratch_file.c_str(), 0) != 0)
        std::abort();
    return 0;
}
