// Single-axis position moves.
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

// The register values of a move, without its distance.
struct PositionPlan {
    ProfileRegisters profile;
    RampDownCase rampdown = RampDownCase::Automatic;
};

// Speeds, rates and S ranges, before the ramp-down is decided.
ProfileRegisters PlanRamps(MoveSpeeds speeds, const MoveRamps &ramps, std::uint32_t multiplier);

// Everything, for a move over `distance` pulses (an absolute value).
PositionPlan PlanPosition(MoveSpeeds speeds, const MoveRamps &ramps, std::uint32_t multiplier,
                          std::uint32_t distance);

// Moves to a destination. `trigger` as the caller gave it: Param above 2. Other results: MoveAllowed's, Param for a
// maximum speed too high or nothing to move, and that of the start command.
Result TPositionMove(const Axis &axis, Destination destination, MoveSpeeds speeds, RampTimes times,
                     std::uint8_t trigger);
Result SPositionMove(const Axis &axis, SRangeSpeeds ranges, Destination destination, MoveSpeeds speeds,
                     RampTimes times, std::uint8_t trigger);

} // namespace trevik
