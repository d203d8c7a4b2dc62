// What the chip or the card does to an axis's pulses and inputs on its own: backlash compensation, vibration
// suppression, input debounce.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Pulses that take up the backlash (0 to 4095; Param above), mode 0 off or not 0 on, and their speed, pulses/s.
// Later moves carry the mode and the speed, also when the driver refuses the registers.
Result BacklashCompSet(const Axis &axis, std::uint16_t amount, std::uint8_t mode, std::uint32_t speed_pps);
Result BacklashCompRead(const Axis &axis, std::uint16_t *amount, std::uint8_t *mode, std::uint32_t *speed_pps);

// The two times of vibration suppression, as the chip counts them.
Result SuppressVibrationSet(const Axis &axis, std::uint16_t first, std::uint16_t second);
Result SuppressVibrationRead(const Axis &axis, std::uint16_t *first, std::uint16_t *second);

// AC model only. Debounce of the axis's inputs, 0 to 3; Param above.
Result DebounceSet(const Card &card, std::uint8_t axis, std::uint8_t value);
Result DebounceRead(const Card &card, std::uint8_t axis, std::uint8_t *value);

} // namespace trevik
