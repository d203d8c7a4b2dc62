// AC model: the encoder input of an axis, its analogue output and its pulse swap.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Three settings: 0 to 2, 0 to 4, 0 to 2; Param above. Read: what the driver refuses is not written.
Result EncoderModeSet(const Card &card, std::uint8_t axis, std::uint16_t s1, std::uint16_t s2, std::uint16_t s3);
Result EncoderModeRead(const Card &card, std::uint8_t axis, std::uint16_t *s1, std::uint16_t *s2,
                       std::uint16_t *s3);

// Six one-bit switches, 0 to 63; Param above.
Result EncoderPolaritySet(const Card &card, std::uint8_t axis, std::uint16_t bits);
Result EncoderPolarityRead(const Card &card, std::uint8_t axis, std::uint16_t *bits);

Result EncoderStatusRead(const Card &card, std::uint8_t axis, std::uint16_t *status);

// Analogue output, -65535 to 65535; Param outside. Read: what the driver refuses counts as 0.
Result AnalogOutputSet(const Card &card, std::uint8_t axis, std::int32_t value);
Result AnalogOutputRead(const Card &card, std::uint8_t axis, std::int32_t *value);

// 0 or 1; Param above.
Result PulseSwapSet(const Card &card, std::uint8_t axis, std::uint8_t swap);
Result PulseSwapRead(const Card &card, std::uint8_t axis, std::uint8_t *swap);

// Latches the feedback counters of all axes at one moment and reads them.
Result SimultaneousCounterRead(const Card &card, std::uint32_t *axis0, std::uint32_t *axis1, std::uint32_t *axis2,
                               std::uint32_t *axis3);

} // namespace trevik
