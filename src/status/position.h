// The command position of an axis.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

Result CurrentPositionRead(const Axis &axis, std::uint32_t *position);

// Sets the position of an idle axis and the target bookkeeping with it; Busy otherwise.
Result CurrentPositionSet(const Axis &axis, std::uint32_t position);

// Makes later moves of an idle axis count from its command position; a moving axis is left alone.
Result CorrectCurrentPosition(const Axis &axis);

} // namespace trevik
