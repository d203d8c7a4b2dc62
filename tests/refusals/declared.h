// The exported functions as the public headers declare them.
#pragma once

#include <algorithm>
#include <iterator>
#include <string_view>

namespace trevik::test
{

struct Declared {
    const char *name;
    bool has_axis;
};

inline constexpr Declared declared[] = {
#include "exported_functions.inc"
};

inline bool HasAxis(std::string_view name)
{
    return std::any_of(std::begin(declared), std::end(declared),
                       [=](const Declared &function) { return function.name == name && function.has_axis; });
}

} // namespace trevik::test
