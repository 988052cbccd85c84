// The search of a desktop over a board of 10,000 todos, off the main thread: its answer is to be
// there within 50 ms.
#include "automation/Finding.h"
#include "bench/store/board/BoardFixture.h"

#include <benchmark/benchmark.h>

#include <string>

namespace kelpa::bench {

namespace {

constexpr int goalCount = 200;
constexpr int todoCount = 10'000;

/// What it finds, described, as both desktops ask for it.
void findOnLargeBoard(benchmark::State& state, const QStringList& terms)
{
    const automation::SearchedBoard board{largeBoard(goalCount, todoCount), {}, {}, QLocale()};
    qsizetype count = 0;
    for ([[maybe_unused]] auto _ : state) {
        const QList<automation::FoundID> all = automation::found(board, terms);
        for (const automation::FoundID& id : all)
            benchmark::DoNotOptimize(automation::described(id, board, AppLanguage::english));
        count = all.size();
    }
    state.SetLabel(std::to_string(count) + " found");
}

} // namespace

BENCHMARK_CAPTURE(findOnLargeBoard, many, {QStringLiteral("letter")})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(findOnLargeBoard, lastOne, {QStringLiteral("9998"), QStringLiteral("spring")})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(findOnLargeBoard, insideWords, {QStringLiteral("etter")})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(findOnLargeBoard, nothing, {QStringLiteral("xylophone")})
    ->Unit(benchmark::kMillisecond);

} // namespace kelpa::bench
