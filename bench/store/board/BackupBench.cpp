// What daily backups cost saves and the start, side by side with none.
#include "bench/store/board/SaveFigures.h"

#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/sqlite/backup/DailyBackup.h"
#include "store/board/BoardPersistence.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

namespace kelpa::bench {

namespace {

/// A board's file of its own, saved alternately in two forms.
class SavedBoard
{
public:
    explicit SavedBoard(int todoCount) : m_json(toggledJson(todoCount)) { save(); }

    SqliteSettingsStore& store() { return m_store; }
    QString path() const { return m_path; }
    bool save() { return m_store.write({{goalsKey, m_json.at(++m_next % 2)}}); }

private:
    const QTemporaryDir m_folder{folderTemplate()};
    const QString m_path = m_folder.filePath(QStringLiteral("kelpa.sqlite"));
    SqliteSettingsStore m_store{m_path};
    const std::array<QByteArray, 2> m_json;
    std::size_t m_next = 0;
};

/// The same save in turns: without backups, on a day that has its backup, as the first of a day,
/// whose copy is made meanwhile, and right after that one. Times in milliseconds.
void saveWithAndWithoutBackups(benchmark::State& state)
{
    const auto todoCount = static_cast<int>(state.range(0));
    SavedBoard plain(todoCount);
    SavedBoard usual(todoCount);
    SavedBoard daily(todoCount);
    QDateTime today = QDateTime::currentDateTime();
    const auto ofUsual = std::make_shared<DailyBackup>(usual.path());
    usual.store().setBeforeSave([ofUsual] { ofUsual->beforeSave(); });
    usual.save();
    ofUsual->finish();
    const auto ofDaily = std::make_shared<DailyBackup>(daily.path(), [&today] { return today; });
    daily.store().setBeforeSave([ofDaily] { ofDaily->beforeSave(); });

    Spent without;
    Spent sameDay;
    Spent firstOfDay;
    Spent secondOfDay;
    std::size_t count = 0;
    for ([[maybe_unused]] auto _ : state) {
        today = today.addDays(1);
        const bool areSaved = without.measure([&] { return plain.save(); }) &&
                              sameDay.measure([&] { return usual.save(); }) &&
                              firstOfDay.measure([&] { return daily.save(); }) &&
                              secondOfDay.measure([&] { return daily.save(); });
        if (!areSaved)
            state.SkipWithError("the board was not saved");
        // Before the next turn, so that the copy delays the saves of its own board alone.
        ofDaily->finish();
        ++count;
    }
    const auto report = [&](const char* name, const Spent& spent) {
        state.counters[name] = spent.total / static_cast<double>(count);
        state.counters[std::string(name) + "_worst"] = spent.worst;
    };
    report("without_ms", without);
    report("same_day_ms", sameDay);
    report("first_of_day_ms", firstOfDay);
    report("second_of_day_ms", secondOfDay);
}

/// What the start does with the file until the store has the board, in turns: of a board without
/// backups, and of one with a year of them.
void startWithAndWithoutBackups(benchmark::State& state)
{
    const auto todoCount = static_cast<int>(state.range(0));
    const QTemporaryDir folder(folderTemplate());
    const QString plain = folder.filePath(QStringLiteral("plain.sqlite"));
    const QString kept = folder.filePath(QStringLiteral("kept.sqlite"));
    const std::array json = toggledJson(todoCount);
    const auto save = [&json](SqliteSettingsStore& store, std::size_t n) {
        return store.write({{goalsKey, json.at(n % 2)}});
    };
    {
        SqliteSettingsStore first(plain);
        SqliteSettingsStore second(kept);
        save(first, 0);
        save(second, 1);
        QDateTime day = QDateTime::currentDateTime().addDays(-366);
        const auto backup = std::make_shared<DailyBackup>(kept, [&day] { return day; });
        second.setBeforeSave([backup] { backup->beforeSave(); });
        for (std::size_t n = 0; n < 52; ++n) {
            day = day.addDays(7);
            save(second, n);
            backup->finish();
        }
        save(first, 1);
    }
    Spent without;
    Spent with;
    std::size_t count = 0;
    const auto open = [](const QString& path, bool backsUp) {
        SqliteSettingsStore store(path);
        if (backsUp) {
            const auto backup = std::make_shared<DailyBackup>(path);
            store.setBeforeSave([backup] { backup->beforeSave(); });
        }
        return !loadBoard(store).contents.goals.isEmpty();
    };
    for ([[maybe_unused]] auto _ : state) {
        if (!without.measure([&] { return open(plain, false); }) ||
            !with.measure([&] { return open(kept, true); }))
            state.SkipWithError("the board was not read");
        ++count;
    }
    state.counters["without_ms"] = without.total / static_cast<double>(count);
    state.counters["with_ms"] = with.total / static_cast<double>(count);
    state.counters["backups"] =
        static_cast<double>(QDir(kept + QStringLiteral(".backups")).entryList(QDir::Files).size());
}

void ofTwoSizes(benchmark::internal::Benchmark* bench)
{
    bench->Arg(1'000)->Arg(10'000)->UseRealTime()->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(saveWithAndWithoutBackups)
    ->Name("Board/save with and without backups")
    ->Apply(ofTwoSizes);
BENCHMARK(startWithAndWithoutBackups)
    ->Name("Board/start with and without backups")
    ->Apply(ofTwoSizes);

} // namespace kelpa::bench
