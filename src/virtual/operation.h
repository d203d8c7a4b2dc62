// What an operation code of the mode word makes the chip do.
#pragma once

#include "driver/mode_word.h"
#include "virtual/arithmetic.h"

#include <cstdint>

namespace trevik::virtual_card
{

enum class Kind : std::uint8_t { Unknown, Positioning, Line, Arc, HelixArc, Continuous, Homing, HomeSearch };

// Stands for the distance of an operation that only a stop or an input ends.
inline constexpr std::int64_t endless = std::int64_t{1} << 60;

inline constexpr std::uint32_t direction_bit = 0x08; // of operation codes without a distance: 1 is minus

inline constexpr std::uint32_t arc_minus_bit = 0x01; // of the operation codes of arcs

inline constexpr auto slow_down_enable = mode_field::sd_enable; // of the mode word

constexpr Kind KindOf(std::uint32_t mode)
{
    switch (static_cast<OperationCode>(mode_field::operation.get(mode))) {
    case OperationCode::ContinuousPlus:
    case OperationCode::ContinuousMinus:
        return Kind::Continuous;
    case OperationCode::HomePlus:
    case OperationCode::HomeMinus:
        return Kind::Homing;
    case OperationCode::HomeSearchPlus:
    case OperationCode::HomeSearchMinus:
        return Kind::HomeSearch;
    case OperationCode::Positioning:
    case OperationCode::PositioningBacklash:
        return Kind::Positioning;
    case OperationCode::Line:
        return Kind::Line;
    case OperationCode::ArcPlus:
    case OperationCode::ArcMinus:
        return Kind::Arc;
    case OperationCode::HelixArcPlus:
    case OperationCode::HelixArcMinus:
        return Kind::HelixArc;
    default:
        return Kind::Unknown;
    }
}

constexpr bool IsArc(Kind kind)
{
    return kind == Kind::Arc || kind == Kind::HelixArc;
}

constexpr bool HasDistance(Kind kind)
{
    return kind == Kind::Positioning || kind == Kind::Line || IsArc(kind);
}

constexpr bool IsHoming(Kind kind)
{
    return kind == Kind::Homing || kind == Kind::HomeSearch;
}

// Signed distance of an operation, from its registers.
constexpr std::int64_t OperationDistance(std::uint32_t mode, std::uint32_t distance)
{
    if (HasDistance(KindOf(mode)))
        return static_cast<std::int32_t>(distance);
    return (mode & direction_bit) != 0 ? -endless : endless;
}

} // namespace trevik::virtual_card
