// Events and errors of the chip, as its flag registers and the card's interrupts see them.
#include "virtual/chip.h"

namespace trevik::virtual_card
{

void Chip::raise_event(Section &section, Event event)
{
    const std::uint32_t bit = Bit(event) & section.reg(Register::EVENT_ENABLE);
    if (bit == 0)
        return;
    section.events |= bit;
    section.raised.events |= bit;
    raised_axes_ |= 1u << axis_of(section);
}

void Chip::raise_error(Section &section, Error error)
{
    section.errors |= Bit(error);
    section.raised.errors |= Bit(error);
    raised_axes_ |= 1u << axis_of(section);
}

// Ramps of an operation are looked at half a nanosecond from now, so that rounding does not find the one before.
SpeedProfile::Ramp Chip::ramp_now(Section &leader, std::int64_t now_ns)
{
    constexpr double half_ns = 0.5e-9;
    return leader.profile.ramp_at(leader.start_time.seconds_until(now_ns) + half_ns);
}

void Chip::note_ramp(Section &leader, std::int64_t now_ns)
{
    const SpeedProfile::Ramp ramp = ramp_now(leader, now_ns);
    change_ramp(leader, ramp.way);
    const std::int64_t end_ns = leader.start_time.later(ramp.end_s).reached_ns();
    next_look_ns_ = Smaller(next_look_ns_, end_ns > now_ns ? end_ns : now_ns + 1);
}

void Chip::change_ramp(Section &leader, int way)
{
    if (way == leader.ramp)
        return;
    each(leader.group, [&](unsigned, Section &section) {
        if (leader.ramp != 0)
            raise_event(section, leader.ramp > 0 ? Event::AccelerationEnded : Event::DecelerationEnded);
        if (way != 0)
            raise_event(section, way > 0 ? Event::AccelerationBegan : Event::DecelerationBegan);
    });
    leader.ramp = static_cast<std::int8_t>(way);
}

// EVENT_ENABLE was written. A ramp that is under way has begun before.
void Chip::events_chosen(unsigned axis, std::int64_t now_ns)
{
    note_watched(axis);
    Section &leader = leader_of(sections_[axis]);
    if (leader.state == State::Running)
        leader.ramp = static_cast<std::int8_t>(ramp_now(leader, now_ns).way);
    update_next_event(now_ns);
}

// In those axes of a set that are not idle, with all that their operations move.
void Chip::raise_in_busy(unsigned axis_set, Error error)
{
    unsigned stopped = 0;
    each(axis_set, [&](unsigned axis, const Section &section) {
        stopped |= section.state != State::Idle ? section.group : section.queued ? 1u << axis : 0u;
    });
    each(stopped, [&](unsigned, Section &section) { raise_error(section, error); });
}

Chip::Raised Chip::take_raised(unsigned axis)
{
    raised_axes_ &= ~(1u << axis);
    const Raised raised = sections_[axis].raised;
    sections_[axis].raised = {};
    return raised;
}

} // namespace trevik::virtual_card
