// Reads a part program to its end and turns it into moves.
#pragma once

#include <string>
#include <string_view>

#include "trevik-run/program.h"

namespace trevik_run
{

struct ReaderOptions {
    bool block_delete = false;       // pass over lines that begin with /
    Vec4 start{};                    // where the axes stand
    double arc_tolerance_mm = 0.005; // see MakeArc
};

// Throws PartError.
Program ReadProgram(std::string_view text, const ReaderOptions &options);

} // namespace trevik_run
