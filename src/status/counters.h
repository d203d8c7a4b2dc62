// The feedback counter of an axis, its latch, and the simultaneous start and stop signals of a card.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Signed pulses. Read: not written when the driver refuses.
Result FBCounterRead(const Axis &axis, std::uint32_t *count);
Result FBCounterSet(const Axis &axis, std::uint32_t count);
Result FBCounterLatchValueRead(const Axis &axis, std::uint32_t *count);

// To all axes of the card.
Result CSTATrigger(const Card &card);
Result CSTPTrigger(const Card &card);

} // namespace trevik
