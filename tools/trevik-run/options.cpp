#include "trevik-run/options.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "shared/option_checks.h"
#include "shared/version.h"

namespace trevik_run
{
namespace
{

constexpr int usage_status = 2;

constexpr const char *description =
    "Runs an RS-274 part program (G-code: lines and arcs of the XY plane) on a TrevikA card.\n"
    "The whole program is read and checked before anything moves. X Y Z A are the card's axes 0 1 2 3.\n"
    "Feeds count the way of X Y Z; where only A turns they are degrees/min.";

constexpr const char *footer =
    "Exit status: 0 done, 1 the card refused a request or a file could not be written, 2 wrong command line or\n"
    "part program (nothing has moved), 130 interrupted (the axes were stopped with deceleration).";

using trevik_tools::Between;

void AddMachineOptions(CLI::App &app, Machine &machine)
{
    Vec4 &scale = machine.pulses_per_unit;
    const CLI::Validator resolution = Between(0.001, 1e6);
    app.add_option_function<double>(
           "--pulses-per-mm", [&scale](double value) { scale[0] = scale[1] = scale[2] = value; },
           "pulses per mm of X, Y and Z (default 400)")
        ->check(resolution)
        ->trigger_on_parse();
    app.add_option("--pulses-per-mm-x", scale[0], "pulses per mm of X alone")->check(resolution);
    app.add_option("--pulses-per-mm-y", scale[1], "pulses per mm of Y alone")->check(resolution);
    app.add_option("--pulses-per-mm-z", scale[2], "pulses per mm of Z alone")->check(resolution);
    app.add_option("--pulses-per-degree", scale[3], "pulses per degree of A (default 100)")->check(resolution);
    app.add_option("--rapid", machine.rapid_mm_min, "rapid speed in mm/min, for A in degrees/min (default 3000)")
        ->check(Between(0.001, 1e9));
    app.add_option("--start-speed", machine.start_pps,
                   "pulses/s along the path that the motors take without a ramp: contours begin and end with it "
                   "(default 800)")
        ->check(Between(min_speed_pps, max_speed_pps));
    app.add_option("--ramp-time", machine.ramp_ms,
                   "ms from the start speed to the rapid speed of the finest of X Y Z; slower moves ramp with the "
                   "same acceleration, and no ramp is steeper than the card's registers allow (default 100)")
        ->check(CLI::Range(1, 60000));
    app.add_flag(
        "--keep-a", machine.keep_a,
        "axis 3 has a motor: cut helices as short lines; the card's own helices count their steps on axis 3, "
        "which turns. Always so in parts with A words");
    app.add_flag("--s-curve", machine.s_curve, "wholly curved ramps instead of straight ones");
    app.add_option("--corner-angle", machine.corner_degrees,
                   "degrees; sharper corners are taken at the start speed, gentler ones without slowing down "
                   "(default 30)")
        ->check(Between(0, 180));
}

void AddRunOptions(CLI::App &app, Options &options)
{
    app.add_option("PART", options.part, "part program; - reads standard input")->required();
    app.add_option("--card", options.card, "card number (default 0)")->check(CLI::Range(0, 15));
    app.add_option("--svg", options.svg, "draw path and speed into this file");
    app.add_option("--csv", options.csv, "write the samples into this file");
    app.add_option("--sample-ms", options.sample_ms, "time between samples in ms (default 1)")
        ->check(Between(0.001, 1e6));
    app.add_flag("--realtime", options.realtime,
                 "run at the card's own pace; without it virtual cards run as fast as they can");
    app.add_flag("--block-delete", options.block_delete,
                 "pass over lines that begin with /; without it they are executed");
    app.add_option(
           "--arc-tolerance", options.arc_tolerance_mm,
           "mm by which the ends of an arc may differ in their distance from its center; 0.1 % of the radius "
           "is always allowed (default 0.005)")
        ->check(Between(0, 1000));
    app.add_flag("--check", options.check, "read and check the part, move nothing");
    app.add_flag("--quiet", options.quiet, "no progress and no report");
    app.set_version_flag("--version", "trevik-run " TREVIK_TOOLS_VERSION);
}

} // namespace

bool ParseOptions(int argc, const char *const *argv, Options &options, int &status)
{
    CLI::App app(description, "trevik-run");
    app.allow_windows_style_options(false); // a path may begin with a slash
    app.footer(footer);
    AddRunOptions(app, options);
    AddMachineOptions(app, options.machine);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        status = app.exit(error) == 0 ? 0 : usage_status;
        return false;
    }
    return true;
}

} // namespace trevik_run
