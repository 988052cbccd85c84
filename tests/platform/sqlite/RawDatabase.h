// A settings file as any SQLite tool sees it.
#pragma once

#include <QList>
#include <QString>

#include <memory>

struct sqlite3;

namespace kelpa::test {

class RawDatabase
{
public:
    /// Opens or makes the file.
    explicit RawDatabase(const QString& path);

    /// Runs statements; false when one fails.
    bool run(const char* sql);
    /// The first column of every row, as text; a failure gives its message as the only row.
    QList<QString> rows(const QString& sql);

private:
    struct Close
    {
        void operator()(sqlite3* connection) const;
    };
    std::unique_ptr<sqlite3, Close> m_connection;
};

/// `rows` of a connection opened for it alone.
QList<QString> rowsOf(const QString& path, const QString& sql);

} // namespace kelpa::test
