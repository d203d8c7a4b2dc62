// What the command line says.
#pragma once

#include <string>

#include "trevik-scope/motion.h"

namespace trevik_scope
{

struct Options {
    Motion motion;
    std::string svg = "trevik-scope.svg";
    std::string csv; // empty: none
};

// Returns true when the program is to go on; otherwise `status` is the exit status.
bool ParseOptions(int argc, const char *const *argv, Options &options, int &status);

} // namespace trevik_scope
