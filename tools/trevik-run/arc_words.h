// From the words of an arc block to its circle.
#pragma once

#include <array>
#include <string>

#include "trevik-run/program.h"

namespace trevik_run
{

// X and Y in mm, machine coordinates.
struct ArcEnds {
    std::array<double, 2> from{};
    std::array<double, 2> to{};
    std::array<double, 2> center{}; // where by_radius is not set
    double radius = 0;              // otherwise: above 0 the arc of at most half a turn, below 0 the other one
    bool by_radius = false;
    bool clockwise = false;
};

// Empty, or what is wrong. The distances of the ends from the center may differ by the tolerance or by 0.1 % of the
// radius, whichever is more. An arc by its center that ends where it begins is a whole turn.
std::string MakeArc(const ArcEnds &ends, double tolerance_mm, Arc &arc);

} // namespace trevik_run
