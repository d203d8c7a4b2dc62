// The feedback of an axis on cards that have a position loop: which way its pulses move the machine, how far the
// encoder trails, and when that is too far.
#include "virtual/chip.h"

namespace trevik::virtual_card
{

// The machine stands where it stands; what lies around the axis is turned round instead.
void Chip::set_reversed(unsigned axis, bool reversed, std::int64_t now_ns)
{
    advance(now_ns);
    Section &section = sections_[axis];
    if (section.reversed == reversed)
        return;
    const std::int64_t done = travelled(section, now_ns);
    section.reversed = reversed;
    section.base_position = -(section.base_position + done) - done;
    section.around.mirror();
    section.encoder.mirror();
    reconsider(axis, now_ns);
}

void Chip::set_feedback_trail(unsigned axis, double seconds, std::int64_t now_ns)
{
    advance(now_ns);
    sections_[axis].trail_s = seconds;
}

// Counts by which the encoder is behind the pulses.
std::uint32_t Chip::trailing_counts(const Section &section, std::int64_t now_ns)
{
    if (section.trail_s <= 0)
        return 0;
    const std::int64_t here = section.base_position + travelled(section, now_ns);
    const double pulses = speed_of(section, now_ns) * section.trail_s;
    const std::int64_t behind = pulses < 0 ? -Nearest(-pulses) : Nearest(pulses);
    return static_cast<std::uint32_t>(section.encoder.between(here - behind, here));
}

// The first time from `from_ns` on at which the running operation moves an axis at this speed or faster; on a
// circle, its leading axis.
std::int64_t Chip::time_as_fast(unsigned axis, double pps, std::int64_t from_ns)
{
    advance(from_ns);
    const Section &section = sections_[axis];
    Section &leader = leader_of(section);
    if (section.state != State::Running || leader.longest == 0)
        return never_ns;
    const Section &circle = sections_[section.arc_axis];
    const std::int64_t own = IsArc(section.kind) ? circle.arc.steps() - circle.arc_done : Size(section.distance);
    const double leader_pps = pps * static_cast<double>(leader.longest) / static_cast<double>(own);
    const double from_s = leader.start_time.seconds_until(from_ns);
    return leader.start_time.later(leader.profile.time_as_fast(leader_pps, from_s)).reached_ns();
}

} // namespace trevik::virtual_card
