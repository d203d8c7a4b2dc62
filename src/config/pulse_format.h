// How an axis puts its pulses out, and how it reads encoder pulses.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Output format 0 to 7; Param above.
Result PulseOutmodeSet(const Axis &axis, std::uint8_t mode);
Result PulseOutmodeRead(const Axis &axis, std::uint8_t *mode);

// Input format 0 to 3 and option 0 to 1; Param above.
Result PulseInmodeSet(const Axis &axis, std::uint8_t format, std::uint8_t option);
Result PulseInmodeRead(const Axis &axis, std::uint8_t *format, std::uint8_t *option);

} // namespace trevik
