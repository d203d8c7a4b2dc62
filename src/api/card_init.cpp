#include "api/card_init.h"

#include "config/points.h"
#include "motion/stop.h"
#include "status/card_timers.h"

#include <array>

namespace trevik
{
namespace
{

struct InitialValue {
    Register reg;
    std::uint32_t value;
    std::uint32_t value_of_axis3; // its ports 3 and 4 are outputs: they switch the card's TTL points
};

constexpr std::array<InitialValue, 7> configuration = {{
    {Register::CORRECTION_SPEED, 0x100, 0x100},
    {Register::SIGNAL_CONFIG1, 0xB0077007, 0xB0077007},
    {Register::SIGNAL_CONFIG2, 0x02204005, 0x02204145},
    {Register::HOME_CONFIG, 0x00F02000, 0x00F02000},
    {Register::LIMIT_CONFIG, 0, 0},
    {Register::START_TRIGGER_ENV, 0, 0},
    {Register::MOTION_CONFIG, 0, 0},
}};

// Counter 4 is cleared twice.
constexpr std::array counters = {Register::COUNTER1, Register::COUNTER2, Register::COUNTER3, Register::COUNTER4,
                                 Register::COUNTER4};

template <class Operation>
void EachAxis(const Card &card, Operation operation)
{
    for (std::uint8_t n = 0; n < axis_count; ++n)
        operation(card.axis(n));
}

} // namespace

Result CardInit(const Card &card)
{
    constexpr std::uint8_t axis_points = 4;
    constexpr std::uint32_t timer0_start_up = 10000;
    for (std::uint8_t point = 0; point < axis_points; ++point)
        EachAxis(card, [=](const Axis &axis) { PointSet(axis, point, 0); });
    for (const InitialValue &initial : configuration)
        EachAxis(card, [&](const Axis &axis) {
            axis.write(initial.reg, axis.number() == 3 ? initial.value_of_axis3 : initial.value);
        });
    EachAxis(card, [](const Axis &axis) { StopImmediate(axis); });
    for (const Register counter : counters)
        EachAxis(card, [=](const Axis &axis) { axis.write(counter, 0); });
    const Result result = TTLIOModeSet(card, 0);
    TimerSet(card, 0, timer0_start_up);
    return result;
}

} // namespace trevik
