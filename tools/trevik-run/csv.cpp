#include "trevik-run/csv.h"

#include <iterator>

namespace trevik_run
{
namespace
{

constexpr std::size_t flush_bytes = 1 << 16;
constexpr std::array<const char *, axis_count> columns = {"x_mm", "y_mm", "z_mm", "a_deg"};

} // namespace

CsvWriter::CsvWriter(std::FILE *file, std::uint32_t axes) : file_(file), axes_(axes)
{
    fmt::format_to(std::back_inserter(buffer_), "time_s");
    for (std::size_t i = 0; i < axis_count; ++i) {
        if ((axes_ >> i & 1U) != 0) {
            fmt::format_to(std::back_inserter(buffer_), ",{}", columns[i]);
        }
    }
    fmt::format_to(std::back_inserter(buffer_), ",speed_mm_min\n");
}

void CsvWriter::Take(const Sample &sample)
{
    fmt::format_to(std::back_inserter(buffer_), "{:.6f}", sample.time_s);
    for (std::size_t i = 0; i < axis_count; ++i) {
        if ((axes_ >> i & 1U) != 0) {
            fmt::format_to(std::back_inserter(buffer_), ",{:.4f}", sample.position[i]);
        }
    }
    fmt::format_to(std::back_inserter(buffer_), ",{:.1f}\n", sample.speed_mm_min);
    if (buffer_.size() >= flush_bytes) {
        Flush();
    }
}

void CsvWriter::Flush()
{
    failed_ = failed_ || std::fwrite(buffer_.data(), 1, buffer_.size(), file_) != buffer_.size();
    buffer_.clear();
}

bool CsvWriter::Finish()
{
    Flush();
    return !failed_ && std::fflush(file_) == 0;
}

} // namespace trevik_run
