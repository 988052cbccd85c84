// One connection to the file of settings: a table of keys and values behind SQLite's C interface.
#pragma once

#include "platform/SettingsStore.h"
#include "platform/sqlite/SettingsTrouble.h"

#include <QList>
#include <QMap>
#include <QString>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

namespace kelpa {

using SettingsValues = QMap<QString, SettingsValue>;

/// What a file holds, as far as it can be read.
struct FileContents
{
    SettingsValues values;
    /// Why something is missing.
    std::optional<SettingsTrouble> trouble;
};

/// Main thread. A function that returns a trouble has changed nothing in the file. None waits for
/// another process's lock longer than `maxWait` altogether.
class SqliteFile
{
public:
    enum class Access : std::uint8_t {
        readWrite,
        readOnly,
        /// Looks neither for locks nor for a write-ahead log: for a file that nobody can write to.
        immutable,
    };

    static constexpr std::chrono::milliseconds maxWait{20};

    /// Opens the file, which must exist. With `readWrite`, also makes the table in an empty file
    /// and sees to the settings of durability.
    static OrTrouble<std::unique_ptr<SqliteFile>> open(const QString& path, Access access);

    SqliteFile(const SqliteFile&) = delete;
    SqliteFile& operator=(const SqliteFile&) = delete;
    ~SqliteFile();

    /// Every stored value, also those that can be read of a damaged file. Values of kinds that
    /// settings do not have are left out.
    FileContents read();

    /// Writes all of `values` in one transaction; on the disk when it returns nothing.
    std::optional<SettingsTrouble> write(const SettingsValues& values);

    /// Leaves file and log as they are when the connection closes, for a file that is damaged.
    /// A connection begins so, and is complete once the file turned out to be Kelpa's.
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
        std::optional<SettingsTrouble> trouble;
    };

    SqliteFile() = default;

    static int waitForLock(void* file, int attempts);
    void startWaiting() { m_deadline = std::chrono::steady_clock::now() + maxWait; }

    std::optional<SettingsTrouble> connect(const QString& path, Access access);
    std::optional<SettingsTrouble> checkIdentity();
    std::optional<SettingsTrouble> makeTable();
    std::optional<SettingsTrouble> run(const char* sql);
    /// The first column of the first row that each question gives; 0 where it gives none.
    template <std::size_t Count>
    OrTrouble<std::array<std::int64_t, Count>> readIntegers(const char* const (&questions)[Count]);
    OrTrouble<Statement> prepare(const char* sql);
    std::optional<SettingsTrouble> writeRow(const QString& key, const SettingsValue& value);
    StoredRows readRows();

    std::chrono::steady_clock::time_point m_deadline;
    Connection m_connection;
    Statement m_put;
    bool m_hasTable = false;
};

} // namespace kelpa
