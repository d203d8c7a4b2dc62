#include "trevik-run/program.h"

#include <fmt/format.h>

#include <string_view>

namespace trevik_run
{
namespace
{

constexpr std::size_t shown_characters = 60;

// The word as a terminal can show it in one line: a file may hold anything.
std::string Printable(std::string_view word)
{
    std::string shown;
    for (const char c : word.substr(0, shown_characters)) {
        if (c >= ' ' && c <= '~') {
            shown += c;
        } else {
            shown += fmt::format("\\x{:02X}", static_cast<unsigned char>(c));
        }
    }
    return word.size() > shown_characters ? shown + "..." : shown;
}

} // namespace

std::string PartError::Message(const std::string &file) const
{
    if (word.empty()) {
        return fmt::format("{}:{}:{}: {}", file, line, column, what);
    }
    return fmt::format("{}:{}:{}: {}: {}", file, line, column, Printable(word), what);
}

} // namespace trevik_run
