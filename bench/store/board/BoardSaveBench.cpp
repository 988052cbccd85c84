// The cost of saving the board, and of SQLite alone for the same bytes.
#include "bench/store/board/SaveFigures.h"

#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/sqlite/WriteBehindSettings.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <array>
#include <memory>

namespace kelpa::bench {

namespace {

const QString unassignedKey = QStringLiteral("kelpa.unassignedTodos");
const QString assignmentsKey = QStringLiteral("kelpa.windowAssignments");

/// A toggle's share of the main thread: encode the whole board and put it on the disk.
void encodeAndSave(benchmark::State& state)
{
    const QTemporaryDir folder(folderTemplate());
    WriteBehindSettings store(
        std::make_unique<SqliteSettingsStore>(folder.filePath(QStringLiteral("kelpa.sqlite"))));
    const auto boards = toggledBoard(static_cast<int>(state.range(0)));
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        const bool isSaved =
            store.write({{goalsKey, encodeGoals(boards.at(++next % 2)).value_or(QByteArray())},
                         {unassignedKey, encodeTodos({}).value_or(QByteArray())},
                         {assignmentsKey, encodeAssignments({})}});
        if (!isSaved && !store.isSaving())
            state.SkipWithError("the board was not saved");
    }
}

void save(benchmark::State& state)
{
    const QTemporaryDir folder(folderTemplate());
    SqliteSettingsStore store(folder.filePath(QStringLiteral("kelpa.sqlite")));
    const std::array json = toggledJson(static_cast<int>(state.range(0)));
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        if (!store.write({{goalsKey, json.at(++next % 2)}}))
            state.SkipWithError("the board was not saved");
    }
    state.counters["bytes"] = static_cast<double>(json[0].size());
}

void saveUnchanged(benchmark::State& state)
{
    const QTemporaryDir folder(folderTemplate());
    SqliteSettingsStore store(folder.filePath(QStringLiteral("kelpa.sqlite")));
    const QList<Goal> goals = largeBoard(goalCount, static_cast<int>(state.range(0)));
    store.write({{goalsKey, encodeGoals(goals).value_or(QByteArray())}});
    const QByteArray again = encodeGoals(goals).value_or(QByteArray());
    for ([[maybe_unused]] auto _ : state)
        store.write({{goalsKey, again}});
}

/// A table of the same form, written by SQLite's own interface and nothing else.
class BareFile
{
public:
    BareFile(const QString& path, const char* pageSize, const char* checkpointPages)
    {
        sqlite3* connection = nullptr;
        sqlite3_open(path.toUtf8().constData(), &connection);
        m_connection.reset(connection);
        run("PRAGMA page_size = " + QByteArray(pageSize));
        run("PRAGMA journal_mode = WAL");
        run("PRAGMA synchronous = FULL");
        run("PRAGMA secure_delete = FALSE");
        run("PRAGMA cache_spill = FALSE");
        run("PRAGMA wal_autocheckpoint = " + QByteArray(checkpointPages));
        run("CREATE TABLE settings(key TEXT PRIMARY KEY NOT NULL, value)");
        sqlite3_stmt* put = nullptr;
        sqlite3_prepare_v2(connection,
                           "INSERT INTO settings(key, value) VALUES('kelpa.goals', ?1) "
                           "ON CONFLICT(key) DO UPDATE SET value = excluded.value",
                           -1, &put, nullptr);
        m_put.reset(put);
    }

    bool save(const QByteArray& bytes)
    {
        const bool hasBegun = run("BEGIN IMMEDIATE");
        sqlite3_bind_blob64(m_put.get(), 1, bytes.constData(),
                            static_cast<sqlite3_uint64>(bytes.size()), SQLITE_STATIC);
        const bool isPut = sqlite3_step(m_put.get()) == SQLITE_DONE;
        sqlite3_reset(m_put.get());
        return run("COMMIT") && hasBegun && isPut;
    }

private:
    struct Close
    {
        void operator()(sqlite3* connection) const { sqlite3_close(connection); }
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };

    bool run(const QByteArray& sql)
    {
        return sqlite3_exec(m_connection.get(), sql.constData(), nullptr, nullptr, nullptr) ==
               SQLITE_OK;
    }

    std::unique_ptr<sqlite3, Close> m_connection;
    std::unique_ptr<sqlite3_stmt, Close> m_put;
};

void saveBySqliteAlone(benchmark::State& state, const char* pageSize, const char* checkpointPages)
{
    const QTemporaryDir folder(folderTemplate());
    BareFile file(folder.filePath(QStringLiteral("bare.sqlite")), pageSize, checkpointPages);
    const std::array json = toggledJson(static_cast<int>(state.range(0)));
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        if (!file.save(json.at(++next % 2)))
            state.SkipWithError("SQLite refused to save");
    }
}

/// Both in turns, so that the disk treats them alike; times in milliseconds, bytes for each save.
void saveBesideSqliteAlone(benchmark::State& state)
{
    const QTemporaryDir folder(folderTemplate());
    SqliteSettingsStore store(folder.filePath(QStringLiteral("kelpa.sqlite")));
    BareFile file(folder.filePath(QStringLiteral("bare.sqlite")), "16384", "512");
    const std::array json = toggledJson(static_cast<int>(state.range(0)));
    Spent ours;
    Spent bare;
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        const QByteArray& bytes = json.at(++next % 2);
        if (!ours.measure([&] {
                return store.write({{goalsKey, bytes}});
            }) ||
            !bare.measure([&] { return file.save(bytes); }))
            state.SkipWithError("the board was not saved");
    }
    const auto count = static_cast<double>(next);
    state.counters["ours_ms"] = ours.total / count;
    state.counters["bare_ms"] = bare.total / count;
    state.counters["ratio"] = ours.total / bare.total;
    state.counters["ours_worst_ms"] = ours.worst;
    state.counters["bare_worst_ms"] = bare.worst;
    state.counters["ours_bytes"] = ours.bytes / count;
    state.counters["bare_bytes"] = bare.bytes / count;
}

} // namespace

namespace {

void common(benchmark::internal::Benchmark* bench)
{
    bench->Arg(10'000)->UseRealTime()->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(encodeAndSave)->Name("Board/encode and save")->Arg(1'000)->Apply(common);
BENCHMARK(save)->Name("Board/save")->Apply(common);
BENCHMARK(saveUnchanged)->Name("Board/save unchanged")->Apply(common);
BENCHMARK(saveBesideSqliteAlone)->Name("Board/save beside SQLite alone")->Apply(common);
BENCHMARK_CAPTURE(saveBySqliteAlone, 4 KiB pages checkpoint 4 MB, "4096", "1000")->Apply(common);
BENCHMARK_CAPTURE(saveBySqliteAlone, 4 KiB pages checkpoint 8 MB, "4096", "2048")->Apply(common);
BENCHMARK_CAPTURE(saveBySqliteAlone, 16 KiB pages checkpoint 8 MB, "16384", "512")->Apply(common);
BENCHMARK_CAPTURE(saveBySqliteAlone, 64 KiB pages checkpoint 8 MB, "65536", "128")->Apply(common);

} // namespace kelpa::bench
