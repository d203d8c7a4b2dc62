// What the result codes of the library mean, in words.
#pragma once

#include <cstdint>

namespace trevik_tools
{

const char *ResultText(std::uint32_t code);

} // namespace trevik_tools
