// Events and errors of an axis, and which sources may interrupt. The flags' bits are the chip's; they are passed on
// whole.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Interrupt sources are the axes, 0 to 3, and the card's own level.
inline constexpr std::uint8_t card_level_source = 4;

// Selects the events that the chip reports; what is no event is dropped.
Result EventFactorSet(const Axis &axis, std::int32_t factor);

// Read: not written when the driver refuses.
Result EventFlagRead(const Axis &axis, std::uint32_t *flags);
Result ErrorFlagRead(const Axis &axis, std::uint32_t *flags);

// Events as above; error sources are only remembered. Axis above 3: Axis.
Result IRQSourceSet(const Card &card, std::uint8_t axis, std::int32_t errors, std::int32_t events);

// Lets a source interrupt (1) or not (0): axis 0 to 3, or 4 for the card level. Param: value above 1; Axis: source
// above 4. The card level reports no refusal.
Result IRQMaskSet(const Card &card, std::uint8_t source, std::uint32_t value);

// The low byte of the card's mask and status word; 0 when the driver refuses. Model: neither A nor AC, or no card.
Result IRQMaskRead(const Card &card, std::uint8_t *mask);

// What the driver's snapshot says of a source, 0 to 3 for an axis or 4 for the card level, of which only `status`
// is written. Handle: the driver refused, everything reads as 0. Axis: source above 4.
Result IRQStatusRead(const Card &card, std::uint8_t source, std::uint8_t *status, std::uint32_t *event_byte,
                     std::uint32_t *error_byte);

} // namespace trevik
