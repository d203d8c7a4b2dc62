// How an axis follows a handwheel: one step each tick.
#pragma once

#include "driver/card.h"

namespace trevik
{

// Takes the position of the handwheel and of the axis as the start of following: nothing moves. What a refused read
// leaves unknown, the next tick takes. Result: that of the position read.
Result SettlePulser(const Axis &axis);

// One tick: the handwheel's way since the last one becomes a target and a speed, and the axis is sent there.
void FollowPulser(const Axis &axis);

} // namespace trevik
