// One connection to the settings file: a table of keys and values, through SQLite's C interface.
#pragma once

#include "platform/SettingsStore.h"
#include "platform/sqlite/SettingsError.h"
#include "platform/sqlite/SettingsFiles.h"

#include <QList>
#include <QMap>
#include <QString>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

struct sqlite3;
struct sqlite3_stmt;

namespace kelpa {

using SettingsValues = QMap<QString, SettingsValue>;
using KeyTest = std::function<bool(const QString& key)>;

/// The contents of a file, as far as they can be read.
struct FileContents
{
    SettingsValues values;
    /// Why something is missing; absent when everything was read.
    std::optional<SettingsError> error;
};

/// One thread at a time. A function that returns an error has changed nothing in the file. No
/// function waits for another process's lock longer than `maxWait` in total.
class SqliteFile
{
public:
    enum class Access : std::uint8_t {
        readWrite,
        readOnly,
        /// Ignores locks and the write-ahead log: for a file that nobody can write to.
        immutable,
    };

    static constexpr std::chrono::milliseconds maxWait{20};

    /// Opens the file, which must exist. With `readWrite`, also creates the table in an empty file
    /// and sets the pragmas for durability.
    static SettingsResult<std::unique_ptr<SqliteFile>> open(const QString& path, Access access);

    SqliteFile(const SqliteFile&) = delete;
    SqliteFile& operator=(const SqliteFile&) = delete;
    ~SqliteFile();

    /// Every stored value, including those that can be read from a damaged file. Leaves out values
    /// of types that settings do not have.
    FileContents read();

    /// Writes all of `values` in one transaction; they are on the disk when it returns no error. On
    /// a full disk, first makes room by emptying the log.
    std::optional<SettingsError> write(const SettingsValues& values);

    /// Whether nobody else has touched file or log since this connection left them; where somebody
    /// has, the values may still be the same.
    bool isAsLeft() const;
    /// Whether another connection has committed since the file was opened or `acceptChanges`
    /// called.
    SettingsResult<bool> isWrittenByOthers();
    /// As `read`, past everything that this connection has in memory. `damaged` where that is not a
    /// whole database any more.
    FileContents readAnew() const;
    /// The changes that others made have been read.
    void acceptChanges();
    /// Moves all of the log to the file and cuts it; false where the file has no room for that, or
    /// somebody reads the log.
    bool emptyLog();

    /// From now on this connection reads what the file holds now, whatever others write, until it
    /// is closed. For one that is opened for reading only.
    std::optional<SettingsError> holdSnapshot();
    /// Copies the rows whose keys `isCopied` to `path`, an empty file, which needs no log beside
    /// it. The copy has none of the bytes of the other rows, nor of what the file held earlier.
    /// Does not wait until it is on the disk. `busy` where `stop` was requested.
    std::optional<SettingsError> copyTo(const QString& path, const KeyTest& isCopied,
                                        const std::stop_token& stop);
    /// Waits until all of the file is on the disk, whoever has written it.
    std::optional<SettingsError> sync();
    /// Whether the file holds no value.
    SettingsResult<bool> isEmpty();
    /// What is wrong with the structure of the file; absent when nothing is.
    std::optional<SettingsError> check();

    /// Makes closing the connection leave file and log as they are, for a damaged file. Every
    /// connection begins so, until the file has turned out to be Kelpa's.
    void keepAsIs();

private:
    struct CloseConnection
    {
        void operator()(sqlite3* connection) const;
    };
    struct FinalizeStatement
    {
        void operator()(sqlite3_stmt* statement) const;
    };
    using Connection = std::unique_ptr<sqlite3, CloseConnection>;
    using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

    struct StoredRows
    {
        QList<std::int64_t> numbers;
        std::optional<SettingsError> error;
    };

    SqliteFile() = default;

    static int waitForLock(void* file, int attempts);
    static int endCommit(void* file, sqlite3* connection, const char* name, int pages);
    void resetLockDeadline() { m_lockDeadline = std::chrono::steady_clock::now() + maxWait; }

    std::optional<SettingsError> connect(const QString& path, Access access);
    std::optional<SettingsError> checkIdentity();
    std::optional<SettingsError> prepareTable();
    std::optional<SettingsError> createTable();
    std::optional<SettingsError> copyRowsTo(SqliteFile& copy, const KeyTest& isCopied,
                                            const std::stop_token& stop);
    std::optional<SettingsError> run(const char* sql);
    std::optional<SettingsError> tryToWrite(const SettingsValues& values);
    bool isCheckpointDue(std::int64_t pages) const;
    QString logPath() const;
    std::optional<FileState> logState() const;
    bool isFileAsLeft() const;
    /// The first column of the first row of each query; 0 where there is no row.
    template <std::size_t Count>
    SettingsResult<std::array<std::int64_t, Count>>
    readIntegers(const char* const (&queries)[Count]);
    SettingsResult<Statement> prepare(const char* sql);
    std::optional<SettingsError> writeRow(const QString& key, const SettingsValue& value);
    StoredRows readRows();

    QString m_path;
    std::chrono::steady_clock::time_point m_lockDeadline;
    Connection m_connection;
    Statement m_upsert;
    bool m_hasTable = false;
    /// After the last checkpoint of this connection; no commit changes the file itself.
    std::optional<FileState> m_fileState;
    /// After the last commit of this connection.
    std::optional<FileState> m_logState;
    /// SQLite's number of the last commit that others made.
    std::int64_t m_dataVersion = 0;
};

} // namespace kelpa
