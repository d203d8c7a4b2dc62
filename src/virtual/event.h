// What an axis tells of itself: the bits of EVENT_ENABLE and EVENT_FLAGS, and of ERROR_FLAGS.
#pragma once

#include <cstdint>

namespace trevik::virtual_card
{

enum class Event : std::uint8_t {
    Ended = 0, // as planned
    NextBegan = 1,
    AccelerationBegan = 4,
    AccelerationEnded = 5,
    DecelerationBegan = 6,
    DecelerationEnded = 7,
    SoftLimit1 = 8,
    SoftLimit2 = 9,
    Comparator3 = 11,
    Comparator5 = 12,
    Latched = 14,
    SlowDownOn = 16,
    StartedTogether = 18,
};

enum class Error : std::uint8_t {
    SoftLimit1 = 0,
    SoftLimit2 = 1,
    Comparator5 = 4,
    PlusLimit = 5,
    MinusLimit = 6,
    Alarm = 7,
    StoppedTogether = 8,
    EmergencyStop = 9,
    SlowDown = 10,
    None = 31,
};

constexpr std::uint32_t Bit(Event event)
{
    return 1u << static_cast<unsigned>(event);
}
constexpr std::uint32_t Bit(Error error)
{
    return 1u << static_cast<unsigned>(error);
}

inline constexpr std::uint32_t ramp_events = Bit(Event::AccelerationBegan) | Bit(Event::AccelerationEnded) |
                                             Bit(Event::DecelerationBegan) | Bit(Event::DecelerationEnded);

} // namespace trevik::virtual_card
