// The time of one whole layout of a board: it runs at every frame of an expanding card.
#include "layout/BoardMetrics.h"

#include <benchmark/benchmark.h>

namespace kelpa {
namespace {

void placeTargets(benchmark::State& state)
{
    const WaterfallLayout layout = targetLayout();
    QList<double> heights;
    for (std::int64_t i = 0; i < state.range(0); ++i)
        heights.append(collapsedGoalCardHeight + static_cast<double>(i * 37 % 211));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(layout.place({}, 1920, heights));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(placeTargets)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Complexity();

} // namespace
} // namespace kelpa
