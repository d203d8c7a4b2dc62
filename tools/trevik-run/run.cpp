#include "trevik-run/run.h"

#include <trevik/TrevikA.h>

#include <chrono>

#include "trevik-run/interpreter.h"
#include "trevik-run/lexer.h"
#include "trevik-run/planner.h"

namespace trevik_run
{
namespace
{

// Closes the library on every way out.
struct LibraryCloser {
    LibraryCloser() = default;
    ~LibraryCloser() { TrevikA_close(); }
    LibraryCloser(const LibraryCloser &) = delete;
    LibraryCloser &operator=(const LibraryCloser &) = delete;
};

void Describe(const Part &part, const Machine &machine, Report &report)
{
    const Program &program = part.Moves();
    report.axes = part.Checked().axes;
    report.lines = program.lines;
    report.segments = part.Checked().segments;
    report.path_mm = part.Checked().path_mm;
    report.programmed = ToPulses(program.moves.empty() ? program.start : program.moves.back().target, machine);
}

CheckedProgram Checked(Program &program, std::string_view text, const Machine &machine)
{
    try {
        return CheckProgram(program, machine);
    } catch (PartError &error) {
        LocateWord(text, error);
        throw;
    }
}

} // namespace

Part::Part(std::string_view text, const Options &options, const Vec4 &start)
    : program_(ReadProgram(text, {options.block_delete, start, options.arc_tolerance_mm})),
      checked_(trevik_run::Checked(program_, text, options.machine)),
      ramps_(checked_.top_pps, WantedAcceleration(options.machine))
{
    PlanSpeeds(program_, options.machine, ramps_);
}

RunEnd RunOnCard(const Part &part, const Options &options, const std::vector<SampleSink *> &sinks, Report &report)
{
    const auto wall_start = std::chrono::steady_clock::now();
    Describe(part, options.machine, report);
    Card card(options.card, part.Checked().axes);
    Clock clock(options.card, options.realtime);
    Progress progress(Progress::StyleFor(options.quiet), part.Checked().segments);
    Executor executor(part.Moves(), part.Checked(), options.machine, card, clock);
    executor.SampleEvery(options.sample_ms / 1000);
    executor.ShowOn(progress);
    for (SampleSink *sink : sinks) {
        executor.SendSamplesTo(*sink);
    }
    report.end = executor.Run(part.Ramps());
    progress.Finish();
    report.error = card.Error();
    report.segments_begun = executor.SegmentsBegun();
    report.deviation = executor.LargestDeviation();
    report.position = executor.Position();
    report.machine_s = clock.Now();
    report.wall_s = std::chrono::duration<double>(std::chrono::steady_clock::now() - wall_start).count();
    return report.end;
}

RunEnd RunPart(std::string_view text, const Options &options, Report &report)
{
    const LibraryCloser closer;
    Pulses position{};
    if (const CardError error = OpenCard(options.card, position)) {
        report.error = error;
        report.end = RunEnd::failed;
        return report.end;
    }
    const Part part(text, options, ToUnits(position, options.machine));
    return RunOnCard(part, options, {}, report);
}

Vec4 ToUnits(const Pulses &position, const Machine &machine)
{
    Vec4 units;
    for (std::size_t i = 0; i < axis_count; ++i) {
        units[i] = position[i] / machine.pulses_per_unit[i];
    }
    return units;
}

} // namespace trevik_run
