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
    raised_axes_ |= axis_bit(section);
}

void Chip::raise_error(Section &section, Error error)
{
    section.errors |= Bit(error);
    section.raised.errors |= Bit(error);
    raised_axes_ |= axis_bit(section);
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
