// The operation-mode word of an axis: what MODE and PRESET_MODE hold.
#pragma once

#include "driver/bit_field.h"

#include <cstdint>

namespace trevik
{

enum class OperationCode : std::uint32_t {
    ContinuousPlus = 0x00,
    ContinuousMinus = 0x08,
    HomePlus = 0x10,
    HomeMinus = 0x18,
    HomeSearchPlus = 0x15,
    HomeSearchMinus = 0x1D,
    Positioning = 0x41,
    PositioningBacklash = 0x49,
    Line = 0x61,
    ArcPlus = 0x64, // direction 0
    ArcMinus = 0x65,
    HelixArcPlus = 0x66, // an arc tied to a line of the other two axes
    HelixArcMinus = 0x67,
};

enum class StartTrigger : std::uint8_t { AtOnce = 0, SimultaneousStart = 1, Comparator = 2 };

namespace mode_field
{
inline constexpr BitField operation{0, 7};
inline constexpr BitField sd_enable{8, 1};
inline constexpr BitField inp_enable{9, 1};
inline constexpr BitField s_curve{10, 1};
inline constexpr BitField manual_rampdown{13, 1}; // 1: RAMPDOWN_POINT counts; 0: the chip finds the point
inline constexpr BitField pcs_enable{14, 1};
inline constexpr BitField arc_option{15, 1}; // always 0 in lines and arcs
inline constexpr BitField start_trigger{18, 2};
inline constexpr BitField short_profile{26, 1}; // 1: the maximum speed is not reached, or nothing decelerates
inline constexpr BitField arc_used{27, 1};      // set by every arc and left set
} // namespace mode_field

} // namespace trevik
