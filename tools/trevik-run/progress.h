// Progress on standard error: a bar on a terminal, a line at every quarter otherwise.
#pragma once

#include <chrono>
#include <cstdint>

namespace trevik_run
{

class Progress
{
  public:
    enum class Style : std::uint8_t { none, lines, bar };

    Progress(Style style, std::uint32_t segments);
    static Style StyleFor(bool quiet);

    // Cheap enough to be called at every sample.
    bool Hidden() const { return style_ == Style::none; }
    void Update(std::uint32_t segments_begun, double fraction, double machine_s);
    void Finish(); // leaves the bar's line

  private:
    void Redraw(std::uint32_t segments_begun, double fraction);
    void PrintQuarters(std::uint32_t segments_begun, double fraction, double machine_s);

    Style style_;
    std::uint32_t segments_;
    std::uint32_t calls_ = 0;
    int next_quarter_ = 1;
    bool drawn_ = false;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point redraw_at_ = start_;
};

} // namespace trevik_run
