#include "trevik-run/program.h"

#include <fmt/format.h>

namespace trevik_run
{

std::string PartError::Message(const std::string &file) const
{
    if (word.empty()) {
        return fmt::format("{}:{}:{}: {}", file, line, column, what);
    }
    return fmt::format("{}:{}:{}: {}: {}", file, line, column, word, what);
}

} // namespace trevik_run
