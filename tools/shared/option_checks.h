// Checks of command-line values. Included where CLI11 is, which is slow to compile.
#pragma once

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <string>

namespace trevik_tools
{

// Unlike CLI::Range it refuses what is not a number too, and its message is short.
inline CLI::Validator Between(double low, double high)
{
    const std::string range = fmt::format("{} to {}", low, high);
    const auto check = [low, high, range](const std::string &text) {
        double value = 0;
        const bool inside = CLI::detail::lexical_cast(text, value) && value >= low && value <= high;
        return inside ? std::string() : fmt::format("{} is not a number from {}", text, range);
    };
    return CLI::Validator(check, "in [" + range + "]");
}

} // namespace trevik_tools
