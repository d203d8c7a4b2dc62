// The inputs of an axis.
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
    Count
};

inline constexpr unsigned input_count = static_cast<unsigned>(Input::Count);

constexpr std::uint32_t Bit(Input input)
{
    return 1u << static_cast<unsigned>(input);
}

} // namespace trevik::virtual_card
