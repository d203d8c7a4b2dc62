// The continuous-motion buffer: a one-deep queue of moves behind the running one.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

Result ContinuousFlagSet(const Axis &axis, std::uint8_t flag);

// full: 1 while a queued move waits.
Result ContinuousBufferRead(const Axis &axis, std::uint8_t *full);

// Operations in the axis's buffer, 0 to 3.
Result ContinuousBufferCountRead(const Axis &axis, std::uint8_t *count);

} // namespace trevik
