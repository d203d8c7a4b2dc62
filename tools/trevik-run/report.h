// What a run came to.
#pragma once

#include <string>

#include "trevik-run/card.h"
#include "trevik-run/deviation.h"
#include "trevik-run/executor.h"

namespace trevik_run
{

struct Report {
    RunEnd end = RunEnd::completed;
    CardError error; // of a failed run
    std::uint32_t axes = 0;
    std::uint32_t lines = 0;
    std::uint32_t segments = 0; // in the program
    std::uint32_t segments_begun = 0;
    double path_mm = 0;
    double machine_s = 0;
    double wall_s = 0;
    Deviation deviation;
    Pulses position{};   // where the card says that it stands
    Pulses programmed{}; // where the program ends
};

std::string ReportText(const Report &report, const Machine &machine);

// Axis by axis in mm (degrees) and pulses, on one line.
std::string PositionText(const Report &report, const Machine &machine);

// Size, time and deviation on one line, as under the drawing's title.
std::string SummaryText(const Report &report);

} // namespace trevik_run
