// The general-purpose points of a card and the mode that makes some of them outputs.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Reads a point, 0 to 24; other points: `state` not written. Points 17 to 24 belong to the card, whatever the axis.
Result PointRead(const Axis &axis, std::uint8_t point, std::uint8_t *state);

// Switches an output point, 0 to 11, on or off; other points: Ok, nothing sent. Points 4 to 11 belong to the card.
Result PointSet(const Axis &axis, std::uint8_t point, std::uint8_t state);

// Bit 0 of the mode makes points 4 to 7 outputs, bit 1 points 8 to 11; Param above 3.
Result TTLIOModeSet(const Card &card, std::uint8_t mode);
Result TTLIOModeRead(const Card &card, std::uint8_t *mode);

} // namespace trevik
