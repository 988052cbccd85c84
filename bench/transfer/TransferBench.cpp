// Exporting and importing a board of 100,000 todos, beside encoding and decoding it for a save. All
// but `importIntoStore` runs off the main thread.
#include "bench/store/board/BoardFixture.h"

#include "store/WindowStore.h"
#include "store/board/BoardImport.h"
#include "store/board/BoardPersistence.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"
#include "support/MemorySettingsStore.h"
#include "transfer/Transfer.h"

#include <benchmark/benchmark.h>

#include <variant>

namespace kelpa::bench {

namespace {

constexpr int goalCount = 200;
constexpr int todoCount = 100'000;

const TransferClock noClock{Date{800'000'000}, QTimeZone::utc()};

TransferFormat formatOf(const benchmark::State& state)
{
    return allTransferFormats.at(static_cast<std::size_t>(state.range(0)));
}

void label(benchmark::State& state, TransferFormat format, qsizetype size)
{
    state.SetLabel(rawValue(format).toStdString() + ", " + std::to_string(size / 1000) + " kB");
}

void exportTo(benchmark::State& state)
{
    const QList<Goal> goals = largeBoard(goalCount, todoCount);
    qsizetype size = 0;
    for ([[maybe_unused]] auto _ : state)
        size = exported(formatOf(state), goals, {}, noClock).value().size();
    label(state, formatOf(state), size);
}

void importFrom(benchmark::State& state)
{
    const QByteArray bytes =
        exported(formatOf(state), largeBoard(goalCount, todoCount), {}, noClock).value();
    for ([[maybe_unused]] auto _ : state) {
        if (!std::holds_alternative<ImportedBoard>(readImport(bytes, formatOf(state), noClock)))
            state.SkipWithError("the file was refused");
    }
    label(state, formatOf(state), bytes.size());
}

void encodeForSave(benchmark::State& state)
{
    const QList<Goal> goals = largeBoard(goalCount, todoCount);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(encodeGoals(goals));
}

void decodeForStart(benchmark::State& state)
{
    const QByteArray json = encodeGoals(largeBoard(goalCount, todoCount)).value_or(QByteArray());
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(decodeGoals(json));
}

/// The whole share of the main thread of an import into a board of 10,000 todos, with the save into
/// memory.
void importIntoStore(benchmark::State& state)
{
    const QByteArray bytes =
        exported(formatOf(state), largeBoard(goalCount, todoCount), {}, noClock).value();
    const auto read = readImport(bytes, formatOf(state), noClock);
    test::FakeDesktop desktop;
    test::MemorySettingsStore settings;
    for (const SettingsEntry& entry : boardEntries(largeBoard(goalCount, todoCount / 10), {}))
        settings.values.insert(entry.key, entry.value);
    test::ManualScheduler scheduler;
    WindowStore store(desktop.platform(), settings, scheduler);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        const auto& import = std::get<ImportedBoard>(read);
        const PreparedImport prepared = preparedImport(store.boardContents(), import,
                                                       ImportMode::add, store.isAutoSortingGoals());
        state.ResumeTiming();
        store.importBoard(import, ImportMode::add, prepared);
        state.PauseTiming();
        store.undo();
        state.ResumeTiming();
    }
    label(state, formatOf(state), bytes.size());
}

BENCHMARK(encodeForSave)->Unit(benchmark::kMillisecond);
BENCHMARK(exportTo)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);
BENCHMARK(decodeForStart)->Unit(benchmark::kMillisecond);
BENCHMARK(importFrom)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);
BENCHMARK(importIntoStore)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace kelpa::bench
