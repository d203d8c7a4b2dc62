// A page of SVG with number axes and grids.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <string>
#include <utility>

namespace trevik_tools
{

struct Range {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void Include(double value)
    {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    double Size() const { return high - low; }
};

std::string PlainNumber(double value);   // 1e+06
std::string GroupedNumber(double value); // 1,000,000

// A number axis: values to places on the page.
struct Scale {
    Range values;
    double low_at = 0;
    double high_at = 1;
    std::string (*text)(double) = PlainNumber; // of its tick values
    double tick_distance = 50;                 // at least, about; upwards

    double At(double value) const { return low_at + (value - values.low) / values.Size() * (high_at - low_at); }
};

std::string Escaped(const std::string &text);

// The style of the page, its text size and the classes grid, frame and unit are the caller's.
class SvgPage
{
  protected:
    template <typename... Args>
    void Put(fmt::format_string<Args...> text, Args &&...args)
    {
        fmt::format_to(std::back_inserter(out_), text, std::forward<Args>(args)...);
    }
    void BeginPage(double width, double height, const char *style);
    std::string EndPage();

    // Lines at round values, and the values left of and below the frame. An empty label leaves the values across
    // out.
    void DrawGrid(const Scale &across, const Scale &up, const std::string &across_label,
                  const std::string &up_label);

  private:
    void DrawTicksAcross(const Scale &across, const Scale &up, bool values);
    void DrawTicksUp(const Scale &across, const Scale &up);

    std::string out_;
};

} // namespace trevik_tools
