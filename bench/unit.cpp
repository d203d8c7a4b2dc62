// The unit of all figures: q is one link of a dependent chain of double square roots. Machines differ and drift; a
// figure in q, measured in the same run, does so much less.
#include <benchmark/benchmark.h>

#include <cmath>

namespace
{

void unit_q(benchmark::State &state)
{
    double x = 1e6;
    for (auto _ : state) {
        x = std::sqrt(x + 1e6);
        benchmark::DoNotOptimize(x);
    }
}
BENCHMARK(unit_q);

} // namespace

BENCHMARK_MAIN();
