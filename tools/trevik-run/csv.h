// Samples as a table: time, the axes in use, path speed.
#pragma once

#include <fmt/format.h>

#include <cstdio>
#include <string>

#include "trevik-run/sample.h"

namespace trevik_run
{

class CsvWriter : public SampleSink
{
  public:
    // `file` stays the caller's. axes: bits of the axes to write.
    CsvWriter(std::FILE *file, std::uint32_t axes);
    void Take(const Sample &sample) override;
    bool Finish(); // false: the file could not be written

  private:
    void Flush();

    std::FILE *file_;
    std::uint32_t axes_;
    bool failed_ = false;
    fmt::memory_buffer buffer_;
};

} // namespace trevik_run
