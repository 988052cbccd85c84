// The backups in the folder beside a board's file.
#pragma once

#include "platform/Backups.h"
#include "platform/sqlite/backup/BackupFolder.h"

#include <mutex>

namespace kelpa {

class SqliteBackups final : public Backups
{
public:
    explicit SqliteBackups(const QString& boardPath);

    QList<Backup> list() const override;
    std::optional<QMap<QString, SettingsValue>> read(const QString& name) const override;
    bool keepBoard(BackupReason reason) override;

private:
    /// Held while a copy is made: the folder makes one at a time for each reason.
    std::mutex m_keeping;
    QString m_boardPath;
    BackupFolder m_folder;
};

} // namespace kelpa
