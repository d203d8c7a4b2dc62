// Fixing the speed range of an axis. No register is written: moves read it when they choose their multiplier.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

Result VelocityRangeFix(const Axis &axis, std::uint32_t speed);
Result VelocityRangeUnfix(const Axis &axis);

} // namespace trevik
