// A recording as a drawing: position, speed and acceleration over time, the registers beside them.
#pragma once

#include <string>

#include "trevik-scope/registers.h"

namespace trevik_scope
{

std::string DrawSvg(const Motion &motion, const Recording &recording, const std::vector<RegisterGroup> &registers);

} // namespace trevik_scope
