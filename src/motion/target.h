// Where an axis's commanded moves end, as far as the library knows: LastTarget and what arcs left unfinished.
#pragma once

#include "driver/card.h"
#include "motion/axis_set.h"

#include <cstdint>

namespace trevik
{

// Before a move: an idle axis that has moved since is re-based on its command position, and what its last move fell
// short by is kept for the next relative move. Result: that of the last read made.
Result SyncLastTarget(const Axis &axis);

// The same for every axis of a set. Result: the last that was not Ok.
Result SyncLastTarget(const CheckedAxes &axes);

// The distance to a coordinate, which becomes the new LastTarget: an absolute position, or a relative distance to
// which a pending shortfall is added after an arc. Signed pulses; wraps.
std::uint32_t DistanceFromTarget(AxisShadow &shadow, std::uint32_t coordinate, bool absolute);

} // namespace trevik
