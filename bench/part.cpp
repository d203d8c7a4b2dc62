// trevik-run's own way from text to a drawn contour, in memory and without the drawing.
#include "trevik-run/run.h"

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

double PeakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

void virtual_part(benchmark::State &state)
{
    TrevikHost_driver_set(nullptr);
    const auto segments = static_cast<int>(state.range(0));
    const std::string text = Flower(segments);
    trevik_run::Options options;
    options.quiet = true;
    double machine_s = 0;
    const double megabytes_before = PeakMegabytes();
    for (auto _ : state) {
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
BENCHMARK(virtual_part)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
