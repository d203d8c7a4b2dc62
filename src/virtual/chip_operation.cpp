// Operations of the chip: how they start, follow one another and end.
#include "virtual/chip.h"

#include "virtual/register_profile.h"

namespace trevik::virtual_card
{
namespace
{

// Backlash correction, in MOTION_CONFIG.
constexpr auto backlash_pulses = motion_config::backlash_amount;
constexpr auto backlash_mode = motion_config::backlash_mode;

std::int8_t WayOf(std::int64_t distance)
{
    return static_cast<std::int8_t>(distance > 0 ? 1 : distance < 0 ? -1 : 0);
}

constexpr bool Pair(unsigned axes)
{
    const unsigned but_one = axes & (axes - 1);
    return but_one != 0 && (but_one & (but_one - 1)) == 0;
}

constexpr bool StartsAlone(Kind kind)
{
    return kind != Kind::Unknown && !IsArc(kind);
}

// Pulses at a speed that stays the same.
ProfileInput EvenRun(double pulses, double pps)
{
    ProfileInput input;
    input.distance = pulses;
    input.start_pps = input.max_pps = pps;
    return input;
}

} // namespace

Chip::Groups Chip::groups_of(unsigned axis_set, Register mode)
{
    Groups groups;
    unsigned helix = 0;
    each(axis_set, [&](unsigned axis, const Section &section) {
        const Kind kind = KindOf(section.reg(mode));
        groups.lines |= kind == Kind::Line ? 1u << axis : 0u;
        groups.arcs |= kind == Kind::Arc ? 1u << axis : 0u;
        helix |= kind == Kind::HelixArc ? 1u << axis : 0u;
    });
    if (Pair(helix))
        groups.lines |= helix;
    if (!Pair(groups.arcs))
        groups.arcs = 0;
    return groups;
}

// A start command takes the set of an axis whose mode word was written last.
void Chip::start(unsigned axis_set, StartKind kind, const Moment &now)
{
    unsigned preset = 0;
    unsigned idle = 0;
    each(axis_set, [&](unsigned axis, const Section &section) {
        if (section.preset_chosen)
            preset |= 1u << axis;
        else if (!section.busy())
            idle |= 1u << axis;
    });
    if (preset != 0) {
        queue(preset, kind);
        start_queued(now);
    }

    const unsigned direct = axis_set & 0xFu & ~preset;
    if (direct == 0)
        return;
    const Groups groups = groups_of(direct, Register::MODE);
    const unsigned tied = groups.lines | groups.arcs;
    for (const unsigned group : {groups.lines, groups.arcs})
        if (group != 0 && (group & ~idle) == 0)
            prepare(group, kind, now);
    each(direct & idle & ~tied, [&](unsigned axis, const Section &section) {
        if (StartsAlone(KindOf(section.reg(Register::MODE))))
            prepare(1u << axis, kind, now);
    });
    // A start of an axis that runs continuously changes its speed: all registers count as they are.
    each(direct & ~idle & ~tied, [&](unsigned, Section &section) {
        if (section.kind == Kind::Continuous && section.state == State::Running)
            retarget(section, now);
    });
}

void Chip::queue(unsigned axis_set, StartKind kind)
{
    const Groups groups = groups_of(axis_set, Register::PRESET_MODE);
    each(axis_set, [&](unsigned axis, Section &section) {
        const unsigned group = groups.of(1u << axis);
        section.preset_chosen = false;
        section.queued = group != 1u << axis || StartsAlone(KindOf(section.reg(Register::PRESET_MODE)));
        section.queued_group = static_cast<std::uint8_t>(group);
        section.queued_start = kind;
    });
}

// True when every axis of the queued operation is free and has it queued.
bool Chip::queue_ready(unsigned axis)
{
    const Section &first = sections_[axis];
    if (!first.queued)
        return false;
    bool ready = true;
    each(first.queued_group, [&](unsigned, const Section &section) {
        ready =
            ready && section.queued && section.queued_group == first.queued_group && section.state == State::Idle;
    });
    return ready;
}

void Chip::start_queued(const Moment &now)
{
    constexpr unsigned copied = WriteCode(Register::PRESET_S_DECEL_RANGE) - 0x80u + 1;
    for (unsigned axis = 0; axis < chip_axes; ++axis) {
        if (!queue_ready(axis))
            continue;
        const unsigned group = sections_[axis].queued_group;
        const StartKind kind = sections_[axis].queued_start;
        each(group, [&](unsigned, Section &section) {
            for (unsigned i = 0; i < copied; ++i)
                section.registers[i + 0x10] = section.registers[i];
            section.reg(Register::ARC_STEPS) = section.reg(Register::PRESET_ARC_STEPS);
            section.queued = false;
            raise_event(section, Event::NextBegan);
        });
        prepare(group, kind, now);
    }
}

// The longest axis carries the profile, of a circle alone its first axis. A helix takes the registers of its first
// line: the axis that counts the steps has no ramps of its own.
unsigned Chip::choose_leader(unsigned group)
{
    unsigned longest = chip_axes;
    unsigned line = chip_axes;
    unsigned arc = chip_axes;
    each(group, [&](unsigned axis, const Section &section) {
        if (IsArc(section.kind)) {
            arc = arc == chip_axes ? axis : arc;
            return;
        }
        line = line == chip_axes ? axis : line;
        if (longest == chip_axes || Size(section.distance) > Size(sections_[longest].distance))
            longest = axis;
    });
    const unsigned leader = longest == chip_axes ? arc : longest;
    each(group, [&](unsigned, Section &section) { section.leader = static_cast<std::uint8_t>(leader); });
    sections_[leader].source = static_cast<std::uint8_t>(arc != chip_axes && line != chip_axes ? line : leader);
    if (arc != chip_axes)
        plan_arc(group);
    return leader;
}

// The direct registers of a group become its operation: at once, or when its trigger comes.
void Chip::prepare(unsigned group, StartKind kind, const Moment &now)
{
    each(group, [&](unsigned, Section &section) {
        const std::uint32_t mode = section.reg(Register::MODE);
        section.group = static_cast<std::uint8_t>(group);
        section.kind = KindOf(mode);
        section.start = kind;
        section.origin = 0;
        section.distance = section.target = OperationDistance(mode, section.reg(Register::DISTANCE));
        section.rest = 0;
        section.interrupted = false;
        section.state = State::Waiting;
    });
    busy_axes_ |= group;
    const unsigned leader = choose_leader(group);
    sections_[leader].due = sections_[leader].edge = {};
    if (mode_field::start_trigger.get(sections_[leader].reg(Register::MODE)) == 0)
        begin(sections_[leader], now);
}

void Chip::begin(Section &leader, const Moment &now)
{
    leader.stopping = false;
    leader.creeping = false;
    each(leader.group, [](unsigned, Section &section) { section.failed = 0; });
    if (IsHoming(leader.kind))
        begin_homing(leader, now);
    else
        launch(leader, now);
}

// The simultaneous-start signal reaches every axis that waits for it.
void Chip::trigger_waiting(const Moment &now)
{
    constexpr auto simultaneous = static_cast<std::uint32_t>(StartTrigger::SimultaneousStart);
    each(all_axes, [&](unsigned axis, Section &section) {
        if (section.state == State::Waiting && section.leader == axis &&
            mode_field::start_trigger.get(section.reg(Register::MODE)) == simultaneous) {
            each(section.group, [&](unsigned, Section &started) { raise_event(started, Event::StartedTogether); });
            begin(section, now);
        }
    });
}

// The running leg as its leader's registers describe it now.
ProfileInput Chip::leg_input(const Section &leader)
{
    ProfileInput input = ProfileOf(sections_[leader.source], ProfileDistance(leader.longest));
    if (leader.kind == Kind::Arc) {
        // The step count says where to slow down; what it was rounded by does not count. The ramp-down point is that of
        // an earlier move.
        constexpr std::int64_t rounding = 8;
        const std::int64_t counted = std::int64_t{leader.reg(Register::ARC_STEPS)} - leader.arc_done;
        input.manual_rampdown = false;
        if (Size(counted - leader.longest) > rounding)
            input.counted = static_cast<double>(counted);
    }
    if (leader.slowed || leader.creeping)
        input.max_pps = Smaller(input.max_pps, input.start_pps);
    if (IsHoming(leader.kind))
        input.manual_rampdown = false; // the point is that of an earlier move
    return input;
}

// Pulses that take up the backlash before a leg that turns the axis round.
std::uint32_t Chip::slack(const Section &leader)
{
    constexpr auto corrected = static_cast<std::uint32_t>(OperationCode::PositioningBacklash);
    const std::uint32_t config = leader.reg(Register::MOTION_CONFIG);
    const bool asked = mode_field::operation.get(leader.reg(Register::MODE)) == corrected &&
                       leader.kind == Kind::Positioning && backlash_mode.get(config) != 0;
    return asked && leader.last_way * WayOf(leader.distance) < 0 ? backlash_pulses.get(config) : 0;
}

// Pulses of a leader's own in the leg that starts.
std::int64_t Chip::own_pulses(const Section &leader)
{
    return IsArc(leader.kind) ? leader.arc.steps() - leader.arc_done : Size(leader.distance);
}

// A leg starts: the distances of the group are its own.
void Chip::launch(Section &leader, const Moment &now)
{
    const std::uint32_t correction = slack(leader);
    std::uint32_t active = 0;
    each(leader.group, [&](unsigned, Section &section) {
        section.state = State::Running;
        section.rest = 0;
        section.interrupted = false;
        section.last_way = section.distance != 0 ? WayOf(section.distance) : section.last_way;
        section.seen = inputs_at(section, 0);
        active |= section.seen | section.met;
    });
    busy_axes_ |= leader.group;
    leader.ramp = 0;
    leader.turns_back = false;
    leader.correcting = correction != 0;
    leader.slowed = active != 0 && slow_down_asked(leader);
    leader.start_time = now;
    leader.passed = 0;
    leader.longest = leader.correcting ? 0 : own_pulses(leader);
    const double unit = SpeedUnit(leader.reg(Register::MULTIPLIER));
    leader.profile.plan(leader.correcting ? EvenRun(correction, leader.reg(Register::CORRECTION_SPEED) * unit)
                                          : leg_input(leader));
    leader.due = now.later(leader.profile.duration_s());
    if (active != 0)
        look(leader, {now, 0, false});
}

// The axes of an operation stand where `pulses` of its leader have brought them.
void Chip::settle_group(Section &leader, const Instant &now)
{
    const std::int64_t pulses = now.pulses;
    if ((leader.group & watched_axes_) != 0 && leader.state == State::Running && pulses > leader.passed) {
        std::array<Changes, chip_axes> changes;
        observe_group(leader, {now.when, pulses, true}, changes);
    }
    if ((leader.group & timed_axes_) != 0)
        change_ramp(leader, 0);
    const bool unfinished = leader.state != State::Running || pulses < leader.longest;
    std::int64_t steps = 0;
    each(leader.group, [&](unsigned, const Section &section) {
        if (IsArc(section.kind) && section.state == State::Running)
            steps = arc_steps(section, pulses);
    });
    each(leader.group, [&](unsigned, Section &section) {
        const std::int64_t done = section.state == State::Running ? share(section, pulses) : 0;
        section.rest = HasDistance(section.kind) ? section.target - done : 0;
        section.interrupted = IsArc(section.kind) ? unfinished : section.rest != 0;
        section.put_out += static_cast<std::uint32_t>(done);
        section.base_position += done;
        section.origin += done;
        section.state = State::Idle;
    });
    busy_axes_ &= ~leader.group;
    // Last: the shares above count from where the leg began.
    if (steps != 0)
        each(leader.group, [&](unsigned, Section &section) { section.arc_done += steps; });
    leader.due = leader.edge = {};
}

// A leg has put out its last pulse. Another one follows if the axis turns back, has taken up its backlash, or is
// homing.
void Chip::finish(Section &leader, const Moment &now)
{
    settle_group(leader, {now, leader_pulses(leader, now.reached_ns()), true});
    if (leader.stopping)
        return;
    if (leader.turns_back || leader.correcting) {
        if (leader.turns_back)
            leader.start = StartKind::Accelerating;
        leader.distance = leader.target = rest_of_operation(leader);
        launch(leader, now);
    } else if (IsHoming(leader.kind)) {
        end_phase(leader, {now, 0, false});
    } else {
        each(leader.group, [&](unsigned, Section &section) { raise_event(section, Event::Ended); });
    }
}

} // namespace trevik::virtual_card
