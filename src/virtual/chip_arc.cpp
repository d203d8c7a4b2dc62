// Circles on the chip: which axes hold the path, and where each of them is on it.
#include "virtual/arithmetic.h"
#include "virtual/chip.h"

namespace trevik::virtual_card
{

// Both axes of a group's circle load it from their registers; they end where the path does.
void Chip::plan_arc(unsigned group)
{
    Section *first = nullptr;
    Section *second = nullptr;
    unsigned first_axis = 0;
    each(group, [&](unsigned axis, Section &section) {
        if (!IsArc(section.kind))
            return;
        if (first == nullptr)
            first_axis = axis;
        (first == nullptr ? first : second) = &section;
    });
    const auto point = [&](Register reg) {
        return ArcPoint{static_cast<std::int32_t>(first->reg(reg)), static_cast<std::int32_t>(second->reg(reg))};
    };
    // cppcheck-suppress nullPointer ; a group with a circle has two axes of it
    const bool plus = (first->reg(Register::MODE) & arc_minus_bit) == 0;
    first->arc.plan(point(Register::CENTER), point(Register::DISTANCE), plus);
    const ArcPoint end = first->arc.at(first->arc.steps());
    for (Section *section : {first, second}) {
        section->arc_axis = static_cast<std::uint8_t>(first_axis);
        section->arc_second = section == second;
        section->arc_done = 0;
        section->distance = section->target = section == second ? end.y : end.x;
    }
}

// Steps of the circle that the leader's pulses make in this leg; in a helix its share of them.
std::int64_t Chip::arc_steps(const Section &section, std::int64_t pulses)
{
    const Section &leader = leader_of(section);
    const Section &circle = sections_[section.arc_axis];
    if (&leader == &circle || leader.longest == 0)
        return pulses;
    const auto steps = static_cast<double>(circle.arc.steps() - circle.arc_done);
    return Nearest(steps * static_cast<double>(pulses) / static_cast<double>(leader.longest));
}

std::int64_t Chip::arc_share(const Section &section, std::int64_t pulses)
{
    const Section &circle = sections_[section.arc_axis];
    const ArcPoint from = circle.arc.at(circle.arc_done);
    const ArcPoint to = circle.arc.at(circle.arc_done + arc_steps(section, pulses));
    return section.arc_second ? to.y - from.y : to.x - from.x;
}

// The leader's pulses at which an axis of a circle may next turn round; its last ones where it does so no more.
std::int64_t Chip::pulses_at_turn(const Section &section, std::int64_t pulses)
{
    const Section &circle = sections_[section.arc_axis];
    const std::int64_t longest = leader_of(section).longest;
    const std::int64_t here = circle.arc_done + arc_steps(section, pulses);
    if (here >= circle.arc.steps())
        return longest; // a steep helix leads on past the circle's last step
    const std::int64_t turn = circle.arc.next_turn(here, !section.arc_second) - circle.arc_done;
    return FirstTrue(pulses, longest, [&](std::int64_t p) { return arc_steps(section, p) >= turn; });
}

} // namespace trevik::virtual_card
