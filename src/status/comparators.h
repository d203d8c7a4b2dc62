// The comparator behind the CMP output (comparator 5), and the one that starts motion (comparator 3).
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Counter 0 to 3, condition 0 to 5, action 0 to 2; Param above.
Result CMPOutSet(const Axis &axis, std::uint8_t counter, std::uint8_t condition, std::uint8_t action);
Result CMPOutRead(const Axis &axis, std::uint8_t *counter, std::uint8_t *condition, std::uint8_t *action);

// The value compared with, signed pulses. Read: not written when the driver refuses.
Result CMPDataSet(const Axis &axis, std::uint32_t value);
Result CMPDataRead(const Axis &axis, std::uint32_t *value);

Result CMPFlagRead(const Axis &axis, std::uint8_t *flag);

// Makes this axis's comparator 3 the card's start trigger: counter 0 to 3, condition 0 to 5; Param above.
Result CompareStartSet(const Axis &axis, std::uint8_t counter, std::uint8_t condition);
Result CompareStartRead(const Axis &axis, std::uint8_t *counter, std::uint8_t *condition);

// The position at which it starts, of the axis that CompareStartSet chose last, else of axis 0.
Result CompareStartDataSet(const Card &card, std::uint32_t value);
Result CompareStartDataRead(const Card &card, std::uint32_t *value);

} // namespace trevik
