// Look-ahead: the speed at which each move begins.
#pragma once

#include "trevik-run/machine.h"
#include "trevik-run/program.h"
#include "trevik-run/ramps.h"

namespace trevik_run
{

// The acceleration that the options ask for, in pulses/s^2 along the path: from the start speed to the rapid speed
// of the finest linear axis within the ramp time.
double WantedAcceleration(const Machine &machine);

// Fills entry_pps of every move. A contour is a chain of feed moves that meet at no more than the corner angle; it
// begins and ends at the start speed (or the feed, where that is lower) and never changes its speed faster than the
// ramps allow. Takes a program from CheckProgram. Time and memory: three passes over the moves, in place.
void PlanSpeeds(Program &program, const Machine &machine, const RampMaker &ramps);

// The speed at which move `index` ends.
double ExitSpeed(const Program &program, std::size_t index, const Machine &machine);

} // namespace trevik_run
