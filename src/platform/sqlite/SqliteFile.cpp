#include "platform/sqlite/SqliteFile.h"

#include <QByteArrayList>
#include <QFile>

#include <sqlite3.h>

#include <array>
#include <thread>
#include <utility>

namespace kelpa {

namespace {

/// "Klpa", so that `file` and others can tell whose database it is.
constexpr qint64 applicationID = 0x4b6c7061;
constexpr qint64 formatVersion = 1;

/// Of the settings, in this order, the first has to come before the file's first page is written.
/// A save writes whole values of a megabyte, so large pages spare copying and checksums. Freed
/// pages are not filled with zeroes, which some builds of SQLite do unasked: it doubles what is
/// written. Changed pages stay in memory until the transaction ends: spilled ones would be written
/// twice. The log is left to grow to some saves of a large board before it is copied back, and is
/// then overwritten from its beginning, which costs a tenth of making a file longer.
constexpr std::array durability{
    "PRAGMA page_size = 16384",     "PRAGMA journal_mode = WAL",  "PRAGMA synchronous = FULL",
    "PRAGMA secure_delete = FALSE", "PRAGMA cache_spill = FALSE", "PRAGMA wal_autocheckpoint = 512",
};

/// SQL that makes an empty file Kelpa's.
QByteArray tableInEmptyFile()
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

SettingsTrouble troubleOf(int code)
{
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return SettingsTrouble::busy;
    case SQLITE_FULL:
        return SettingsTrouble::full;
    case SQLITE_READONLY:
        return SettingsTrouble::readOnly;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return SettingsTrouble::damaged;
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return SettingsTrouble::unreachable;
    default:
        return SettingsTrouble::failed;
    }
}

std::optional<SettingsTrouble> unlessDone(int code)
{
    const bool isDone = code == SQLITE_OK || code == SQLITE_DONE || code == SQLITE_ROW;
    return isDone ? std::nullopt : std::optional(troubleOf(code));
}

QString columnText(sqlite3_stmt* statement, int column)
{
    const void* const utf16 = sqlite3_column_text16(statement, column);
    const int bytes = sqlite3_column_bytes16(statement, column);
    return QString(static_cast<const QChar*>(utf16), bytes / 2);
}

QByteArray columnBytes(sqlite3_stmt* statement, int column)
{
    const void* const bytes = sqlite3_column_blob(statement, column);
    return {static_cast<const char*>(bytes), sqlite3_column_bytes(statement, column)};
}

std::optional<SettingsValue> columnValue(sqlite3_stmt* statement, int column)
{
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_TEXT:
        return columnText(statement, column);
    case SQLITE_BLOB:
        return columnBytes(statement, column);
    case SQLITE_INTEGER: {
        const sqlite3_int64 number = sqlite3_column_int64(statement, column);
        return number == 0 || number == 1 ? std::optional<SettingsValue>(number == 1)
                                          : std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

/// The text and the bytes stay with the caller until the statement is reset.
int bind(sqlite3_stmt* statement, int index, const QString& text)
{
    return sqlite3_bind_text16(statement, index, text.utf16(), static_cast<int>(text.size()) * 2,
                               SQLITE_STATIC);
}

int bind(sqlite3_stmt* statement, int index, bool isTrue)
{
    return sqlite3_bind_int(statement, index, isTrue ? 1 : 0);
}

int bind(sqlite3_stmt* statement, int index, const QByteArray& bytes)
{
    return sqlite3_bind_blob64(statement, index, bytes.constData(),
                               static_cast<sqlite3_uint64>(bytes.size()), SQLITE_STATIC);
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

OrTrouble<std::unique_ptr<SqliteFile>> SqliteFile::open(const QString& path, Access access)
{
    std::unique_ptr<SqliteFile> file(new SqliteFile);
    if (const auto trouble = file->connect(path, access))
        return *trouble;
    return file;
}

int SqliteFile::waitForLock(void* file, int /*attempts*/)
{
    if (std::chrono::steady_clock::now() >= static_cast<SqliteFile*>(file)->m_deadline)
        return 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return 1;
}

std::optional<SettingsTrouble> SqliteFile::connect(const QString& path, Access access)
{
    startWaiting();
    // As a URI, since only that form can say that a file is immutable.
    QByteArray uri = "file:" + QFile::encodeName(path).toPercentEncoding("/");
    if (access == Access::immutable)
        uri += "?immutable=1";
    const int mode = access == Access::readWrite ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
    sqlite3* connection = nullptr;
    const int code = sqlite3_open_v2(
        uri.constData(), &connection,
        mode | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    m_connection.reset(connection);
    if (const auto trouble = unlessDone(code))
        return trouble;
    keepAsIs();
    sqlite3_busy_handler(connection, waitForLock, this);

    if (const auto trouble = checkIdentity())
        return trouble;
    if (access != Access::readWrite)
        return std::nullopt;
    if (sqlite3_db_readonly(connection, "main") == 1)
        return SettingsTrouble::readOnly;
    return makeTable();
}

std::optional<SettingsTrouble> SqliteFile::checkIdentity()
{
    const auto read = readIntegers({
        "PRAGMA application_id",
        "PRAGMA user_version",
        "SELECT count(*) FROM sqlite_schema",
        "SELECT count(*) FROM pragma_table_info('settings') WHERE name IN ('key', 'value')",
    });
    if (const auto* const trouble = std::get_if<SettingsTrouble>(&read))
        return *trouble;
    const auto& [application, version, objects, columns] = std::get<0>(read);
    if (application != 0 && application != applicationID)
        return SettingsTrouble::damaged;
    if (version > formatVersion)
        return SettingsTrouble::newer;
    m_hasTable = columns == 2;
    return objects == 0 || m_hasTable ? std::nullopt : std::optional(SettingsTrouble::damaged);
}

std::optional<SettingsTrouble> SqliteFile::makeTable()
{
    for (const char* const sql : durability) {
        if (const auto trouble = run(sql))
            return trouble;
    }
    const auto version = readIntegers({"PRAGMA user_version"});
    if (const auto* const trouble = std::get_if<SettingsTrouble>(&version))
        return *trouble;
    if (std::get<0>(version).front() < formatVersion) {
        if (const auto trouble = run(tableInEmptyFile().constData()))
            return trouble;
    }
    m_hasTable = true;
    OrTrouble<Statement> put = prepare("INSERT INTO settings(key, value) VALUES(?1, ?2) "
                                       "ON CONFLICT(key) DO UPDATE SET value = excluded.value");
    if (const auto* const trouble = std::get_if<SettingsTrouble>(&put))
        return *trouble;
    m_put = std::get<Statement>(std::move(put));
    return unlessDone(
        sqlite3_db_config(m_connection.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr));
}

std::optional<SettingsTrouble> SqliteFile::run(const char* sql)
{
    return unlessDone(sqlite3_exec(m_connection.get(), sql, nullptr, nullptr, nullptr));
}

template <std::size_t Count>
OrTrouble<std::array<std::int64_t, Count>>
SqliteFile::readIntegers(const char* const (&questions)[Count])
{
    std::array<std::int64_t, Count> integers{};
    for (std::size_t i = 0; i < Count; ++i) {
        const OrTrouble<Statement> question = prepare(questions[i]);
        if (const auto* const trouble = std::get_if<SettingsTrouble>(&question))
            return *trouble;
        sqlite3_stmt* const statement = std::get<Statement>(question).get();
        const int code = sqlite3_step(statement);
        if (const auto trouble = unlessDone(code))
            return *trouble;
        if (code == SQLITE_ROW)
            integers[i] = sqlite3_column_int64(statement, 0);
    }
    return integers;
}

OrTrouble<SqliteFile::Statement> SqliteFile::prepare(const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(m_connection.get(), sql, -1, &statement, nullptr);
    if (const auto trouble = unlessDone(code))
        return *trouble;
    return Statement(statement);
}

SqliteFile::StoredRows SqliteFile::readRows()
{
    // A file without the table is an empty one.
    if (!m_hasTable)
        return {};
    const OrTrouble<Statement> prepared = prepare("SELECT rowid FROM settings");
    if (const auto* const trouble = std::get_if<SettingsTrouble>(&prepared))
        return {{}, *trouble};
    sqlite3_stmt* const statement = std::get<Statement>(prepared).get();
    StoredRows rows;
    int code = SQLITE_OK;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW)
        rows.numbers.append(sqlite3_column_int64(statement, 0));
    rows.trouble = unlessDone(code);
    return rows;
}

FileContents SqliteFile::read()
{
    startWaiting();
    const StoredRows rows = readRows();
    FileContents contents{{}, rows.trouble};
    if (rows.numbers.isEmpty())
        return contents;

    // Row by row, so that a damaged one does not take the others with it.
    const OrTrouble<Statement> prepared =
        prepare("SELECT key, value FROM settings WHERE rowid = ?1");
    if (const auto* const trouble = std::get_if<SettingsTrouble>(&prepared))
        return {{}, *trouble};
    sqlite3_stmt* const statement = std::get<Statement>(prepared).get();
    for (const std::int64_t row : rows.numbers) {
        sqlite3_bind_int64(statement, 1, row);
        const int code = sqlite3_step(statement);
        if (code == SQLITE_ROW) {
            if (std::optional<SettingsValue> value = columnValue(statement, 1))
                contents.values.insert(columnText(statement, 0), *std::move(value));
        } else if (const auto trouble = unlessDone(code)) {
            contents.trouble = trouble;
        }
        sqlite3_reset(statement);
    }
    return contents;
}

std::optional<SettingsTrouble> SqliteFile::writeRow(const QString& key, const SettingsValue& value)
{
    int code = bind(m_put.get(), 1, key);
    if (code == SQLITE_OK)
        code = std::visit([this](const auto& v) { return bind(m_put.get(), 2, v); }, value);
    if (code == SQLITE_OK)
        code = sqlite3_step(m_put.get());
    sqlite3_reset(m_put.get());
    sqlite3_clear_bindings(m_put.get());
    return unlessDone(code);
}

std::optional<SettingsTrouble> SqliteFile::write(const SettingsValues& values)
{
    startWaiting();
    // The lock for writing is taken first, so that nothing later has to wait for one.
    std::optional<SettingsTrouble> trouble = run("BEGIN IMMEDIATE");
    for (auto row = values.begin(); !trouble && row != values.end(); ++row)
        trouble = writeRow(row.key(), row.value());
    if (!trouble)
        trouble = run("COMMIT");
    if (sqlite3_get_autocommit(m_connection.get()) == 0)
        run("ROLLBACK");
    return trouble;
}

void SqliteFile::keepAsIs()
{
    sqlite3_db_config(m_connection.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

} // namespace kelpa
