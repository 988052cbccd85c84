#include "platform/sqlite/SqliteValues.h"

#include <sqlite3.h>

namespace kelpa {

namespace {

SettingsError errorFromCode(int code)
{
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return SettingsError::busy;
    case SQLITE_FULL:
        return SettingsError::full;
    case SQLITE_READONLY:
        return SettingsError::readOnly;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return SettingsError::damaged;
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return SettingsError::unreachable;
    default:
        return SettingsError::failed;
    }
}

QByteArray columnBytes(sqlite3_stmt* statement, int column)
{
    const void* const bytes = sqlite3_column_blob(statement, column);
    return {static_cast<const char*>(bytes), sqlite3_column_bytes(statement, column)};
}

} // namespace

std::optional<SettingsError> errorUnlessDone(int code)
{
    const bool isDone = code == SQLITE_OK || code == SQLITE_DONE || code == SQLITE_ROW;
    return isDone ? std::nullopt : std::optional(errorFromCode(code));
}

QString columnText(sqlite3_stmt* statement, int column)
{
    const void* const utf16 = sqlite3_column_text16(statement, column);
    const int bytes = sqlite3_column_bytes16(statement, column);
    return QString(static_cast<const QChar*>(utf16), bytes / 2);
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

} // namespace kelpa
