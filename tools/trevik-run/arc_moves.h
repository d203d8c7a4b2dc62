// A planned arc as the moves that the card makes of it.
//
// The card runs an arc at one speed of its leading axis. (Its ramped arcs begin and end at the same speed, and their
// slow-down depends on a mode that the move before may have left behind.) So an arc that begins or ends slower than
// it runs is cut into treads, each at a constant speed: none is further from the next than what the motors take
// without a ramp.
#pragma once

#include <vector>

#include "trevik-run/card_moves.h"
#include "trevik-run/programmed_path.h"

namespace trevik_run
{

// What is left of an arc.
struct ArcRest {
    double from_share = 0;
    Pulses from{};
    Pulses to{};
};

struct ArcLimits {
    double start_pps = 0; // what the motors take without a ramp
    bool helices = true;  // false: A is in use, which a helix needs for counting its steps; lines take its place
};

// Begins and ends at these path speeds as nearly as the card can. May give no move: for an arc around less than a
// pulse.
void MakeArcMoves(const ProgrammedPath &path, const ArcRest &rest, const MoveSpeeds &speeds, const RampMaker &ramps,
                  const ArcLimits &limits, std::vector<CardMove> &moves);

} // namespace trevik_run
