// Single-axis position moves and the change of a running one's end.
#pragma once

#include "driver/card.h"
#include "motion/move.h"
#include "motion/profile.h"

#include <cstdint>

namespace trevik
{

// Signed pulses; a relative distance or an absolute position.
struct Destination {
    std::uint32_t coordinate;
    bool absolute;
};

// T-curve move to a destination. `trigger` as the caller gave it: Param above 2. Other results: MoveAllowed's,
// Param for a maximum speed too high or nothing to move, and that of the start command.
Result TPositionMove(const Axis &axis, Destination destination, MoveSpeeds speeds, RampTimes times,
                     std::uint8_t trigger);

// The register values of a T-curve move over `distance` pulses (an absolute value), without its distance.
struct TPositionPlan {
    ProfileRegisters profile;
    RampDownCase rampdown = RampDownCase::Automatic;
};
TPositionPlan PlanTPosition(MoveSpeeds speeds, RampTimes times, std::uint32_t multiplier, std::uint32_t distance);

// New end for the running move, measured from its start. NotMoving: idle, or in continuous mode.
Result PositionChange(const Axis &axis, Destination destination);

} // namespace trevik
