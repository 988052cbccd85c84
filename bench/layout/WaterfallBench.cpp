// The time of a pass of the geometry over the targets of a board: the first pass, and those after a
// card in the middle has changed its height, as in every frame of an expanding card, or one has
// been appended.
#include "layout/BoardMetrics.h"
#include "layout/WaterfallGeometry.h"

#include <benchmark/benchmark.h>

namespace kelpa {
namespace {

double heightOf(std::int64_t card)
{
    return collapsedGoalCardHeight + static_cast<double>(card * 37 % 211);
}

WaterfallGeometry targets(std::int64_t count)
{
    WaterfallGeometry geometry(targetLayout());
    geometry.setWidth(1000);
    for (std::int64_t i = 0; i < count; ++i)
        geometry.insert(i, 1, heightOf(i));
    return geometry;
}

void placeAll(benchmark::State& state)
{
    const WaterfallGeometry unsettled = targets(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        WaterfallGeometry geometry = unsettled;
        benchmark::DoNotOptimize(geometry.settle());
    }
}
BENCHMARK(placeAll)->Arg(10)->Arg(200)->Arg(2000);

void changeOneHeightInTheMiddle(benchmark::State& state)
{
    WaterfallGeometry geometry = targets(state.range(0));
    geometry.settle();
    double height = 300;
    qsizetype changed = 0;
    for ([[maybe_unused]] auto _ : state) {
        height = 600 - height + 7;
        geometry.setHeight(state.range(0) / 2, height);
        changed = geometry.settle().size();
    }
    state.counters["changed"] = static_cast<double>(changed);
}
BENCHMARK(changeOneHeightInTheMiddle)->Arg(10)->Arg(200)->Arg(2000);

void appendOne(benchmark::State& state)
{
    WaterfallGeometry geometry = targets(state.range(0));
    geometry.settle();
    for ([[maybe_unused]] auto _ : state) {
        geometry.insert(state.range(0), 1, collapsedGoalCardHeight);
        benchmark::DoNotOptimize(geometry.settle());
        geometry.remove(state.range(0), 1);
        geometry.settle();
    }
}
BENCHMARK(appendOne)->Arg(10)->Arg(200)->Arg(2000);

/// Finds the targets in the visible range, as at every step of scrolling.
void findStripe(benchmark::State& state)
{
    WaterfallGeometry geometry = targets(state.range(0));
    geometry.settle();
    const double top = geometry.height() / 2;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(geometry.between(top, top + 1000));
}
BENCHMARK(findStripe)->Arg(10)->Arg(200)->Arg(2000);

} // namespace
} // namespace kelpa
