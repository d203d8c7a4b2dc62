// The registers that were written, with what their values mean in pulses/s and ms.
#pragma once

#include <string>
#include <vector>

#include "trevik-scope/recording.h"

namespace trevik_scope
{

struct RegisterRow {
    std::string name;
    std::string value;
    std::string meaning;
};

struct RegisterGroup {
    double at_s = 0;
    std::string call;
    std::vector<RegisterRow> rows;
};

// One group for each call that wrote something.
std::vector<RegisterGroup> RegisterTable(const Recording &recording);

} // namespace trevik_scope
