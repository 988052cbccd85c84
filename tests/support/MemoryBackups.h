// Backups in memory, which fail on demand.
#pragma once

#include "model/UtcTime.h"
#include "platform/Backups.h"
#include "store/board/BoardPersistence.h"

namespace kelpa::test {

class MemoryBackups : public Backups
{
public:
    QList<Backup> list() const override { return backups; }
    std::optional<QMap<QString, SettingsValue>> read(const QString& name) const override
    {
        const auto found = contents.constFind(name);
        return found == contents.constEnd() ? std::nullopt : std::optional(*found);
    }
    bool keepBoard(BackupReason reason) override
    {
        ++keptBoards;
        lastReason = reason;
        return canKeep;
    }

    void add(const QString& name, const QList<Goal>& goals, const QList<TodoItem>& todos = {})
    {
        backups.append({name, utcTime(QDate(2026, 11, 22), QTime(9, 0))});
        for (const SettingsEntry& entry : boardEntries(goals, todos))
            contents[name].insert(entry.key, entry.value);
    }

    QList<Backup> backups;
    QMap<QString, QMap<QString, SettingsValue>> contents;
    bool canKeep = true;
    int keptBoards = 0;
    /// Of the last call of `keepBoard`.
    std::optional<BackupReason> lastReason;
};

} // namespace kelpa::test
