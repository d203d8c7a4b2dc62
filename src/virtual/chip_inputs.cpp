// The inputs of the chip: what is active where, when the next switch is reached, and what limits, alarm and
// slow-down do to a running operation.
#include "virtual/chip.h"

#include "virtual/register_profile.h"

namespace trevik::virtual_card
{
namespace
{

// Fields of SIGNAL_CONFIG1.
constexpr auto slow_down_stops = signal_config1::sd_option_c;
constexpr auto slow_down_latched = signal_config1::sd_option_b;
constexpr auto alarm_slowly = signal_config1::alm_option_b;
constexpr auto clears_drive = signal_config1::erc_enable;

} // namespace

// Inputs of an axis when its leg has travelled this far; index pulses of the encoder are not among them.
std::uint32_t Chip::inputs_at(const Section &section, std::int64_t travelled)
{
    if (!section.around.fitted())
        return section.inputs;
    return section.inputs | section.around.active(section.base_position + travelled);
}

std::uint32_t Chip::inputs_now(const Section &section, std::int64_t now_ns)
{
    if (!section.around.fitted())
        return section.inputs;
    const std::int64_t done = travelled(section, now_ns);
    const bool index = section.around.index_at(section.base_position + done);
    return inputs_at(section, done) | (index ? Bit(Input::Index) : 0);
}

bool Chip::input(unsigned axis, Input input, std::int64_t now_ns)
{
    advance(now_ns);
    return (inputs_now(sections_[axis], now_ns) & Bit(input)) != 0;
}

void Chip::set_input(unsigned axis, Input input, bool active, std::int64_t now_ns)
{
    advance(now_ns);
    std::uint32_t &inputs = sections_[axis].inputs;
    inputs = active ? inputs | Bit(input) : inputs & ~Bit(input);
    reconsider(axis, now_ns);
}

// Something other than the axis's own motion, or time, has changed what it sees.
void Chip::reconsider(unsigned axis, std::int64_t now_ns)
{
    sections_[axis].wheel_seen_ns = now_ns;
    look_again(axis, now_ns);
    update_next_event(now_ns);
}

void Chip::look_again(unsigned axis, std::int64_t now_ns)
{
    Section &section = sections_[axis];
    const Moment now{now_ns, 0};
    if (section.state == State::Running) {
        Section &leader = leader_of(section);
        look(leader, here(leader, now_ns));
        start_queued(now);
    } else {
        observe(section, 0, 0, now);
    }
}

// Where an operation is; a pulse of it that comes just now may not have been looked at.
Chip::Instant Chip::here(Section &leader, std::int64_t now_ns)
{
    const std::int64_t pulses = leader_pulses(leader, now_ns);
    const bool arrived = pulses > leader.passed;
    return {{now_ns, 0}, arrived ? pulses : leader.passed, arrived};
}

// The leader's pulses that bring an axis to the next edge: of one stretch on which it goes one way after another.
std::int64_t Chip::next_edge(const Section &section, std::int64_t pulses, bool index)
{
    const std::int64_t longest = leader_of(section).longest;
    const bool arc = IsArc(section.kind);
    while (pulses < longest) {
        const std::int64_t turn = arc ? pulses_at_turn(section, pulses) : longest;
        const std::int64_t done = share(section, pulses);
        const std::int64_t ahead = arc ? share(section, turn) - done : section.distance - done;
        std::int64_t steps = section.around.steps_to_edge(section.base_position + done, ahead > 0, index);
        if (section.compares != 0)
            steps = Smaller(steps, steps_to_comparator(section, done, ahead));
        if (steps <= Size(ahead))
            return arc ? FirstTrue(pulses, turn,
                                   [&](std::int64_t p) { return Size(share(section, p) - done) >= steps; })
                       : pulses_at_step(section, Size(done) + steps);
        if (turn < longest && beyond_limit(section))
            return turn + 1; // from where it may go farther out again
        pulses = turn;
    }
    return Surroundings::no_edge;
}

bool Chip::beyond_limit(const Section &section)
{
    constexpr std::uint32_t end_limits = Bit(Input::PlusLimit) | Bit(Input::MinusLimit);
    return (section.seen & end_limits) != 0 || (section.met & soft_limits) != 0;
}

// When the operation next brings one of its axes to an edge of a switch, a change of a comparator, or an index pulse
// that is counted.
void Chip::find_edge(Section &leader, std::int64_t now_ns)
{
    leader.edge = {};
    if (leader.longest == 0 || (leader.group & watched_axes_) == 0)
        return;
    const bool index =
        IsHoming(leader.kind) && leader.homing.phase->until == Until::Index && !leader.homing.phase_over;
    std::int64_t nearest = Surroundings::no_edge;
    each(leader.group & watched_axes_, [&](unsigned, const Section &section) {
        nearest = Smaller(nearest, next_edge(section, leader.passed, index));
    });
    if (nearest == Surroundings::no_edge)
        return;
    leader.edge_pulses = nearest;
    const Moment reached = leader.start_time.later(leader.profile.time_at(static_cast<double>(nearest)));
    leader.edge = reached.ns < now_ns ? Moment{now_ns, 0} : reached;
}

// The axes of an operation read their inputs and counters, all of them before one of them acts on what it reads.
void Chip::look(Section &leader, const Instant &now)
{
    std::array<Changes, chip_axes> changes;
    observe_group(leader, now, changes);
    each(leader.group, [&](unsigned axis, Section &section) {
        if (section.state == State::Running)
            act(section, leader, changes[axis], now);
    });
}

void Chip::observe_group(Section &leader, const Instant &now, std::array<Changes, chip_axes> &changes)
{
    const std::int64_t before = now.arrived ? now.pulses - 1 : now.pulses;
    leader.passed = now.pulses;
    each(leader.group, [&](unsigned axis, Section &section) {
        changes[axis] = observe(section, share(section, before), share(section, now.pulses), now.when);
    });
}

void Chip::act(Section &section, Section &leader, const Changes &changes, const Instant &now)
{
    if (protect(section, leader, now) || heed_comparators(section, leader, changes, now))
        return;
    heed_slow_down(section, leader, (section.seen & ~changes.inputs_before & Bit(Input::SlowDown)) != 0, now);
    if (section.state == State::Running && IsHoming(section.kind))
        look_for_home(section, changes.inputs_before, now);
}

// Alarm, and the end limit ahead, end the operation. True when they do.
bool Chip::protect(Section &section, Section &leader, const Instant &now)
{
    const std::uint32_t config = section.reg(Register::SIGNAL_CONFIG1);
    if ((section.seen & Bit(Input::Alarm)) != 0) {
        fail(section, leader, Error::Alarm, alarm_slowly.get(config) != 0, now);
        return true;
    }
    const int going = way(section, now);
    const bool plus = going > 0;
    const Input ahead = plus ? Input::PlusLimit : Input::MinusLimit;
    if (going == 0 || (section.seen & Bit(ahead)) == 0 || expects_limit(section))
        return false;
    fail(section, leader, plus ? Error::PlusLimit : Error::MinusLimit, signal_config1::el_mode.get(config) != 0,
         now);
    return true;
}

// Ends an operation by a fault of one of its axes: on this pulse, or slowly if it has moved at all.
void Chip::fail(Section &section, Section &leader, Error error, bool slowly, const Instant &now)
{
    if ((section.failed & Bit(error)) == 0)
        raise_error(section, error);
    section.failed |= Bit(error);
    const bool drive_fault = error == Error::Alarm || error == Error::PlusLimit || error == Error::MinusLimit;
    if (drive_fault && !slowly && clears_drive.get(section.reg(Register::SIGNAL_CONFIG1)) != 0)
        section.drive_cleared = true;
    drop_queue(leader.group);
    if (!slowly || now.pulses == 0) {
        settle_group(leader, now);
    } else if (!leader.stopping) {
        leader.turns_back = false;
        leader.stopping = true;
        slow_to_start_speed(leader, section, now.when);
    }
}

// True when the slow-down input of an axis is active and its mode word heeds it.
bool Chip::asks_slow_down(const Section &section)
{
    return (section.seen & Bit(Input::SlowDown)) != 0 && slow_down_enable.get(section.reg(Register::MODE)) != 0;
}

bool Chip::slow_down_asked(const Section &leader)
{
    bool asked = false;
    each(leader.group, [&](unsigned, const Section &section) { asked = asked || asks_slow_down(section); });
    return asked;
}

// Down to the start speed while the input is active, or to a stop, as the pin is configured: then an operation does
// not start on it, either.
void Chip::heed_slow_down(Section &section, Section &leader, bool rising, const Instant &now)
{
    const std::uint32_t config = section.reg(Register::SIGNAL_CONFIG1);
    if (asks_slow_down(section) && (rising || now.pulses == 0) && slow_down_stops.get(config) != 0) {
        fail(section, leader, Error::SlowDown, true, now);
        return;
    }
    const bool slowed = slow_down_asked(leader) || (leader.slowed && slow_down_latched.get(config) != 0);
    if (slowed == leader.slowed)
        return;
    leader.slowed = slowed;
    const bool slowing = leader.stopping || leader.turns_back || leader.correcting ||
                         (IsHoming(leader.kind) && leader.homing.phase_over);
    if (!slowing)
        replan(leader, now.when);
}

} // namespace trevik::virtual_card
