// A motion as the calls of the library that make it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "trevik-scope/motion.h"

namespace trevik_scope
{

struct Call {
    double at_s = 0;
    std::string name;
    std::string label; // in the drawing; empty for the first ones
    std::string code;  // as one writes it in C
    std::function<std::uint32_t()> make;
};

// In the order in which they are made; those that begin the motion have the time 0.
std::vector<Call> CallsOf(const Motion &motion);

// A ramp that the calls ask for; speeds without their sign.
struct AskedRamp {
    double from_pps = 0;
    double to_pps = 0;
    double ms = 0;
};

std::vector<AskedRamp> AskedRampsOf(const Motion &motion);

// How long to look at a motion that does not end by itself: as long as asked for, otherwise until its last ramp has
// been over for a while.
double LongestSeconds(const Motion &motion);

} // namespace trevik_scope
