// The circle in whole pulses that the card is given for a piece of a programmed arc.
//
// The card's circle goes through the whole pulse where the piece begins, around a center in whole pulses, and ends on
// the whole pulse where the piece ends if that is within a pulse of the circle. All three are rounded; which center
// is taken decides how near the circle is to the programmed one.
#pragma once

#include "trevik-run/programmed_path.h"

namespace trevik_run
{

struct ArcPiece {
    double from_share = 0;
    double to_share = 1;
    Pulses from{}; // the nearest whole pulses of these shares
    Pulses to{};
};

struct PulseCircle {
    std::array<std::int32_t, 2> center{};
    double deviation = 0; // most that the card's pulses will be off the programmed path, in pulses
};

// A whole turn, or at most three quarters of one. False where no center keeps the card's pulses as near to the path
// as the rounded ends allow: a shorter piece may do.
bool FitCircle(const ProgrammedPath &path, const ArcPiece &piece, PulseCircle &circle);

} // namespace trevik_run
