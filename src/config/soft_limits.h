// Software limits: comparators 1 and 2 of the chip, set up as a pair.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Which counter is limited (0 to 1) and what happens (0 to 2); Param above. Switches both limits on.
Result SoftlimitConfigSet(const Axis &axis, std::uint8_t counter, std::uint8_t action);
Result SoftlimitConfigRead(const Axis &axis, std::uint8_t *counter, std::uint8_t *action);

// The two positions, signed pulses. Read: not written when the driver refuses.
Result SoftlimitDataSet(const Axis &axis, std::uint32_t first, std::uint32_t second);
Result SoftlimitDataRead(const Axis &axis, std::uint32_t *first, std::uint32_t *second);

// Both limits on (not 0) or off.
Result SoftlimitEnableSet(const Axis &axis, std::uint8_t enable);
Result SoftlimitEnableRead(const Axis &axis, std::uint8_t *enable);

// The two flags of the main status.
Result SoftlimitFlagRead(const Axis &axis, std::uint8_t *flag1, std::uint8_t *flag2);

} // namespace trevik
