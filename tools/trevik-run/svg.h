// A run as a drawing: the path from above, and below it the speed over time.
#pragma once

#include <string>
#include <vector>

#include "trevik-run/trace.h"

namespace trevik_run
{

struct DrawingTitle {
    std::string name;
    std::string summary; // one line under the name
};

std::string DrawSvg(const Trace &trace, const DrawingTitle &title);

} // namespace trevik_run
