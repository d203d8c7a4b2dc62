// AC model: the position loop of an axis and its error detector. An axis above 3: Axis, found out when a request is
// to be sent, so after the ranges.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// The control mode of the card's loops, 0 to 4; Param above.
Result PIDControlModeSet(const Card &card, std::uint8_t mode);
Result PIDControlModeRead(const Card &card, std::uint8_t *mode);

// Gain and time constant, 1 to 4095 each; Param outside. The card keeps 4194304 / T, cut, so what is read back of T
// can differ from what was set.
Result PIDSet(const Card &card, std::uint8_t axis, std::uint16_t gain, std::uint16_t time);
Result PIDRead(const Card &card, std::uint8_t axis, std::uint16_t *gain, std::uint16_t *time);

Result PIDStart(const Card &card, std::uint8_t axis);
Result PIDStop(const Card &card, std::uint8_t axis);

Result PIDErrorCounterRead(const Card &card, std::uint8_t axis, std::uint32_t *error);

// Detector on (1) or off (0); Param above. Clear resets its status.
Result PIDErrorDetectorSet(const Card &card, std::uint8_t axis, std::uint8_t enable);
Result PIDErrorDetectorRead(const Card &card, std::uint8_t axis, std::uint8_t *status, std::uint8_t *enable);
Result PIDErrorDetectorClear(const Card &card, std::uint8_t axis);

} // namespace trevik
