#include "platform/sqlite/backup/SqliteBackups.h"

#include <algorithm>
#include <memory>
#include <variant>

namespace kelpa {

SqliteBackups::SqliteBackups(const QString& boardPath) : m_boardPath(boardPath), m_folder(boardPath)
{}

QList<Backup> SqliteBackups::list() const
{
    QList<Backup> backups;
    for (const BackupName& each : m_folder.list())
        backups.append({each.text(), each.time, each.reason});
    return backups;
}

std::optional<QMap<QString, SettingsValue>> SqliteBackups::read(const QString& name) const
{
    const QList<BackupName> backups = m_folder.list();
    const auto backup = std::ranges::find(backups, name, &BackupName::text);
    if (backup == backups.end())
        return std::nullopt;
    const FileContents contents = m_folder.read(*backup);
    return contents.error ? std::nullopt : std::optional(contents.values);
}

bool SqliteBackups::keepBoard(BackupReason reason)
{
    // An import that was cancelled may still be making its copy.
    const std::lock_guard lock(m_keeping);
    SettingsResult<std::unique_ptr<SqliteFile>> held = snapshotOf(m_boardPath);
    if (std::holds_alternative<SettingsError>(held))
        return false;
    const std::unique_ptr<SqliteFile>& board = std::get<0>(held);
    if (!board)
        return true;
    const BackupName name{QDateTime::currentDateTimeUtc(), reason};
    return std::holds_alternative<BackupName>(m_folder.add(*board, name));
}

} // namespace kelpa
