// How long a board takes to and from its stored form.
#include "bench/store/board/BoardFixture.h"
#include "store/board/TodoOrder.h"

#include <benchmark/benchmark.h>

namespace kelpa::bench {

namespace {

void encodeBoard(benchmark::State& state)
{
    const QList<Goal> goals = largeBoard(200, static_cast<int>(state.range(0)));
    qsizetype bytes = 0;
    for ([[maybe_unused]] auto _ : state) {
        const std::optional<QByteArray> json = encodeGoals(goals);
        bytes = json->size();
        benchmark::DoNotOptimize(json->constData());
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}

void decodeBoard(benchmark::State& state)
{
    const QByteArray json =
        encodeGoals(largeBoard(200, static_cast<int>(state.range(0)))).value_or(QByteArray());
    for ([[maybe_unused]] auto _ : state) {
        const std::optional<QList<Goal>> goals = decodeGoals(json);
        if (!goals)
            state.SkipWithError("the board did not decode");
        benchmark::DoNotOptimize(goals);
    }
    state.counters["bytes"] = static_cast<double>(json.size());
}

/// Reads the document as a start does, and makes the orders 0 … n−1.
void decodeAndNormalizeBoard(benchmark::State& state)
{
    const QByteArray json =
        encodeGoals(largeBoard(200, static_cast<int>(state.range(0)))).value_or(QByteArray());
    for ([[maybe_unused]] auto _ : state) {
        std::optional<QList<Goal>> goals = decodeGoals(json);
        if (!goals) {
            state.SkipWithError("the board did not decode");
            break;
        }
        applyPositions(*goals, normalizedPositions(*goals, {}));
        benchmark::DoNotOptimize(goals);
    }
}

} // namespace

BENCHMARK(decodeAndNormalizeBoard)
    ->Name("Board/decode and normalise")
    ->Arg(1'000)
    ->Arg(10'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(encodeBoard)
    ->Name("Board/encode")
    ->Arg(1'000)
    ->Arg(10'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(decodeBoard)
    ->Name("Board/decode")
    ->Arg(1'000)
    ->Arg(10'000)
    ->Unit(benchmark::kMillisecond);

} // namespace kelpa::bench
