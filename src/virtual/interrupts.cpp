#include "virtual/interrupts.h"

#include "driver/request_buffer.h"

namespace trevik::virtual_card
{

void Interrupts::raise_axis(unsigned axis, const Chip::Raised &raised)
{
    axes_[axis].events |= raised.events;
    axes_[axis].errors |= raised.errors;
    signal_due_ = signal_due_ || delivers();
}

void Interrupts::raise_card(unsigned causes)
{
    card_ |= causes;
    signal_due_ = signal_due_ || delivers();
}

unsigned Interrupts::pending() const
{
    unsigned sources = card_ != 0 ? 1u << chip_axes : 0u;
    for (unsigned axis = 0; axis < chip_axes; ++axis)
        sources |= axes_[axis].events != 0 || axes_[axis].errors != 0 ? 1u << axis : 0u;
    return sources;
}

void Interrupts::take_snapshot(void *reply)
{
    constexpr std::size_t events_at = 20;
    constexpr std::size_t errors_at = 52;
    unsigned kinds = 0; // of each axis: bit 0 events, bit 1 errors
    for (unsigned axis = 0; axis < chip_axes; ++axis) {
        const Chip::Raised &raised = axes_[axis];
        kinds |= ((raised.events != 0 ? 1u : 0u) | (raised.errors != 0 ? 2u : 0u)) << 2 * axis;
        PutField(reply, events_at + std::size_t{4} * axis, raised.events);
        PutField(reply, errors_at + std::size_t{4} * axis, raised.errors);
    }
    PutField(reply, 0, static_cast<std::uint8_t>(card_));
    PutField(reply, 1, static_cast<std::uint8_t>(kinds));
    axes_ = {};
    card_ = 0;
}

void Interrupts::link(std::uint32_t process, std::uint32_t event)
{
    process_ = process;
    event_ = event;
}

void Interrupts::enable(std::uint32_t process, bool on)
{
    process_ = process;
    enabled_ = on;
}

void Interrupts::release(std::uint32_t process)
{
    if (process == process_)
        disconnect();
}

void Interrupts::disconnect()
{
    event_ = 0;
    enabled_ = false;
}

std::uint32_t Interrupts::take_signal()
{
    const bool due = signal_due_;
    signal_due_ = false;
    return due && delivers() ? event_ : 0;
}

} // namespace trevik::virtual_card
