// Restarts of operations that a stop interrupted.
#pragma once

#include "motion/axis_set.h"

namespace trevik
{

// Restarts the axes of a set together; their targets move on by what the stopped operations have left. No state is
// checked. Result: that of the command.
Result Restart(const Card &card, const AxisSet &set);
Result RestartAxis(const Axis &axis);

} // namespace trevik
