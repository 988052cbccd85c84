#include "platform/sqlite/SqliteFile.h"

#include <QFile>
#include <QList>

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
    return "BEGIN IMMEDIATE;"
           "CREATE TABLE IF NOT EXISTS settings(key TEXT PRIMARY KEY NOT NULL, value);"
           "PRAGMA application_id = " +
           QByteArray::number(applicationID) +
           ";PRAGMA user_version = " + QByteArray::number(formatVersion) + ";COMMIT";
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

std::unique_ptr<SqliteFile> SqliteFile::open(const QString& path, Access access,
                                             std::optional<SettingsTrouble>& trouble)
{
    std::unique_ptr<SqliteFile> file(new SqliteFile);
    trouble = file->connect(path, access);
    return trouble ? nullptr : std::move(file);
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
    std::int64_t application = 0;
    std::int64_t version = 0;
    std::int64_t objects = 0;
    for (const auto& [sql, number] : {std::pair("PRAGMA application_id", &application),
                                      std::pair("PRAGMA user_version", &version),
                                      std::pair("SELECT count(*) FROM sqlite_schema", &objects)}) {
        if (const auto trouble = unlessDone(readInteger(sql, *number)))
            return trouble;
    }
    if (application != 0 && application != applicationID)
        return SettingsTrouble::damaged;
    if (version > formatVersion)
        return SettingsTrouble::newer;
    if (objects == 0)
        return std::nullopt;
    int code = SQLITE_OK;
    const Statement columns = prepare("SELECT key, value FROM settings", code);
    if (code == SQLITE_ERROR)
        return SettingsTrouble::damaged;
    return unlessDone(code);
}

std::optional<SettingsTrouble> SqliteFile::makeTable()
{
    for (const char* const sql : durability) {
        if (const auto trouble = unlessDone(run(sql)))
            return trouble;
    }
    std::int64_t version = 0;
    int code = readInteger("PRAGMA user_version", version);
    if (code == SQLITE_OK && version < formatVersion) {
        code = run(tableInEmptyFile().constData());
    }
    if (code == SQLITE_OK)
        m_put = prepare("INSERT INTO settings(key, value) VALUES(?1, ?2) "
                        "ON CONFLICT(key) DO UPDATE SET value = excluded.value",
                        code);
    if (code == SQLITE_OK)
        code = sqlite3_db_config(m_connection.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
    return unlessDone(code);
}

int SqliteFile::run(const char* sql)
{
    return sqlite3_exec(m_connection.get(), sql, nullptr, nullptr, nullptr);
}

int SqliteFile::readInteger(const char* sql, std::int64_t& number)
{
    int code = SQLITE_OK;
    const Statement statement = prepare(sql, code);
    if (code != SQLITE_OK)
        return code;
    code = sqlite3_step(statement.get());
    if (code != SQLITE_ROW)
        return code;
    number = sqlite3_column_int64(statement.get(), 0);
    return SQLITE_OK;
}

SqliteFile::Statement SqliteFile::prepare(const char* sql, int& code)
{
    sqlite3_stmt* statement = nullptr;
    code = sqlite3_prepare_v2(m_connection.get(), sql, -1, &statement, nullptr);
    return Statement(statement);
}

std::optional<SettingsTrouble> SqliteFile::readKeys(QList<std::int64_t>& rows)
{
    int code = SQLITE_OK;
    const Statement statement = prepare("SELECT rowid FROM settings", code);
    if (code == SQLITE_ERROR)
        return std::nullopt; // A file without the table is an empty one.
    if (code != SQLITE_OK)
        return troubleOf(code);
    while ((code = sqlite3_step(statement.get())) == SQLITE_ROW)
        rows.append(sqlite3_column_int64(statement.get(), 0));
    return unlessDone(code);
}

std::optional<SettingsTrouble> SqliteFile::readInto(SettingsValues& values)
{
    startWaiting();
    QList<std::int64_t> rows;
    std::optional<SettingsTrouble> trouble = readKeys(rows);
    if (rows.isEmpty())
        return trouble;

    // Row by row, so that a damaged one does not take the others with it.
    int code = SQLITE_OK;
    const Statement statement = prepare("SELECT key, value FROM settings WHERE rowid = ?1", code);
    if (code != SQLITE_OK)
        return troubleOf(code);
    for (const std::int64_t row : rows) {
        sqlite3_bind_int64(statement.get(), 1, row);
        code = sqlite3_step(statement.get());
        if (code == SQLITE_ROW) {
            if (std::optional<SettingsValue> value = columnValue(statement.get(), 1))
                values.insert(columnText(statement.get(), 0), *std::move(value));
        } else if (const auto rowTrouble = unlessDone(code)) {
            trouble = rowTrouble;
        }
        sqlite3_reset(statement.get());
    }
    return trouble;
}

int SqliteFile::writeRow(const QString& key, const SettingsValue& value)
{
    int code = bind(m_put.get(), 1, key);
    if (code == SQLITE_OK)
        code = std::visit([this](const auto& v) { return bind(m_put.get(), 2, v); }, value);
    if (code == SQLITE_OK)
        code = sqlite3_step(m_put.get());
    sqlite3_reset(m_put.get());
    sqlite3_clear_bindings(m_put.get());
    return code == SQLITE_DONE ? SQLITE_OK : code;
}

std::optional<SettingsTrouble> SqliteFile::write(const SettingsValues& values)
{
    startWaiting();
    // The lock for writing is taken first, so that nothing later has to wait for one.
    int code = run("BEGIN IMMEDIATE");
    for (auto row = values.begin(); code == SQLITE_OK && row != values.end(); ++row)
        code = writeRow(row.key(), row.value());
    if (code == SQLITE_OK)
        code = run("COMMIT");
    if (sqlite3_get_autocommit(m_connection.get()) == 0)
        run("ROLLBACK");
    return unlessDone(code);
}

void SqliteFile::keepAsIs()
{
    sqlite3_db_config(m_connection.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

} // namespace kelpa
