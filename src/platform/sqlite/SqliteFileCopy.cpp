// Copying the file as it was at one moment, while others go on writing it.
#include "platform/sqlite/SqliteFile.h"
#include "platform/sqlite/SqliteValues.h"

#include <QFile>

#include <sqlite3.h>

#include <array>

namespace kelpa {

namespace {

/// Applied in this order. The page size is that of the board. A copy that fails is removed, so it
/// needs no journal.
constexpr std::array copying{
    "PRAGMA page_size = 16384",
    "PRAGMA journal_mode = OFF",
    "PRAGMA synchronous = OFF",
};

} // namespace

std::optional<SettingsError> SqliteFile::holdSnapshot()
{
    resetLockDeadline();
    // The transaction begins with its first read.
    if (const auto error = run("BEGIN"))
        return error;
    return run("SELECT count(*) FROM sqlite_schema");
}

// A copy of the file's pages would also have those that are free, and in them what was forgotten.
std::optional<SettingsError> SqliteFile::copyTo(const QString& path, const KeyTest& isCopied,
                                                const std::stop_token& stop)
{
    SqliteFile copy;
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(
        QFile::encodeName(path).constData(), &opened,
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    copy.m_connection.reset(opened);
    if (const auto error = errorUnlessDone(code))
        return error;
    for (const char* const sql : copying) {
        if (const auto error = copy.run(sql))
            return error;
    }
    if (const auto error = copy.createTable())
        return error;
    // A file without the table is empty.
    if (!m_hasTable)
        return std::nullopt;
    if (const auto error = copy.run("BEGIN"))
        return error;
    if (const auto error = copyRowsTo(copy, isCopied, stop))
        return error;
    return copy.run("COMMIT");
}

std::optional<SettingsError> SqliteFile::copyRowsTo(SqliteFile& copy, const KeyTest& isCopied,
                                                    const std::stop_token& stop)
{
    resetLockDeadline();
    // Of the table itself, whatever index another program has added.
    const SettingsResult<Statement> reading =
        prepare("SELECT key, value FROM settings NOT INDEXED");
    if (const auto* const error = std::get_if<SettingsError>(&reading))
        return *error;
    const SettingsResult<Statement> writing =
        copy.prepare("INSERT INTO settings(key, value) VALUES(?1, ?2)");
    if (const auto* const error = std::get_if<SettingsError>(&writing))
        return *error;
    sqlite3_stmt* const source = std::get<Statement>(reading).get();
    sqlite3_stmt* const target = std::get<Statement>(writing).get();
    int code = SQLITE_OK;
    while ((code = sqlite3_step(source)) == SQLITE_ROW) {
        if (stop.stop_requested())
            return SettingsError::busy;
        if (!isCopied(columnText(source, 0)))
            continue;
        for (const int column : {0, 1}) {
            if (const auto error = errorUnlessDone(
                    sqlite3_bind_value(target, column + 1, sqlite3_column_value(source, column))))
                return error;
        }
        if (const auto error = errorUnlessDone(sqlite3_step(target)))
            return error;
        sqlite3_reset(target);
    }
    return errorUnlessDone(code);
}

std::optional<SettingsError> SqliteFile::sync()
{
    sqlite3_file* file = nullptr;
    const int code = sqlite3_file_control(m_connection.get(), "main", SQLITE_FCNTL_FILE_POINTER,
                                          static_cast<void*>(&file));
    if (code != SQLITE_OK || file == nullptr || file->pMethods == nullptr)
        return SettingsError::failed;
    return errorUnlessDone(file->pMethods->xSync(file, SQLITE_SYNC_FULL));
}

} // namespace kelpa
