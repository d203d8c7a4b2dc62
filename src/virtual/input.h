// The inputs and outputs of an axis.
#pragma once

#include <cstdint>

namespace trevik::virtual_card
{

enum class Input : std::uint8_t {
    PlusLimit,
    MinusLimit,
    Home,
    Index,
    SlowDown,
    Alarm,
    InPosition,
    Latch,
    PositionChange,
    Port3, // general ports, as far as they are inputs
    Port4,
    Port5,
    Port6,
    Point4, // general inputs, by their number as a point
    Point9,
    Point15,
    Point16,
    Count
};

inline constexpr unsigned input_count = static_cast<unsigned>(Input::Count);

// The outputs of an axis: points 0 to 3, and the general ports, as far as they are outputs.
enum class Output : std::uint8_t { Point0, Point1, Point2, Point3, Port3, Port4, Port5, Port6 };

constexpr std::uint32_t Bit(Input input)
{
    return 1u << static_cast<unsigned>(input);
}

} // namespace trevik::virtual_card
