#include "platform/sqlite/RawDatabase.h"

#include <sqlite3.h>

namespace kelpa::test {

void RawDatabase::Close::operator()(sqlite3* connection) const
{
    sqlite3_close(connection);
}

RawDatabase::RawDatabase(const QString& path)
{
    sqlite3* connection = nullptr;
    sqlite3_open(path.toUtf8().constData(), &connection);
    m_connection.reset(connection);
}

bool RawDatabase::run(const char* sql)
{
    return sqlite3_exec(m_connection.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

QList<QString> RawDatabase::rows(const QString& sql)
{
    QList<QString> rows;
    sqlite3_stmt* statement = nullptr;
    int code =
        sqlite3_prepare_v2(m_connection.get(), sql.toUtf8().constData(), -1, &statement, nullptr);
    if (code == SQLITE_OK) {
        while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
            const void* const text = sqlite3_column_text16(statement, 0);
            rows.append(
                QString(static_cast<const QChar*>(text), sqlite3_column_bytes16(statement, 0) / 2));
        }
        sqlite3_finalize(statement);
    }
    if (code != SQLITE_DONE)
        return {QString::fromUtf8(sqlite3_errmsg(m_connection.get()))};
    return rows;
}

QList<QString> rowsOf(const QString& path, const QString& sql)
{
    return RawDatabase(path).rows(sql);
}

} // namespace kelpa::test
