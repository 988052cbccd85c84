// Copying the file as it was at one moment, while others go on writing it.
#include "platform/sqlite/SqliteFile.h"
#include "platform/sqlite/SqliteValues.h"

#include <QFile>

#include <sqlite3.h>

namespace kelpa {

namespace {

struct FinishBackup
{
    void operator()(sqlite3_backup* backup) const { sqlite3_backup_finish(backup); }
};

struct CloseCopy
{
    void operator()(sqlite3* connection) const { sqlite3_close(connection); }
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

std::optional<SettingsError> SqliteFile::copyTo(const QString& path) const
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(
        QFile::encodeName(path).constData(), &opened,
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    const std::unique_ptr<sqlite3, CloseCopy> copy(opened);
    if (const auto error = errorUnlessDone(code))
        return error;
    std::unique_ptr<sqlite3_backup, FinishBackup> backup(
        sqlite3_backup_init(copy.get(), "main", m_connection.get(), "main"));
    if (!backup)
        return errorUnlessDone(sqlite3_extended_errcode(copy.get()))
            .value_or(SettingsError::failed);
    constexpr int allPages = -1;
    if (const auto error = errorUnlessDone(sqlite3_backup_step(backup.get(), allPages)))
        return error;
    backup.reset();
    // Otherwise reading the copy would need a log beside it.
    return errorUnlessDone(
        sqlite3_exec(copy.get(), "PRAGMA journal_mode = DELETE", nullptr, nullptr, nullptr));
}

} // namespace kelpa
