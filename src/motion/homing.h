// Homing: the chip runs an axis to its home signal by the home mode it holds.
#pragma once

#include "driver/card.h"
#include "motion/move.h"

#include <cstdint>

namespace trevik
{

// Stores the home mode (0 to 12) and its option value (0 to 15) in the chip; Param above.
Result HomeModeSet(const Axis &axis, std::uint8_t mode, std::uint8_t option);

// Starts homing in a direction (0: plus). Results: MoveAllowed's, Param for a maximum speed too high, otherwise
// that of the start command. Speeds and the one rate of both ramps are integer arithmetic here, and a ramp time of
// 0 is the slowest.
Result HomeStart(const Axis &axis, MoveSpeeds speeds, double ramp_s, std::uint8_t direction);

// The same, searching: carries a distance and sets home mode 0.
Result HomeSearch(const Axis &axis, MoveSpeeds speeds, double ramp_s, std::uint8_t direction,
                  std::uint32_t distance);

} // namespace trevik
