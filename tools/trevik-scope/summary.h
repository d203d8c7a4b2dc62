// What a recording shows, in words.
#pragma once

#include <string>

#include "trevik-scope/registers.h"

namespace trevik_scope
{

std::string Headline(const Recording &recording); // duration, end, highest speed; one line
std::string SummaryText(const Motion &motion, const Recording &recording,
                        const std::vector<RegisterGroup> &registers);
std::string FailureText(const Recording &recording);

} // namespace trevik_scope
