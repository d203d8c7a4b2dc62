#include "trevik-run/svg.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>

#include "shared/svg_page.h"

namespace trevik_run
{
namespace
{

using trevik_tools::Escaped;
using trevik_tools::Range;
using trevik_tools::Scale;
using trevik_tools::SvgPage;

constexpr double page_width = 1000;
constexpr double plot_left = 84;
constexpr double plot_right = 970;
constexpr double path_top = 96;
constexpr double path_max_height = 720;
constexpr double path_min_height = 160;
constexpr double speed_height = 190;
constexpr double gap = 84;

constexpr const char *style =
    "<style>text{font:13px 'DejaVu Sans',Verdana,sans-serif;fill:#334}"
    ".title{font-size:21px;font-weight:bold;fill:#1b2a41}.unit{fill:#556;font-size:14px}"
    ".grid{stroke:#e3e7ee;stroke-width:1}.frame{fill:none;stroke:#8a94a6;stroke-width:1}"
    ".cut{fill:none;stroke:#14508c;stroke-width:1.7;stroke-linejoin:round;stroke-linecap:round}"
    ".rapid{fill:none;stroke:#c98a3c;stroke-width:1;stroke-dasharray:5 4;opacity:.75}"
    ".band{fill:#14508c;opacity:.22}.speed{fill:none;stroke:#14508c;stroke-width:1.2;stroke-linejoin:round}"
    "</style>\n";

class Page : private SvgPage
{
  public:
    std::string Draw(const Trace &trace, const DrawingTitle &title);

  private:
    void PlacePath(const Trace &trace);
    void DrawTitle(const DrawingTitle &title);
    void DrawPath(const Trace &trace);
    void DrawStroke(const Stroke &stroke, bool shaded);
    void DrawMark(const Point &at, const char *colour, const char *name, double lift);
    void DrawLegend(bool shaded);
    void DrawSpeed(const Trace &trace);

    Scale x_;
    Scale y_;
    double path_bottom_ = 0;
};

std::string Page::Draw(const Trace &trace, const DrawingTitle &title)
{
    PlacePath(trace);
    const double height = path_bottom_ + gap + speed_height + 60;
    BeginPage(page_width, height, style);
    DrawTitle(title);
    DrawPath(trace);
    DrawSpeed(trace);
    return EndPage();
}

// Equal scales on both axes; the smaller extent is widened until the picture fills the width or the height.
void Page::PlacePath(const Trace &trace)
{
    for (const Stroke &stroke : trace.Strokes()) {
        for (const Point &point : stroke.points) {
            x_.values.Include(point.x);
            y_.values.Include(point.y);
        }
    }
    const double margin = std::max({x_.values.Size(), y_.values.Size(), 1.0}) * 0.04;
    for (Range *range : {&x_.values, &y_.values}) {
        *range = std::isfinite(range->low) ? Range{range->low - margin, range->high + margin} : Range{0, 1};
    }
    const double width = plot_right - plot_left;
    const double wanted = width * y_.values.Size() / x_.values.Size();
    const double height = std::clamp(wanted, path_min_height, path_max_height);
    Range &widened = wanted > height ? x_.values : y_.values;
    const double more = wanted > height ? y_.values.Size() * width / height - x_.values.Size()
                                        : x_.values.Size() * height / width - y_.values.Size();
    widened.low -= more / 2;
    widened.high += more / 2;
    path_bottom_ = path_top + height;
    x_.low_at = plot_left;
    x_.high_at = plot_right;
    y_.low_at = path_bottom_;
    y_.high_at = path_top;
}

void Page::DrawTitle(const DrawingTitle &title)
{
    Put("<text class=\"title\" x=\"{}\" y=\"36\">{}</text>\n", plot_left, Escaped(title.name));
    Put("<text class=\"unit\" x=\"{}\" y=\"60\">{}</text>\n", plot_left, Escaped(title.summary));
}

void Page::DrawPath(const Trace &trace)
{
    DrawGrid(x_, y_, "X in mm", "Y in mm");
    for (const bool rapid : {true, false}) { // cuts lie over rapids
        for (const Stroke &stroke : trace.Strokes()) {
            if (stroke.rapid == rapid && stroke.points.size() > 1) {
                DrawStroke(stroke, trace.ShadedByA());
            }
        }
    }
    if (!trace.Strokes().empty()) {
        DrawMark(trace.Strokes().front().points.front(), "#2a9d4a", "start", -9);
        DrawMark(trace.Strokes().back().points.back(), "#c0392b", "end", 19);
    }
    DrawLegend(trace.ShadedByA());
}

void Page::DrawStroke(const Stroke &stroke, bool shaded)
{
    Put("<path class=\"{}\"", stroke.rapid ? "rapid" : "cut");
    if (shaded && !stroke.rapid) {
        Put(" style=\"stroke:hsl({},75%,42%)\"", stroke.shade * 360 / shade_count);
    }
    const char *command = " d=\"M";
    for (const Point &point : stroke.points) {
        Put("{}{:.1f} {:.1f}", command, x_.At(point.x), y_.At(point.y));
        command = "L";
    }
    Put("\"/>\n");
}

void Page::DrawMark(const Point &at, const char *colour, const char *name, double lift)
{
    const double x = x_.At(at.x);
    const double y = y_.At(at.y);
    Put("<circle cx=\"{0:.1f}\" cy=\"{1:.1f}\" r=\"4.5\" fill=\"{2}\" stroke=\"#fff\" stroke-width=\"1.2\"/>"
        "<text x=\"{3:.1f}\" y=\"{4:.1f}\" style=\"fill:{2}\">{5}</text>\n",
        x, y, colour, x + 7, y + lift, name);
}

void Page::DrawLegend(bool shaded)
{
    const double y = path_top - 14;
    Put("<path class=\"cut\" d=\"M{0} {1}h34\"/><text x=\"{2}\" y=\"{3}\">feed</text>"
        "<path class=\"rapid\" d=\"M{4} {1}h34\"/><text x=\"{5}\" y=\"{3}\">rapid</text>\n",
        plot_right - 190, y, plot_right - 150, y + 4, plot_right - 95, plot_right - 55);
    if (!shaded) {
        return;
    }
    Put("<text x=\"{}\" y=\"{}\">colour: A, 0\u00b0</text>", plot_left, y + 4);
    for (int shade = 0; shade < shade_count; ++shade) {
        Put("<rect x=\"{}\" y=\"{}\" width=\"7\" height=\"9\" fill=\"hsl({},75%,42%)\"/>",
            plot_left + 98 + 7 * shade, y - 5, shade * 360 / shade_count);
    }
    Put("<text x=\"{}\" y=\"{}\">360\u00b0</text>\n", plot_left + 98 + 7 * shade_count + 5, y + 4);
}

// The line follows the highest speeds; the band under it shows how far the speed fell between two points.
void Page::DrawSpeed(const Trace &trace)
{
    const std::vector<SpeedBucket> &speeds = trace.Speeds();
    double top = 1;
    for (const SpeedBucket &bucket : speeds) {
        top = std::max(top, bucket.highest);
    }
    const Scale time = {{0, std::max(trace.EndSeconds(), 1e-3)}, plot_left, plot_right};
    const double base = path_bottom_ + gap + speed_height;
    const Scale speed = {{0, top * 1.06}, base, base - speed_height};
    DrawGrid(time, speed, "time in s", trace.ShadedByA() ? "speed in mm/min (\u00b0/min)" : "speed in mm/min");
    std::string upper;
    std::string lower;
    for (std::size_t i = 0; i < speeds.size(); ++i) {
        if (speeds[i].highest < 0) {
            continue;
        }
        const double at =
            time.At(std::min((static_cast<double>(i) + 0.5) * trace.BucketSeconds(), trace.EndSeconds()));
        fmt::format_to(std::back_inserter(upper), "{:.1f} {:.1f} ", at, speed.At(speeds[i].highest));
        lower.insert(0, fmt::format("{:.1f} {:.1f} ", at, speed.At(speeds[i].lowest)));
    }
    Put("<polygon class=\"band\" points=\"{0}{1}\"/><polyline class=\"speed\" points=\"{0}\"/>\n", upper, lower);
    Put("<text class=\"unit\" x=\"{:.1f}\" y=\"{:.1f}\" text-anchor=\"end\">path speed; shaded: down to the lowest "
        "within "
        "{:.2g} s</text>\n",
        plot_right, base - speed_height - 8, trace.BucketSeconds());
}

} // namespace

std::string DrawSvg(const Trace &trace, const DrawingTitle &title)
{
    return Page().Draw(trace, title);
}

} // namespace trevik_run
