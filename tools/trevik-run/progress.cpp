#include "trevik-run/progress.h"

#include <fmt/format.h>
#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace trevik_run
{
namespace
{

constexpr int bar_width = 32;
constexpr auto redraw_pause = std::chrono::milliseconds(100);
constexpr std::uint32_t calls_per_look = 64; // looking at the wall clock costs as much as a sample

bool IsTerminal()
{
#ifdef _WIN32
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

std::string MinutesSeconds(double seconds)
{
    const long whole = std::lround(seconds);
    return fmt::format("{}:{:02}", whole / 60, whole % 60);
}

} // namespace

Progress::Style Progress::StyleFor(bool quiet)
{
    if (quiet) {
        return Style::none;
    }
    return IsTerminal() ? Style::bar : Style::lines;
}

Progress::Progress(Style style, std::uint32_t segments) : style_(style), segments_(segments) {}

void Progress::Update(std::uint32_t segments_begun, double fraction, double machine_s)
{
    if (style_ == Style::lines) {
        PrintQuarters(segments_begun, fraction, machine_s);
        return;
    }
    if (style_ == Style::none || ++calls_ % calls_per_look != 0) {
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (now >= redraw_at_) {
        redraw_at_ = now + redraw_pause;
        Redraw(segments_begun, fraction);
    }
}

void Progress::Redraw(std::uint32_t segments_begun, double fraction)
{
    const double elapsed_s = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    const auto filled = static_cast<int>(std::clamp(fraction, 0.0, 1.0) * bar_width);
    const std::string left =
        fraction > 0.01 ? MinutesSeconds(elapsed_s * (1 - fraction) / fraction) + " left" : "starting";
    fmt::print(stderr, "\r[{:#<{}}{:.<{}}] {:3.0f} %  {}/{} segments  {}   ", "", filled, "", bar_width - filled,
               100 * fraction, segments_begun, segments_, left);
    std::fflush(stderr);
    drawn_ = true;
}

void Progress::PrintQuarters(std::uint32_t segments_begun, double fraction, double machine_s)
{
    while (next_quarter_ <= 4 && fraction * 4 >= next_quarter_) {
        fmt::print(stderr, "{:3} %: {} of {} segments, {:.1f} s\n", next_quarter_ * 25, segments_begun, segments_,
                   machine_s);
        ++next_quarter_;
    }
}

void Progress::Finish()
{
    if (drawn_) {
        fmt::print(stderr, "\r{:100}\r", "");
    }
}

} // namespace trevik_run
