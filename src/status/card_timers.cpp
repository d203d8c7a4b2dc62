#include "status/card_timers.h"

#include "status/events.h"

#include <array>

namespace trevik
{
namespace
{

struct TimerPorts {
    Port high;
    Port low;
};

constexpr std::array<TimerPorts, 2> timer_ports = {{
    {Port::Timer0High, Port::Timer0Low},
    {Port::Timer1High, Port::Timer1Low},
}};

Result Run(const Card &card, std::uint16_t run)
{
    return card.supported() ? card.write(Port::TimerControl, run) : Result::Model;
}

} // namespace

Result TimerSet(const Card &card, std::uint8_t timer, std::uint32_t value)
{
    if (!card.supported())
        return Result::Model;
    if (timer >= timer_ports.size())
        return Result::Ok;
    card.write(timer_ports[timer].high, static_cast<std::uint16_t>(value >> 16));
    return card.write(timer_ports[timer].low, static_cast<std::uint16_t>(value));
}

Result TimerRead(const Card &card, std::uint8_t timer, std::uint32_t *value)
{
    if (!card.supported())
        return Result::Model;
    if (value == nullptr)
        return Result::Param;
    if (timer >= timer_ports.size())
        return Result::Ok;
    std::uint16_t high = 0;
    std::uint16_t low = 0;
    card.read(timer_ports[timer].high, high);
    const Result result = card.read(timer_ports[timer].low, low);
    *value = std::uint32_t{high} << 16 | low;
    return result;
}

Result TimerStart(const Card &card)
{
    return Run(card, 1);
}

Result TimerStop(const Card &card)
{
    return Run(card, 0);
}

Result TCSet(const Card &card, std::uint8_t item, std::uint32_t value)
{
    if (!card.supported())
        return Result::Model;
    switch (item) {
    case 0:
        return value > 1 ? Result::Param : value == 0 ? TimerStart(card) : TimerStop(card);
    case 1:
    case 2:
        return TimerSet(card, static_cast<std::uint8_t>(item - 1), value);
    case 3:
        return card.state().DriverHandle.open() ? IRQMaskSet(card, card_level_source, value) : Result::Handle;
    default:
        return Result::Ok;
    }
}

} // namespace trevik
