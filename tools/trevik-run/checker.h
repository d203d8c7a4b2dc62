// Checks a program against a machine and a card, before anything moves.
#pragma once

#include <cstdint>

#include "trevik-run/machine.h"
#include "trevik-run/program.h"

namespace trevik_run
{

struct CheckedProgram {
    std::uint32_t axes = 0;     // bits of the axes to drive, at least two: a line needs two
    std::uint32_t segments = 0; // moves without the dwells
    double top_pps = 0;         // highest speed of all moves
    double path_mm = 0;         // degrees where only A turns
    double path_pulses = 0;
    double dwell_s = 0;
};

// Fills length and speed of every move and drops moves of no whole pulse. Throws PartError for a target or a speed
// that the card cannot express.
CheckedProgram CheckProgram(Program &program, const Machine &machine);

} // namespace trevik_run
