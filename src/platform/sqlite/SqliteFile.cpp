#include "platform/sqlite/SqliteFile.h"

#include "platform/sqlite/SqliteValues.h"

#include <QByteArrayList>
#include <QFile>

#include <sqlite3.h>
#include <sys/statvfs.h>

#include <array>
#include <thread>
#include <utility>

namespace kelpa {

namespace {

/// "Klpa", by which `file` and other tools recognise the database.
constexpr qint64 applicationID = 0x4b6c7061;
constexpr qint64 formatVersion = 1;

/// Applied in this order; the page size must be set before the file's first page is written. A save
/// writes whole values of a megabyte, so large pages save copying and checksums. Freed pages are
/// not zeroed, which some builds of SQLite do by default and which doubles the bytes written.
/// Changed pages stay in memory until the transaction ends, since spilled ones would be written
/// twice.
constexpr std::array durability{
    "PRAGMA page_size = 16384",   "PRAGMA journal_mode = WAL",    "PRAGMA synchronous = FULL",
    "PRAGMA cache_spill = FALSE", "PRAGMA secure_delete = FALSE",
};

constexpr std::int64_t pageSize = 16384;

/// The write-ahead log grows to several saves of a large board before a checkpoint, and is then
/// overwritten from its beginning, which costs a tenth of extending a file.
constexpr std::int64_t mostLogPages = 512;
/// The share of a small disk's free space that the log may take instead.
constexpr std::int64_t logShare = 4;

/// SQL that turns an empty file into Kelpa's database.
QByteArray tableCreationSql()
{
    const QByteArrayList statements{
        "BEGIN IMMEDIATE",
        "CREATE TABLE IF NOT EXISTS settings(key TEXT PRIMARY KEY NOT NULL, value)",
        "PRAGMA application_id = " + QByteArray::number(applicationID),
        "PRAGMA user_version = " + QByteArray::number(formatVersion),
        "COMMIT",
    };
    return statements.join(';');
}

} // namespace

void SqliteFile::CloseConnection::operator()(sqlite3* connection) const
{
    sqlite3_close(connection);
}

void SqliteFile::FinalizeStatement::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

SqliteFile::~SqliteFile() = default;

SettingsResult<std::unique_ptr<SqliteFile>> SqliteFile::open(const QString& path, Access access)
{
    std::unique_ptr<SqliteFile> file(new SqliteFile);
    file->m_path = path;
    if (const auto error = file->connect(path, access))
        return *error;
    file->acceptChanges();
    return file;
}

int SqliteFile::waitForLock(void* file, int /*attempts*/)
{
    if (std::chrono::steady_clock::now() >= static_cast<SqliteFile*>(file)->m_lockDeadline)
        return 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return 1;
}

std::optional<SettingsError> SqliteFile::connect(const QString& path, Access access)
{
    resetLockDeadline();
    // A URI, since only that form can mark a file as immutable.
    QByteArray uri = "file:" + QFile::encodeName(path).toPercentEncoding("/");
    if (access == Access::immutable)
        uri += "?immutable=1";
    const int mode = access == Access::readWrite ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
    sqlite3* connection = nullptr;
    const int code = sqlite3_open_v2(
        uri.constData(), &connection,
        mode | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    m_connection.reset(connection);
    if (const auto error = errorUnlessDone(code))
        return error;
    keepAsIs();
    sqlite3_busy_handler(connection, waitForLock, this);

    if (const auto error = checkIdentity())
        return error;
    if (access != Access::readWrite)
        return std::nullopt;
    if (sqlite3_db_readonly(connection, "main") == 1)
        return SettingsError::readOnly;
    return prepareTable();
}

std::optional<SettingsError> SqliteFile::checkIdentity()
{
    const auto read = readIntegers({
        "PRAGMA application_id",
        "PRAGMA user_version",
        "SELECT count(*) FROM sqlite_schema",
        "SELECT count(*) FROM pragma_table_info('settings') WHERE name IN ('key', 'value')",
    });
    if (const auto* const error = std::get_if<SettingsError>(&read))
        return *error;
    const auto& [application, version, objects, columns] = std::get<0>(read);
    if (application != 0 && application != applicationID)
        return SettingsError::damaged;
    if (version > formatVersion)
        return SettingsError::newer;
    m_hasTable = columns == 2;
    return objects == 0 || m_hasTable ? std::nullopt : std::optional(SettingsError::damaged);
}

std::optional<SettingsError> SqliteFile::prepareTable()
{
    for (const char* const sql : durability) {
        if (const auto error = run(sql))
            return error;
    }
    // Instead of SQLite's own rule, which knows nothing of the disk.
    sqlite3_wal_hook(m_connection.get(), endCommit, this);
    const auto version = readIntegers({"PRAGMA user_version"});
    if (const auto* const error = std::get_if<SettingsError>(&version))
        return *error;
    if (std::get<0>(version).front() < formatVersion) {
        if (const auto error = createTable())
            return error;
    }
    m_hasTable = true;
    SettingsResult<Statement> upsert =
        prepare("INSERT INTO settings(key, value) VALUES(?1, ?2) "
                "ON CONFLICT(key) DO UPDATE SET value = excluded.value");
    if (const auto* const error = std::get_if<SettingsError>(&upsert))
        return *error;
    m_upsert = std::get<Statement>(std::move(upsert));
    return errorUnlessDone(
        sqlite3_db_config(m_connection.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr));
}

std::optional<SettingsError> SqliteFile::createTable()
{
    return run(tableCreationSql().constData());
}

std::optional<SettingsError> SqliteFile::run(const char* sql)
{
    return errorUnlessDone(sqlite3_exec(m_connection.get(), sql, nullptr, nullptr, nullptr));
}

template <std::size_t Count>
SettingsResult<std::array<std::int64_t, Count>>
SqliteFile::readIntegers(const char* const (&queries)[Count])
{
    std::array<std::int64_t, Count> integers{};
    for (std::size_t i = 0; i < Count; ++i) {
        const SettingsResult<Statement> query = prepare(queries[i]);
        if (const auto* const error = std::get_if<SettingsError>(&query))
            return *error;
        sqlite3_stmt* const statement = std::get<Statement>(query).get();
        const int code = sqlite3_step(statement);
        if (const auto error = errorUnlessDone(code))
            return *error;
        if (code == SQLITE_ROW)
            integers[i] = sqlite3_column_int64(statement, 0);
    }
    return integers;
}

SettingsResult<SqliteFile::Statement> SqliteFile::prepare(const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(m_connection.get(), sql, -1, &statement, nullptr);
    if (const auto error = errorUnlessDone(code))
        return *error;
    return Statement(statement);
}

SqliteFile::StoredRows SqliteFile::readRows()
{
    // A file without the table is empty.
    if (!m_hasTable)
        return {};
    const SettingsResult<Statement> prepared = prepare("SELECT rowid FROM settings");
    if (const auto* const error = std::get_if<SettingsError>(&prepared))
        return {{}, *error};
    sqlite3_stmt* const statement = std::get<Statement>(prepared).get();
    StoredRows rows;
    int code = SQLITE_OK;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW)
        rows.numbers.append(sqlite3_column_int64(statement, 0));
    rows.error = errorUnlessDone(code);
    return rows;
}

FileContents SqliteFile::read()
{
    resetLockDeadline();
    const StoredRows rows = readRows();
    FileContents contents{{}, rows.error};
    if (rows.numbers.isEmpty())
        return contents;

    // Row by row, so that a damaged row does not hide the others.
    const SettingsResult<Statement> prepared =
        prepare("SELECT key, value FROM settings WHERE rowid = ?1");
    if (const auto* const error = std::get_if<SettingsError>(&prepared))
        return {{}, *error};
    sqlite3_stmt* const statement = std::get<Statement>(prepared).get();
    for (const std::int64_t row : rows.numbers) {
        sqlite3_bind_int64(statement, 1, row);
        const int code = sqlite3_step(statement);
        if (code == SQLITE_ROW) {
            if (std::optional<SettingsValue> value = columnValue(statement, 1))
                contents.values.insert(columnText(statement, 0), *std::move(value));
        } else if (const auto error = errorUnlessDone(code)) {
            contents.error = error;
        }
        sqlite3_reset(statement);
    }
    return contents;
}

std::optional<SettingsError> SqliteFile::writeRow(const QString& key, const SettingsValue& value)
{
    int code = bind(m_upsert.get(), 1, key);
    if (code == SQLITE_OK)
        code = std::visit([this](const auto& v) { return bind(m_upsert.get(), 2, v); }, value);
    if (code == SQLITE_OK)
        code = sqlite3_step(m_upsert.get());
    sqlite3_reset(m_upsert.get());
    sqlite3_clear_bindings(m_upsert.get());
    return errorUnlessDone(code);
}

std::optional<SettingsError> SqliteFile::write(const SettingsValues& values)
{
    resetLockDeadline();
    std::optional<SettingsError> error = tryToWrite(values);
    // A file that others have changed stays as it is until that is noticed.
    if (error == SettingsError::full && isFileAsLeft() && emptyLog())
        error = tryToWrite(values);
    m_logState = logState();
    return error;
}

std::optional<SettingsError> SqliteFile::tryToWrite(const SettingsValues& values)
{
    // Takes the write lock first, so that no later statement waits for one.
    std::optional<SettingsError> error = run("BEGIN IMMEDIATE");
    for (auto row = values.begin(); !error && row != values.end(); ++row)
        error = writeRow(row.key(), row.value());
    if (!error)
        error = run("COMMIT");
    if (sqlite3_get_autocommit(m_connection.get()) == 0)
        run("ROLLBACK");
    return error;
}

int SqliteFile::endCommit(void* file, sqlite3* connection, const char* name, int pages)
{
    auto* const self = static_cast<SqliteFile*>(file);
    // As above.
    if (self->isCheckpointDue(pages) && self->isFileAsLeft()) {
        sqlite3_wal_checkpoint_v2(connection, name, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
        self->m_fileState = FileState::of(self->m_path);
    }
    return SQLITE_OK;
}

bool SqliteFile::isCheckpointDue(std::int64_t pages) const
{
    struct statvfs disk = {};
    if (pages >= mostLogPages || ::statvfs(QFile::encodeName(m_path).constData(), &disk) != 0)
        return pages >= mostLogPages;
    const auto freePages = static_cast<std::int64_t>(disk.f_bavail * disk.f_frsize) / pageSize;
    return pages > freePages / logShare;
}

bool SqliteFile::emptyLog()
{
    resetLockDeadline();
    const int code = sqlite3_wal_checkpoint_v2(m_connection.get(), "main",
                                               SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    m_fileState = FileState::of(m_path);
    return code == SQLITE_OK;
}

QString SqliteFile::logPath() const
{
    return m_path + QStringLiteral("-wal");
}

std::optional<FileState> SqliteFile::logState() const
{
    return FileState::of(logPath(), FileState::Time::modification);
}

bool SqliteFile::isFileAsLeft() const
{
    return FileState::of(m_path) == m_fileState;
}

bool SqliteFile::isAsLeft() const
{
    return logState() == m_logState && isFileAsLeft();
}

SettingsResult<bool> SqliteFile::isWrittenByOthers()
{
    const auto version = readIntegers({"PRAGMA data_version"});
    if (const auto* const error = std::get_if<SettingsError>(&version))
        return *error;
    return std::get<0>(version).front() != m_dataVersion;
}

FileContents SqliteFile::readAnew() const
{
    const std::optional<FileState> file = FileState::of(m_path);
    // SQLite takes an empty file for a new one, and would remove the log of another connection.
    if (!file || file->size == 0 || (m_logState && !logState()))
        return {{}, SettingsError::damaged};
    const auto opened = open(m_path, Access::readOnly);
    if (const auto* const error = std::get_if<SettingsError>(&opened))
        return {{}, *error};
    SqliteFile& other = *std::get<0>(opened);
    FileContents found = other.read();
    if (const auto fault = other.check();
        fault && (!found.error || fault == SettingsError::damaged))
        found.error = fault;
    return found;
}

SettingsResult<bool> SqliteFile::isEmpty()
{
    if (!m_hasTable)
        return true;
    const auto rows = readIntegers({"SELECT EXISTS(SELECT 1 FROM settings)"});
    if (const auto* const error = std::get_if<SettingsError>(&rows))
        return *error;
    return std::get<0>(rows).front() == 0;
}

std::optional<SettingsError> SqliteFile::check()
{
    // The first fault is enough; with more, SQLite reads on beyond it, until it cannot. As a
    // statement, since its table of the same name takes the number as the name of a table in
    // SQLite 3.46.
    const SettingsResult<Statement> prepared = prepare("PRAGMA quick_check(1)");
    if (const auto* const error = std::get_if<SettingsError>(&prepared))
        return *error;
    sqlite3_stmt* const statement = std::get<Statement>(prepared).get();
    const int code = sqlite3_step(statement);
    if (const auto error = errorUnlessDone(code))
        return error;
    const bool isWhole = code == SQLITE_ROW && columnText(statement, 0) == QLatin1String("ok");
    return isWhole ? std::nullopt : std::optional(SettingsError::damaged);
}

void SqliteFile::acceptChanges()
{
    m_fileState = FileState::of(m_path);
    m_logState = logState();
    const auto version = readIntegers({"PRAGMA data_version"});
    if (!std::holds_alternative<SettingsError>(version))
        m_dataVersion = std::get<0>(version).front();
}

void SqliteFile::keepAsIs()
{
    sqlite3_db_config(m_connection.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

} // namespace kelpa
