// Running operations of the chip: how they change, stop, and go on after a stop.
#include "virtual/chip.h"

#include "virtual/register_profile.h"

namespace trevik::virtual_card
{

// What is queued on an axis is dropped with all axes that it would have moved.
void Chip::drop_queue(unsigned axis_set)
{
    each(axis_set, [&](unsigned, const Section &section) {
        each(section.queued ? section.queued_group : 0u, [](unsigned, Section &other) { other.queued = false; });
    });
}

// Decelerates by the deceleration registers of `rates` as they are now. What takes no nanosecond is over now, and not
// as rounding has it before or after the requests of the same time.
void Chip::slow_down(Section &leader, const Section &rates, const Moment &now, double last_pps)
{
    const double time_s = leader.start_time.seconds_until(now);
    leader.profile.stop(time_s, ProfileOf(rates, 0).decel, ProfileDistance(leader.longest), last_pps);
    const double end_s = leader.profile.duration_s();
    leader.due = end_s - time_s < 1e-9 ? now : leader.start_time.later(end_s);
}

// The start speed is the one from which an axis may stop at once, and what the rates of a move are made for.
void Chip::slow_to_start_speed(Section &leader, const Section &rates, const Moment &now)
{
    slow_down(leader, rates, now, ProfileOf(leader, 0).start_pps);
}

// A stop of one axis of a line stops the line: by the rates of its leader if that was named, otherwise by those of
// the first axis that was. What is queued behind a stopped operation is dropped.
void Chip::stop(unsigned axis_set, const Moment &now)
{
    each(axis_set, [&](unsigned axis, Section &section) {
        const unsigned group = section.state == State::Idle ? 1u << axis : section.group;
        drop_queue(group);
        Section &leader = leader_of(section);
        if (section.state == State::Waiting || (section.state == State::Running && leader.correcting))
            settle_group(leader, {now, 0});
        const unsigned named = group & axis_set;
        const bool leader_named = (named >> section.leader & 1) != 0;
        const bool decides = leader_named ? axis == section.leader : named >> axis << axis == named;
        if (section.state != State::Running || !decides)
            return;
        leader.turns_back = false;
        leader.stopping = true;
        slow_down(leader, section, now, 0);
    });
}

void Chip::stop_at_once(unsigned axis_set, std::int64_t now_ns)
{
    each(axis_set, [&](unsigned axis, Section &section) {
        drop_queue(section.state == State::Idle ? 1u << axis : section.group);
        if (section.state == State::Idle)
            return;
        Section &leader = leader_of(section);
        settle_group(leader, section.state == State::Running ? here(leader, now_ns) : Instant{{now_ns, 0}});
    });
}

// The running leg goes on by other values from where it is.
void Chip::replan(Section &leader, const Moment &now)
{
    leader.profile.replan(leader.start_time.seconds_until(now), leg_input(leader));
    leader.due = leader.start_time.later(leader.profile.duration_s());
}

// Signed pulses from where the leg started to where the registers say that the operation ends.
std::int64_t Chip::rest_of_operation(const Section &section)
{
    if (section.kind == Kind::Positioning)
        return static_cast<std::int32_t>(section.reg(Register::DISTANCE)) - section.origin;
    const std::uint32_t mode = section.reg(Register::MODE);
    return KindOf(mode) == Kind::Continuous ? OperationDistance(mode, 0) : section.target;
}

// The registers of a positioning or continuous operation count anew. One that waits takes them when it starts. One
// that runs goes straight on while it can still slow down before its end; otherwise it slows down and comes back.
// An operation that is being stopped stays so.
void Chip::retarget(Section &section, const Moment &now)
{
    if (section.state == State::Idle || (section.state == State::Running && section.stopping))
        return;
    section.target = rest_of_operation(section);
    if (section.state == State::Waiting)
        section.distance = section.target;
    if (section.state == State::Waiting || section.correcting)
        return;
    constexpr double tolerance_pulses = 1; // a move that is slowing down to this very end does not turn back
    const bool same_way = section.target != 0 && (section.target < 0) == (section.distance < 0);
    const double time_s = section.start_time.seconds_until(now);
    const double rest = ProfileDistance(Size(section.target)) - section.profile.distance_at(time_s);
    const double braking = BrakingDistance(section.profile.speed_at(time_s), leg_input(section));
    if (same_way && rest >= 0 && rest + tolerance_pulses >= braking) {
        section.distance = section.target;
        section.longest = Size(section.target);
        section.turns_back = false;
        replan(section, now);
    } else {
        section.distance = section.distance < 0 ? -endless : endless;
        section.longest = endless;
        section.turns_back = true;
        slow_to_start_speed(section, section, now);
    }
    update_next_event(now.ns);
}

// The mode word is the last register of a changed positioning move: all of them count now. Of a continuous
// operation it counts when it turns the axis round; its speed is written later.
void Chip::mode_written(Section &section, const Moment &now)
{
    const std::uint32_t mode = section.reg(Register::MODE);
    if (section.state == State::Idle || KindOf(mode) != section.kind)
        return;
    if (section.kind == Kind::Line)
        line_changed(section, now);
    if (section.kind == Kind::Positioning ||
        (section.kind == Kind::Continuous && section.target != OperationDistance(mode, 0)))
        retarget(section, now);
}

// All registers of a running line count once the last of its axes has its mode word: from where the axes are they go
// straight to the new end, the longest of them at the speed that the longest had.
void Chip::line_changed(Section &section, const Moment &now)
{
    Section &old = leader_of(section);
    const unsigned group = old.group;
    const unsigned up_to_here = (2u << (&section - sections_.data())) - 1;
    bool line = section.state == State::Running && !old.stopping && (group & ~up_to_here) == 0;
    each(group, [&](unsigned, const Section &axis) { line = line && axis.kind == Kind::Line; });
    if (!line)
        return;
    const double pps = old.profile.speed_at(old.start_time.seconds_until(now));
    settle_group(old, here(old, now.ns));
    each(group, [](unsigned, Section &axis) {
        axis.distance = axis.target = static_cast<std::int32_t>(axis.reg(Register::DISTANCE)) - axis.origin;
    });
    Section &leader = sections_[choose_leader(group)];
    launch(leader, now);
    if (leader.state == State::Running && leader.longest != 0) {
        leader.profile.plan_from(pps, leg_input(leader));
        leader.due = now.later(leader.profile.duration_s());
    }
    update_next_event(now.ns);
}

// An interrupted operation is forgotten when its distance is written.
void Chip::distance_written(Section &section, const Moment &now)
{
    if (section.state == State::Idle && section.interrupted) {
        const unsigned group = section.group;
        each(group, [&](unsigned, Section &other) {
            if (other.state != State::Idle || other.group != group)
                return;
            other.rest = 0;
            other.interrupted = false;
        });
    } else if (section.kind == Kind::Positioning) {
        retarget(section, now);
    }
}

// True when a stop interrupted the operation of this leader, all its axes still stand as it left them, and all of
// them are named.
bool Chip::can_restart(const Section &leader, unsigned axis_set)
{
    bool can = leader.interrupted && (leader.group & ~axis_set) == 0;
    each(leader.group, [&](unsigned, const Section &section) {
        can = can && !section.busy() && section.group == leader.group && section.leader == leader.leader;
    });
    return can;
}

void Chip::restart(unsigned axis_set, const Moment &now)
{
    each(axis_set, [&](unsigned axis, Section &leader) {
        if (leader.leader != axis || !can_restart(leader, axis_set))
            return;
        each(leader.group, [](unsigned, Section &section) { section.distance = section.target = section.rest; });
        begin(leader, now);
    });
}

} // namespace trevik::virtual_card
