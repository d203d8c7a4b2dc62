// Accelerations and ramps, measured on a recording.
#pragma once

#include <vector>

#include "trevik-scope/recording.h"

namespace trevik_scope
{

// Between two samples. Where the speed jumps there is none.
struct Interval {
    double begin_s = 0;
    double end_s = 0;
    double acceleration = 0; // pulses/s2
};

std::vector<Interval> IntervalsOf(const Recording &recording);

// A stretch in which the speed only rises or only falls; speeds without their sign.
struct Ramp {
    double begin_s = 0;
    double end_s = 0;
    double from_pps = 0;
    double to_pps = 0;
};

std::vector<Ramp> RampsOf(const Recording &recording);

double HighestSpeed(const Recording &recording); // without its sign

} // namespace trevik_scope
