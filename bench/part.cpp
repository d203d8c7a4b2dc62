// trevik-run's own way from text to a drawn contour, in memory and without the drawing.
#include "trevik-run/run.h"

#include "api/card_manager.h"

#include <trevik/TrevikHost.h>
#include <trevik/TrevikVirtual.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <string>

#include <sys/resource.h>

namespace
{

// A flower of `segments` short lines in one contour.
std::string Flower(int segments)
{
    std::string text = "G21 G90\nF3000\n";
    char line[64];
    for (int i = 0; i <= segments; ++i) {
        const double angle = 40 * M_PI * i / segments;
        const double radius = 60 + 15 * std::sin(5.1 * angle);
        const int size = std::snprintf(line, sizeof line, "G1 X%.4f Y%.4f\n", radius * std::cos(angle) - 60,
                                       radius * std::sin(angle));
        text.append(line, static_cast<std::size_t>(size));
    }
    return text;
}

// A chain of tangent quarter circles that wind round and round.
std::string Chain(int segments)
{
    static constexpr const char *quarters[] = {"G2 X2 Y2 I2 J0\n", "G2 X4 Y0 I0 J-2\n", "G2 X2 Y-2 I-2 J0\n",
                                               "G2 X0 Y0 I0 J2\n"};
    std::string text = "G21 G90 G17\nF3000\n";
    for (int i = 0; i < segments; ++i)
        text += quarters[i % 4];
    return text;
}

double PeakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

void Run(benchmark::State &state, int segments, const std::string &text)
{
    TrevikHost_driver_set(nullptr);
    trevik_run::Options options;
    options.quiet = true;
    double machine_s = 0;
    const double megabytes_before = PeakMegabytes();
    for (auto _ : state) {
        trevik::manager.StopPulserTicks(); // of the run before
        TrevikVirtual_cards_set("0:A");
        TrevikHost_clock_manual(1);
        trevik_run::Report report;
        if (trevik_run::RunPart(text, options, report) != trevik_run::RunEnd::completed)
            state.SkipWithError("the part was not completed");
        machine_s += report.machine_s;
    }
    state.SetItemsProcessed(state.iterations() * segments);
    state.counters["simulated_s_per_s"] = benchmark::Counter(machine_s, benchmark::Counter::kIsRate);
    state.counters["text_MB"] = static_cast<double>(text.size()) / (1024 * 1024);
    state.counters["peak_growth_MB"] = PeakMegabytes() - megabytes_before;
}

void virtual_part(benchmark::State &state)
{
    const auto segments = static_cast<int>(state.range(0));
    Run(state, segments, Flower(segments));
}
BENCHMARK(virtual_part)->Arg(100'000)->Unit(benchmark::kMillisecond);

void virtual_part_arcs(benchmark::State &state)
{
    const auto segments = static_cast<int>(state.range(0));
    Run(state, segments, Chain(segments));
}
BENCHMARK(virtual_part_arcs)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
