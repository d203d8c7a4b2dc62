// The comparators of the chip: software limits (1 and 2), the start trigger (3) and the comparator output (5). When
// they are met is found on the exact pulse, or handwheel count, at which it happens.
#include "virtual/chip.h"

#include "virtual/register_profile.h"

namespace trevik::virtual_card
{
namespace
{

constexpr std::uint32_t soft_limit = 6; // condition of comparators 1 and 2

// An axis looks again at the latest after so many pulses, so that no product overflows.
constexpr std::int64_t farthest_look = std::int64_t{1} << 31;

constexpr Comparator Compare(std::uint32_t counter, std::uint32_t condition, std::uint32_t data)
{
    const bool known = counter <= 3 && condition <= static_cast<std::uint32_t>(Condition::Above);
    return {known ? counter + 1 : 1, known ? static_cast<Condition>(condition) : Condition::Off,
            static_cast<std::int32_t>(data)};
}

constexpr Comparator SoftLimit(std::uint32_t counter, bool on, Condition beyond, std::uint32_t data)
{
    return {counter + 1, on ? beyond : Condition::Off, static_cast<std::int32_t>(data)};
}

constexpr int Sign(std::int64_t x)
{
    return x > 0 ? 1 : x < 0 ? -1 : 0;
}

} // namespace

Comparator Chip::comparator(const Section &section, Compared compared)
{
    const std::uint32_t limits = section.reg(Register::LIMIT_CONFIG);
    const std::uint32_t trigger = section.reg(Register::START_TRIGGER_ENV);
    switch (compared) {
    case Compared::Limit1:
        return SoftLimit(limit_config::counter1.get(limits), limit_config::condition1.get(limits) == soft_limit,
                         Condition::Above, section.reg(Register::SOFTLIMIT1));
    case Compared::Limit2:
        return SoftLimit(limit_config::counter2.get(limits), limit_config::condition2.get(limits) == soft_limit,
                         Condition::Below, section.reg(Register::SOFTLIMIT2));
    case Compared::Start:
        return Compare(limit_config::counter3.get(limits), limit_config::condition3.get(limits),
                       section.reg(Register::COMPARE_START_DATA));
    default:
        return Compare(start_trigger_env::counter5.get(trigger), start_trigger_env::condition5.get(trigger),
                       section.reg(Register::COMPARATOR_DATA));
    }
}

// What stops an axis whose comparator is met.
StopAction Chip::action(const Section &section, Compared compared)
{
    const std::uint32_t limits = section.reg(Register::LIMIT_CONFIG);
    switch (compared) {
    case Compared::Limit1:
        return static_cast<StopAction>(limit_config::action1.get(limits));
    case Compared::Limit2:
        return static_cast<StopAction>(limit_config::action2.get(limits));
    case Compared::Start:
        return StopAction::None;
    default:
        return static_cast<StopAction>(start_trigger_env::action5.get(section.reg(Register::START_TRIGGER_ENV)));
    }
}

template <class Function>
void Chip::each_comparator(const Section &section, Function function)
{
    for (const Compared compared : every_comparator)
        if ((section.compares & Bit(compared)) != 0)
            function(compared, comparator(section, compared));
}

// Notes what of an axis depends on its position, and what on time.
void Chip::note_watched(unsigned axis)
{
    Section &section = sections_[axis];
    const unsigned bit = 1u << axis;
    section.compares = 0;
    bool by_position = section.around.fitted();
    bool by_time = (section.reg(Register::EVENT_ENABLE) & ramp_events) != 0;
    for (const Compared compared : every_comparator) {
        const Comparator read = comparator(section, compared);
        if (read.condition == Condition::Off)
            continue;
        section.compares |= Bit(compared);
        by_time = by_time || read.counter == 4;
        by_position = by_position || read.counter != 4;
    }
    section.met &= section.compares;
    watched_axes_ = by_position ? watched_axes_ | bit : watched_axes_ & ~bit;
    next_look_ns_ = never_ns;
    timed_axes_ = by_time ? timed_axes_ | bit : timed_axes_ & ~bit;
}

// The inputs and comparators of an axis whose leg has come from one place to another, in signed pulses, since they
// may last have changed. Tells what has changed now.
Chip::Changes Chip::observe(Section &section, std::int64_t from_pulses, std::int64_t to_pulses, const Moment &now)
{
    Changes changes;
    const std::uint32_t inputs = inputs_at(section, to_pulses);
    changes.inputs_before = section.seen;
    section.seen = inputs;
    const std::uint32_t rising = inputs & ~changes.inputs_before;
    if ((rising & Bit(Input::Latch)) != 0 &&
        start_trigger_env::latch_off.get(section.reg(Register::START_TRIGGER_ENV)) == 0)
        latch(section, to_pulses, now.reached_ns());
    if ((rising & Bit(Input::SlowDown)) != 0)
        raise_event(section, Event::SlowDownOn);
    if (section.compares == 0)
        return changes;
    const std::int64_t now_ns = now.reached_ns();
    each_comparator(section, [&](Compared compared, const Comparator &comparator) {
        const std::uint32_t base = section.reg(CounterRegister(comparator.counter));
        const std::uint32_t from = base + counted(section, comparator.counter, from_pulses, section.wheel_seen_ns);
        const std::uint32_t to = base + counted(section, comparator.counter, to_pulses, now_ns);
        const bool before = (section.met & Bit(compared)) != 0;
        const bool passed = from != to && comparator.passed(from, to);
        const bool met = comparator.holds(to) && (!comparator.directed() || (from == to ? before : passed));
        section.met = met ? section.met | Bit(compared) : section.met & ~Bit(compared);
        if ((met || passed) && !before)
            changes.met |= Bit(compared);
    });
    section.wheel_seen_ns = now_ns;
    met_now(section, changes.met, now);
    return changes;
}

void Chip::met_now(Section &section, unsigned compared, const Moment &now)
{
    constexpr Event events[comparator_count] = {Event::SoftLimit1, Event::SoftLimit2, Event::Comparator3,
                                                Event::Comparator5};
    for (unsigned i = 0; i < comparator_count; ++i)
        if ((compared >> i & 1) != 0)
            raise_event(section, events[i]);
    if ((compared & Bit(Compared::Start)) == 0)
        return;
    each(all_axes, [&](unsigned axis, Section &waiting) {
        if (waiting.state == State::Waiting && waiting.leader == axis && trigger_source(waiting) == &section)
            waiting.due = now;
    });
}

void Chip::latch(Section &section, std::int64_t travelled, std::int64_t now_ns)
{
    section.latched =
        section.reg(Register::COUNTER2) + counted(section, 2, travelled, 0) - trailing_counts(section, now_ns);
    raise_event(section, Event::Latched);
}

void Chip::latch_all(unsigned axis_set, std::int64_t now_ns)
{
    each(axis_set, [&](unsigned, Section &section) { latch(section, travelled(section, now_ns), now_ns); });
}

// The axis whose comparator starts a waiting operation; null: none does.
const Chip::Section *Chip::trigger_source(const Section &waiting)
{
    const std::uint32_t mode = waiting.reg(Register::MODE);
    if (mode_field::start_trigger.get(mode) != static_cast<std::uint32_t>(StartTrigger::Comparator))
        return nullptr;
    return &sections_[start_trigger_env::compare_start_axis.get(waiting.reg(Register::START_TRIGGER_ENV))];
}

bool Chip::triggered(const Section &waiting)
{
    const Section *source = trigger_source(waiting);
    return source != nullptr && (source->met & Bit(Compared::Start)) != 0;
}

// True when a comparator ends the operation of its axis: a software limit one that takes the counter farther out,
// the comparator output one during which it becomes met. Homing looks for its end where no counter is right yet.
bool Chip::heed_comparators(Section &section, Section &leader, const Changes &changes, const Instant &now)
{
    constexpr Error errors[comparator_count] = {Error::SoftLimit1, Error::SoftLimit2, Error::None,
                                                Error::Comparator5};
    bool stops = false;
    each_comparator(section, [&](Compared compared, const Comparator &comparator) {
        const StopAction stop = action(section, compared);
        if (stops || (stop != StopAction::AtOnce && stop != StopAction::Slowly))
            return;
        if (compared == Compared::Output) {
            stops = (changes.met & Bit(compared)) != 0;
        } else {
            const int out = compared == Compared::Limit1 ? 1 : -1;
            stops = (section.met & Bit(compared)) != 0 && !IsHoming(section.kind) &&
                    counting(section, comparator.counter, way(section, now)) == out;
        }
        if (stops)
            fail(section, leader, errors[static_cast<unsigned>(compared)], stop == StopAction::Slowly, now);
    });
    return stops;
}

// Which way the motion of an axis takes a counter.
int Chip::counting(const Section &section, unsigned counter, int way)
{
    const std::int64_t encoder = section.encoder.between(0, way * farthest_look);
    if (counter == 1)
        return way;
    return counter == 2 ? Sign(encoder) : counter == 3 ? Sign(way * farthest_look - encoder) : 0;
}

// Pulses of an axis, 1 or more and signed `ahead` at most, to the next one at which a comparator may change.
std::int64_t Chip::steps_to_comparator(const Section &section, std::int64_t done, std::int64_t ahead)
{
    const std::int64_t far = Smaller(Size(ahead), farthest_look);
    std::int64_t nearest = far < Size(ahead) ? far : Surroundings::no_edge;
    const int way = Sign(ahead);
    const std::int64_t here = section.base_position + done;
    each_comparator(section, [&](Compared, const Comparator &comparator) {
        const unsigned number = comparator.counter;
        if (number == 4)
            return; // counts the handwheel, not the axis
        const auto change = [&](std::int64_t steps) {
            const std::int64_t out = way * steps;
            const std::int64_t encoder = number == 1 ? 0 : section.encoder.between(here, here + out);
            return number == 2 ? encoder : out - encoder;
        };
        const std::int64_t most = change(far);
        const std::uint32_t count = section.reg(CounterRegister(number)) + counted(section, number, done, 0);
        const std::int64_t wanted = comparator.counts_to_change(count, most > 0);
        if (Size(most) < wanted)
            return;
        const std::int64_t steps =
            number == 1 ? wanted : FirstTrue(0, far, [&](std::int64_t s) { return Size(change(s)) >= wanted; });
        nearest = Smaller(steps, nearest);
    });
    return nearest;
}

// When the handwheel next brings counter 4 to a change of a comparator.
std::int64_t Chip::wheel_edge(const Section &section)
{
    std::int64_t nearest = never_ns;
    each_comparator(section, [&](Compared, const Comparator &comparator) {
        if (comparator.counter != 4)
            return;
        const std::int64_t from_ns = section.wheel_seen_ns;
        const std::int64_t end_ns = section.wheel.end_ns();
        const auto turned = [&](std::int64_t ns) {
            return Size(static_cast<std::int32_t>(section.wheel.counted(ns) - section.wheel.counted(from_ns)));
        };
        const std::uint32_t count = section.reg(Register::COUNTER4) + section.wheel.counted(from_ns);
        const std::int64_t wanted = comparator.counts_to_change(count, section.wheel.counts > 0);
        if (from_ns < end_ns && turned(end_ns) >= wanted)
            nearest =
                Smaller(nearest, FirstTrue(from_ns, end_ns, [&](std::int64_t ns) { return turned(ns) >= wanted; }));
    });
    return nearest;
}

} // namespace trevik::virtual_card
