// What the command line says.
#pragma once

#include <string>

#include "trevik-run/machine.h"

namespace trevik_run
{

struct Options {
    Machine machine;
    std::uint8_t card = 0;
    double arc_tolerance_mm = 0.005;
    bool block_delete = false; // pass over lines that begin with /
    bool realtime = false;
    bool check = false; // read and check only
    bool quiet = false;
    double sample_ms = 1;
    std::string part; // file name
    std::string svg;  // empty: none
    std::string csv;
};

// Returns true when the program is to go on; otherwise `status` is the exit status.
bool ParseOptions(int argc, const char *const *argv, Options &options, int &status);

} // namespace trevik_run
