// A C file that closes itself.
#pragma once

#include <cstdio>
#include <memory>

namespace trevik_tools
{

struct FileCloser {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

} // namespace trevik_tools
