#include "status/events.h"

namespace trevik
{
namespace
{

constexpr std::uint32_t selectable_events = 0x55BF3;
constexpr std::uint32_t selectable_errors = 0x3F7F3;

Result SelectEvents(const Axis &axis, std::int32_t events)
{
    return axis.write(Register::EVENT_ENABLE, static_cast<std::uint32_t>(events) & selectable_events);
}

} // namespace

Result EventFactorSet(const Axis &axis, std::int32_t factor)
{
    return SelectEvents(axis, factor);
}

Result EventFlagRead(const Axis &axis, std::uint32_t *flags)
{
    return flags == nullptr ? Result::Param : axis.read(StatusRegister::EVENT_FLAGS, *flags);
}

Result ErrorFlagRead(const Axis &axis, std::uint32_t *flags)
{
    return flags == nullptr ? Result::Param : axis.read(StatusRegister::ERROR_FLAGS, *flags);
}

Result IRQSourceSet(const Card &card, std::uint8_t axis_number, std::int32_t errors, std::int32_t events)
{
    if (axis_number >= axis_count)
        return Result::Axis;
    const Axis axis = card.axis(axis_number);
    axis.shadow().IrqSourceShadow = static_cast<std::uint32_t>(errors) & selectable_errors;
    return SelectEvents(axis, events);
}

Result IRQMaskSet(const Card &card, std::uint8_t source, std::uint32_t value)
{
    if (value > 1)
        return Result::Param;
    if (source < axis_count)
        return Modify(card.axis(source), signal_config1::interrupts_masked.to(1 - value));
    if (source != card_level_source)
        return Result::Axis;
    return card.write(Port::InterruptMask, static_cast<std::uint16_t>(value));
}

Result IRQMaskRead(const Card &card, std::uint8_t *mask)
{
    if (!card.supported())
        return Result::Model;
    if (mask == nullptr)
        return Result::Param;
    std::uint16_t word = 0;
    const Result result = card.read(Port::InterruptState, word);
    *mask = static_cast<std::uint8_t>(word);
    return result;
}

Result IRQStatusRead(const Card &card, std::uint8_t source, std::uint8_t *status, std::uint32_t *event_byte,
                     std::uint32_t *error_byte)
{
    if (AnyNull(status, event_byte, error_byte))
        return Result::Param;
    InterruptSnapshot snapshot;
    const Result result = IrqStatusRequest(card.state().DriverHandle.get(), snapshot);
    if (source == card_level_source) {
        *status = static_cast<std::uint8_t>(snapshot.card_level());
        return result;
    }
    if (source >= axis_count)
        return Result::Axis;
    *status = static_cast<std::uint8_t>(snapshot.axis_bits(source) | snapshot.card_level() << 2);
    *event_byte = snapshot.event_byte(source);
    *error_byte = snapshot.error_byte(source);
    return result;
}

} // namespace trevik
