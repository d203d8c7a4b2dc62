#include "trevik-run/report.h"

#include <fmt/format.h>

#include <iterator>

namespace trevik_run
{
namespace
{

const char *UnitOf(std::size_t axis)
{
    return axis == angular_axis ? "deg" : "mm";
}

bool Uses(const Report &report, std::size_t axis)
{
    return (report.axes >> axis & 1U) != 0;
}

std::string AxisDeviations(const Report &report)
{
    std::string text;
    for (std::size_t i = 0; i < axis_count; ++i) {
        if (Uses(report, i)) {
            fmt::format_to(std::back_inserter(text), "{}{} {:.2f}", text.empty() ? "" : ", ", axis_letters[i],
                           report.deviation.pulses[i]);
        }
    }
    return text;
}

const char *EndText(const Report &report)
{
    if (report.end != RunEnd::completed) {
        return "";
    }
    return report.position == report.programmed ? ", as programmed" : ", NOT where the program ends";
}

} // namespace

std::string PositionText(const Report &report, const Machine &machine)
{
    std::string text;
    for (std::size_t i = 0; i < axis_count; ++i) {
        if (Uses(report, i)) {
            fmt::format_to(std::back_inserter(text), "{}{} {:.4f} {} ({} pulses)", text.empty() ? "" : ", ",
                           axis_letters[i], report.position[i] / machine.pulses_per_unit[i], UnitOf(i),
                           report.position[i]);
        }
    }
    return text;
}

std::string ReportText(const Report &report, const Machine &machine)
{
    return fmt::format("segments        {} of {} in {} lines\n"
                       "path length     {:.3f} mm\n"
                       "machine time    {:.3f} s\n"
                       "wall time       {:.3f} s\n"
                       "deviation       {} pulses at most, {:.5f} mm\n"
                       "end position    {}{}\n",
                       report.segments_begun, report.segments, report.lines, report.path_mm, report.machine_s,
                       report.wall_s, AxisDeviations(report), report.deviation.mm, PositionText(report, machine),
                       EndText(report));
}

std::string SummaryText(const Report &report)
{
    return fmt::format("{} segments, {:.0f} mm of path, {:.1f} s of machine time, largest deviation {:.2f} pulses "
                       "({:.4f} mm)",
                       report.segments_begun, report.path_mm, report.machine_s, report.deviation.LargestPulses(),
                       report.deviation.mm);
}

} // namespace trevik_run
