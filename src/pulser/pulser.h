// The handwheel (manual pulse generator): its input, its counter, and which axes follow it.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Input format (0 to 3) and option (0 to 1); Param above.
Result PulserModeSet(const Axis &axis, std::uint8_t format, std::uint8_t option);
Result PulserModeRead(const Axis &axis, std::uint8_t *format, std::uint8_t *option);

Result PulserCounterRead(const Axis &axis, std::uint32_t *count);

// Axes that follow the counter at this moment do not jump.
Result PulserCounterSet(const Axis &axis, std::uint32_t count);

// Which axis's handwheel drives an axis, and which way; the axis is re-based where it stands. Axis above 3: Axis.
Result PulserMapSet(const Card &card, std::uint8_t axis_number, std::uint8_t source, std::uint8_t reverse);

// Switches following on or off. Param: enable above 1, ratio not in 1 to 1000. Axis above 3: Axis.
Result PulserMotionEnable(const Card &card, std::uint8_t axis_number, std::uint8_t enable, std::uint16_t ratio);

} // namespace trevik
