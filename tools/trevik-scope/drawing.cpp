#include "trevik-scope/drawing.h"

#include <algorithm>
#include <cmath>

#include "shared/path.h"
#include "shared/svg_page.h"
#include "trevik-scope/ramps.h"
#include "trevik-scope/summary.h"

namespace trevik_scope
{
namespace
{

using trevik_tools::Escaped;
using trevik_tools::GroupedNumber;
using trevik_tools::PathThinner;
using trevik_tools::Point;
using trevik_tools::Range;
using trevik_tools::Scale;
using trevik_tools::SvgPage;

constexpr double page_width = 1000;
constexpr double plot_left = 92;
constexpr double plot_right = 632;
constexpr double table_left = 690;
constexpr double table_value_right = 866;
constexpr double table_meaning_left = 874;
constexpr double page_right = 988;
constexpr double title_top = 30;
constexpr double line_height = 20;
constexpr double row_height = 16;
constexpr double plot_gap = 20;
constexpr double axis_height = 56; // under the lowest plot: values and label
constexpr double visible = 0.15;   // px

constexpr const char *style =
    "<style>text{font:12px 'DejaVu Sans',Verdana,sans-serif;fill:#334}"
    "text.code{font:bold 14px 'DejaVu Sans Mono',monospace;fill:#1b2a41}"
    "text.later{font:13px 'DejaVu Sans Mono',monospace;fill:#1b2a41}"
    "text.unit{fill:#556;font-size:13px}text.mark{fill:#a3481f;font-size:11.5px}"
    "text.edge{fill:#6b7688;font-size:11px}"
    "text.head{font-weight:bold;font-size:11.5px;fill:#1b2a41}text.reg{font:10.5px 'DejaVu Sans Mono',monospace}"
    "text.mean{font-size:10.5px;fill:#556}"
    ".grid{stroke:#e6e9ef;stroke-width:1}.frame{fill:none;stroke:#9aa3b2;stroke-width:1}"
    ".rule{stroke:#c9cfd9;stroke-width:1}.zero{stroke:#9aa3b2;stroke-width:1}"
    ".curve{fill:none;stroke-width:1.8;stroke-linejoin:round;stroke-linecap:round}"
    ".event{stroke:#a3481f;stroke-width:1;stroke-dasharray:4 3}"
    ".asked{stroke:#8b96a8;stroke-width:1;stroke-dasharray:2 3}"
    ".switch{fill:#2a9d4a;opacity:.14}</style>\n";

struct Plot {
    const char *quantity;
    const char *unit;
    const char *colour;
    double height;
    std::vector<Point> curve = {}; // seconds and units; when it is placed, places on the page
    Scale up = {};
    double unit_size = 1; // in which its values are told
    std::string label = {};
};

// Beside the right edge of a plot.
struct EdgeLabel {
    double y;
    std::string text;
};

class Page : private SvgPage
{
  public:
    Page(const Motion &motion, const Recording &recording, const std::vector<RegisterGroup> &registers)
        : motion_(motion), recording_(recording), registers_(registers)
    {
    }
    std::string Draw();

  private:
    std::size_t TitleLines() const { return recording_.calls.size(); }
    double TableHeight() const;
    void PlaceTime();
    void PlacePlots(double top);
    void PlacePlot(Plot &plot, double &top);
    void DrawTitle();
    void DrawPlot(const Plot &plot, const char *time_label);
    void DrawCurve(const Plot &plot);
    void DrawAsked();
    void DrawSwitches();
    void DrawIndex(std::vector<EdgeLabel> &labels);
    void DrawEdgeLabels(const Plot &plot, std::vector<EdgeLabel> labels);
    void DrawEvents();
    void DrawTable(double top);
    void DrawRow(const RegisterRow &row, double y);

    const Motion &motion_;
    const Recording &recording_;
    const std::vector<RegisterGroup> &registers_;
    Plot position_ = {"position", "pulses", "#14508c", 185};
    Plot speed_ = {"speed", "pulses/s", "#1f7a4d", 185};
    Plot acceleration_ = {"acceleration", "pulses/s²", "#8a3ffc", 170};
    Scale time_;
    double time_unit_ = 1000; // of it a second has
    double rest_s_ = 0;       // before and after the motion
};

// At rest before and, if it ended, after; between them what was sampled. In seconds.
std::vector<Point> SampledCurve(const Recording &recording, double rest_s, double Sample::*quantity)
{
    std::vector<Point> curve = {{-rest_s, 0}, {0, 0}};
    for (const Sample &sample : recording.samples) {
        curve.push_back({sample.time_s, sample.*quantity});
    }
    if (recording.ended) {
        curve.push_back({recording.EndSeconds() + rest_s, recording.samples.back().*quantity});
    }
    return curve;
}

// Even where it changes slowly, with a step where it changes at once.
std::vector<Point> AccelerationCurve(const Recording &recording, double rest_s)
{
    constexpr double step_share = 0.06;
    const std::vector<Interval> intervals = IntervalsOf(recording);
    double highest = 0;
    for (const Interval &interval : intervals) {
        highest = std::max(highest, std::fabs(interval.acceleration));
    }
    std::vector<Point> curve = {{-rest_s, 0}, {0, 0}};
    double before = 0;
    for (const Interval &interval : intervals) {
        if (std::fabs(interval.acceleration - before) > highest * step_share) {
            curve.push_back({interval.begin_s, before});
            curve.push_back({interval.begin_s, interval.acceleration});
        }
        curve.push_back({(interval.begin_s + interval.end_s) / 2, interval.acceleration});
        before = interval.acceleration;
    }
    curve.push_back({recording.EndSeconds(), before});
    if (recording.ended) {
        curve.push_back({recording.EndSeconds(), 0});
        curve.push_back({recording.EndSeconds() + rest_s, 0});
    }
    return curve;
}

std::string Page::Draw()
{
    PlaceTime();
    const double top = title_top + line_height * static_cast<double>(TitleLines()) + 44;
    PlacePlots(top);
    const double bottom = std::max(acceleration_.up.low_at + axis_height, top + TableHeight() + 12);
    BeginPage(page_width, bottom, style);
    DrawTitle();
    DrawPlot(position_, "");
    DrawSwitches();
    DrawAsked();
    DrawPlot(speed_, "");
    DrawPlot(acceleration_, time_unit_ == 1 ? "time, s" : "time, ms");
    DrawEvents();
    DrawTable(top);
    return EndPage();
}

void Page::PlaceTime()
{
    constexpr double rest_share = 0.025;
    constexpr double longest_in_ms = 10;
    const double end_s = recording_.EndSeconds();
    rest_s_ = end_s * rest_share;
    time_unit_ = end_s < longest_in_ms ? 1000 : 1;
    const double last_s = end_s + (recording_.ended ? rest_s_ : 0);
    time_ = {{-rest_s_ * time_unit_, last_s * time_unit_}, plot_left, plot_right, GroupedNumber};
}

void Page::PlacePlots(double top)
{
    position_.curve = SampledCurve(recording_, rest_s_, &Sample::position);
    speed_.curve = SampledCurve(recording_, rest_s_, &Sample::speed_pps);
    acceleration_.curve = AccelerationCurve(recording_, rest_s_);
    for (Plot *plot : {&position_, &speed_, &acceleration_}) {
        PlacePlot(*plot, top);
    }
}

// Large numbers are told in thousands (k) or millions (M).
void Page::PlacePlot(Plot &plot, double &top)
{
    Range range = {0, 0};
    for (const Point &point : plot.curve) {
        range.Include(point.y);
    }
    const double margin = std::max(range.Size(), 1e-3) * 0.07;
    range = {range.low < 0 ? range.low - margin : 0, range.high > 0 ? range.high + margin : 0};
    if (range.Size() == 0) {
        range = {-1, 1};
    }
    const double largest = std::max(range.high, -range.low);
    const double unit = plot.unit_size = largest < 1e6 ? 1 : largest < 1e9 ? 1e3 : 1e6;
    const char *prefix = unit == 1 ? "" : unit == 1e3 ? "k " : "M ";
    plot.label = fmt::format("{}, {}{}", plot.quantity, prefix, plot.unit);
    plot.up = {{range.low / unit, range.high / unit}, top + plot.height, top, GroupedNumber, 30};
    for (Point &point : plot.curve) {
        point = {time_.At(point.x * time_unit_), plot.up.At(point.y / unit)};
    }
    top += plot.height + plot_gap;
}

void Page::DrawTitle()
{
    double y = title_top;
    for (const CallWrites &made : recording_.calls) {
        const bool later = made.call.at_s > 0;
        const std::string when = later ? fmt::format("at {:g} ms  ", made.call.at_s * 1000) : "";
        Put("<text class=\"{}\" x=\"24\" y=\"{}\" xml:space=\"preserve\">{}</text>\n", later ? "later" : "code", y,
            Escaped(when + made.call.code));
        y += line_height;
    }
    Put("<text class=\"unit\" x=\"24\" y=\"{}\">{}</text>\n", y, Escaped(Headline(recording_)));
}

void Page::DrawPlot(const Plot &plot, const char *time_label)
{
    DrawGrid(time_, plot.up, time_label, plot.label);
    if (plot.up.values.low < 0 && plot.up.values.high > 0) {
        Put("<path class=\"zero\" d=\"M{} {:.1f}H{}\"/>\n", plot_left, plot.up.At(0), plot_right);
    }
    DrawCurve(plot);
}

void Page::DrawCurve(const Plot &plot)
{
    PathThinner thinner(visible);
    std::vector<Point> points;
    thinner.Begin(points, plot.curve.front());
    for (const Point &point : plot.curve) {
        thinner.Add(points, point);
    }
    Put("<polyline class=\"curve\" stroke=\"{}\" points=\"", plot.colour);
    for (const Point &point : points) {
        Put("{:.1f},{:.1f} ", point.x, point.y);
    }
    Put("\"/>\n");
}

// Speeds that the first call asks for.
void Page::DrawAsked()
{
    if (motion_.kind == Kind::handwheel) {
        return;
    }
    const double sign = speed_.up.values.high > 0 ? 1 : -1;
    std::vector<EdgeLabel> labels;
    for (const auto &[pps, name] :
         {std::pair(motion_.profile.max, "max"), std::pair(motion_.profile.start, "start")}) {
        const double value = sign * std::fabs(pps) / speed_.unit_size;
        if (value >= speed_.up.values.low && value <= speed_.up.values.high) {
            const double y = speed_.up.At(value);
            Put("<path class=\"asked\" d=\"M{} {:.1f}H{}\"/>\n", plot_left, y, plot_right);
            labels.push_back({y, name});
        }
    }
    DrawEdgeLabels(speed_, std::move(labels));
}

// Where the switches of the machine are on.
void Page::DrawSwitches()
{
    const Range &seen = position_.up.values;
    std::vector<EdgeLabel> labels;
    for (const Switch &one : motion_.switches) {
        const double low = std::max(seen.low, (one.first - 0.5) / position_.unit_size);
        const double high = std::min(seen.high, (one.last + 0.5) / position_.unit_size);
        if (low < high) {
            const double top = position_.up.At(high);
            const double height = std::max(position_.up.At(low) - top, 1.5);
            Put("<rect class=\"switch\" x=\"{}\" y=\"{:.1f}\" width=\"{}\" height=\"{:.1f}\"/>\n", plot_left, top,
                plot_right - plot_left, height);
            labels.push_back({top + height / 2, one.name});
        }
    }
    DrawIndex(labels);
    DrawEdgeLabels(position_, std::move(labels));
}

// Ticks at the index pulses, where they are not too many to be told apart.
void Page::DrawIndex(std::vector<EdgeLabel> &labels)
{
    constexpr double most = 60;
    const Range &seen = position_.up.values;
    const double period = motion_.index.period / position_.unit_size;
    if (period == 0 || seen.Size() / period > most) {
        return;
    }
    const double any = motion_.index.first / position_.unit_size;
    const double lowest = any + std::ceil((seen.low - any) / period) * period;
    const int count = static_cast<int>((seen.high - lowest) / period) + 1;
    for (int i = 0; i < count; ++i) {
        Put("<path class=\"frame\" d=\"M{0} {1:.1f}h6M{2} {1:.1f}h-6\"/>", plot_left,
            position_.up.At(lowest + i * period), plot_right);
    }
    const double end = recording_.samples.back().position / position_.unit_size;
    labels.push_back({position_.up.At(any + std::round((end - any) / period) * period), "index"});
}

// Pushed apart where they would overlap.
void Page::DrawEdgeLabels(const Plot &plot, std::vector<EdgeLabel> labels)
{
    constexpr double apart = 13;
    std::sort(labels.begin(), labels.end(), [](const EdgeLabel &a, const EdgeLabel &b) { return a.y > b.y; });
    double lowest = plot.up.low_at;
    for (const EdgeLabel &label : labels) {
        const double y = std::min(label.y, lowest);
        Put("<text class=\"edge\" x=\"{}\" y=\"{:.1f}\">{}</text>\n", plot_right + 5, y + 4, label.text);
        lowest = y - apart;
    }
}

void Page::DrawEvents()
{
    constexpr double label_width = 70;
    double free_from[2] = {0, 0}; // the labels stand in two rows where they are close together
    for (const CallWrites &made : recording_.calls) {
        if (made.call.at_s <= 0) {
            continue;
        }
        const double x = time_.At(made.call.at_s * time_unit_);
        const int row = x < free_from[0] ? 1 : 0;
        free_from[row] = x + label_width;
        Put("<path class=\"event\" d=\"M{:.1f} {:.1f}V{:.1f}\"/>", x, position_.up.high_at - 4 - 13 * row,
            acceleration_.up.low_at);
        Put("<text class=\"mark\" x=\"{:.1f}\" y=\"{:.1f}\" text-anchor=\"middle\">{}</text>\n", x,
            position_.up.high_at - 7 - 13 * row, made.call.label);
    }
}

double Page::TableHeight() const
{
    std::size_t rows = 0;
    for (const RegisterGroup &group : registers_) {
        rows += group.rows.size() + 2;
    }
    return static_cast<double>(rows) * row_height;
}

void Page::DrawTable(double top)
{
    double y = top + 10;
    for (const RegisterGroup &group : registers_) {
        const std::string when = group.at_s > 0 ? fmt::format("{:g} ms: ", group.at_s * 1000) : "";
        Put("<text class=\"head\" x=\"{}\" y=\"{:.1f}\">{}{}</text><path class=\"rule\" d=\"M{} {:.1f}H{}\"/>\n",
            table_left, y, when, group.call, table_left, y + 5, page_right);
        for (const RegisterRow &row : group.rows) {
            y += row_height;
            DrawRow(row, y + 4);
        }
        y += 2 * row_height;
    }
}

void Page::DrawRow(const RegisterRow &row, double y)
{
    Put("<text class=\"reg\" x=\"{}\" y=\"{:.1f}\">{}</text>", table_left, y, row.name);
    if (!row.value.empty()) {
        Put("<text class=\"reg\" x=\"{}\" y=\"{:.1f}\" text-anchor=\"end\">{}</text>", table_value_right, y,
            row.value);
        Put("<text class=\"mean\" x=\"{}\" y=\"{:.1f}\">{}</text>", table_meaning_left, y, Escaped(row.meaning));
    }
    Put("\n");
}

} // namespace

std::string DrawSvg(const Motion &motion, const Recording &recording, const std::vector<RegisterGroup> &registers)
{
    return Page(motion, recording, registers).Draw();
}

} // namespace trevik_scope
