// trevik-run: runs a part program on a card.
#include <fmt/format.h>
#include <trevik/TrevikA.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <memory>
#include <optional>

#include "shared/file.h"
#include "trevik-run/csv.h"
#include "trevik-run/interrupt.h"
#include "trevik-run/run.h"
#include "trevik-run/svg.h"
#include "trevik-run/trace.h"

namespace trevik_run
{
namespace
{

enum ExitStatus : std::uint8_t { done = 0, card_failed = 1, wrong_input = 2, was_interrupted = 130 };

using trevik_tools::File;

int Complain(int status, const std::string &what)
{
    fmt::print(stderr, "trevik-run: {}\n", what);
    return status;
}

bool ReadAll(const std::string &name, std::string &text)
{
    const File opened(name == "-" ? nullptr : std::fopen(name.c_str(), "rb"));
    std::FILE *const file = name == "-" ? stdin : opened.get();
    if (file == nullptr) {
        return false;
    }
    char buffer[1 << 16];
    for (std::size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, file)) > 0;) {
        text.append(buffer, count);
    }
    return std::ferror(file) == 0;
}

// The files that the run fills: opened before anything moves.
struct Outputs {
    File svg;
    File csv;

    bool Open(const std::string &name, File &file)
    {
        if (!name.empty()) {
            file.reset(std::fopen(name.c_str(), "wb"));
        }
        return name.empty() || file != nullptr;
    }
};

// One file for two purposes would lose one of them, at worst the part itself.
bool SameFile(const std::string &a, const std::string &b)
{
    std::error_code missing;
    return !a.empty() && (a == b || std::filesystem::equivalent(a, b, missing));
}

// A tolerance that the drawing cannot show: a small part of its extent.
double DrawingTolerance(const Program &program)
{
    double extent = 1e-3;
    for (const Move &move : program.moves) {
        extent = std::max(
            {extent, std::fabs(move.target[0] - program.start[0]), std::fabs(move.target[1] - program.start[1])});
    }
    for (const Arc &arc : program.arcs) {
        extent = std::max(extent, arc.radius);
    }
    return extent / 5000;
}

bool WriteDrawing(const Trace &trace, const Options &options, const Report &report, std::FILE *file)
{
    const std::string name = options.part.substr(options.part.find_last_of("/\\") + 1);
    const std::string drawing = DrawSvg(trace, {name, SummaryText(report)});
    return std::fwrite(drawing.data(), 1, drawing.size(), file) == drawing.size() && std::fflush(file) == 0;
}

int Conclude(const Report &report, const Options &options)
{
    if (report.end == RunEnd::failed) {
        return Complain(card_failed, report.error.Message() + "\nThe axes were stopped at " +
                                         PositionText(report, options.machine));
    }
    if (report.end == RunEnd::interrupted) {
        return Complain(was_interrupted,
                        "interrupted; the axes were stopped at " + PositionText(report, options.machine));
    }
    return report.position == report.programmed
               ? done
               : Complain(card_failed,
                          "the axes do not stand where the program ends; was one stopped by a switch?");
}

int RunWithOutputs(const Part &part, const Options &options, const Outputs &outputs)
{
    const std::uint32_t axes = part.Checked().axes;
    std::vector<SampleSink *> sinks;
    std::optional<CsvWriter> csv;
    std::optional<Trace> trace;
    if (outputs.csv) {
        sinks.push_back(&csv.emplace(outputs.csv.get(), axes));
    }
    if (outputs.svg) {
        const bool shade_by_a = (axes >> angular_axis & 1U) != 0;
        sinks.push_back(&trace.emplace(DrawingTolerance(part.Moves()), shade_by_a));
    }
    Report report;
    RunOnCard(part, options, sinks, report);
    if (!options.quiet) {
        fmt::print("{}", ReportText(report, options.machine));
    }
    const int status = Conclude(report, options);
    if (csv && !csv->Finish()) {
        return Complain(card_failed, "cannot write " + options.csv);
    }
    if (trace && !WriteDrawing(*trace, options, report, outputs.svg.get())) {
        return Complain(card_failed, "cannot write " + options.svg);
    }
    return status;
}

int CheckOnly(const Part &part, const Options &options)
{
    if (!options.quiet) {
        fmt::print("{}: {} lines, {} segments, {:.3f} mm of path, no errors\n", options.part, part.Moves().lines,
                   part.Checked().segments, part.Checked().path_mm);
    }
    return done;
}

int RunFile(const Options &options)
{
    std::string text;
    if (!ReadAll(options.part, text)) {
        return Complain(wrong_input, fmt::format("cannot read {}: {}", options.part, std::strerror(errno)));
    }
    // Errors of the part come first, card or no card.
    Part part(text, options, {});
    if (options.check) {
        return CheckOnly(part, options);
    }
    if (SameFile(options.svg, options.csv) || SameFile(options.svg, options.part) ||
        SameFile(options.csv, options.part)) {
        return Complain(wrong_input, "the part, --svg and --csv must be different files");
    }
    Outputs outputs;
    if (!outputs.Open(options.svg, outputs.svg) || !outputs.Open(options.csv, outputs.csv)) {
        const std::string &name = !options.svg.empty() && !outputs.svg ? options.svg : options.csv;
        return Complain(card_failed, fmt::format("cannot write {}: {}", name, std::strerror(errno)));
    }
    Pulses position{};
    if (const CardError error = OpenCard(options.card, position)) {
        return Complain(card_failed, fmt::format("card {}: {}", options.card, error.Message()));
    }
    if (position != Pulses{}) { // relative moves and the first line depend on where the axes stand
        part = Part(text, options, ToUnits(position, options.machine));
    }
    CatchInterrupts();
    const int status = RunWithOutputs(part, options, outputs);
    TrevikA_close();
    return status;
}

} // namespace
} // namespace trevik_run

int main(int argc, char **argv)
{
    trevik_run::Options options;
    int status = 0;
    try {
        if (!trevik_run::ParseOptions(argc, argv, options, status)) {
            return status;
        }
        return trevik_run::RunFile(options);
    } catch (const trevik_run::PartError &error) {
        std::fputs((error.Message(options.part) + "\n").c_str(), stderr);
        return trevik_run::wrong_input;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "trevik-run: %s\n", error.what());
        return trevik_run::card_failed;
    }
}
