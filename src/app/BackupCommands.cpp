#include "app/BackupCommands.h"

#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/sqlite/backup/DailyBackup.h"
#include "platform/sqlite/backup/SqliteBackups.h"
#include "store/board/BoardPersistence.h"

#include <QLocale>

#include <algorithm>
#include <memory>
#include <optional>

namespace kelpa {

namespace {

CommandOutput failed(const QString& reason)
{
    return {{}, QStringLiteral("kelpa: %1\n").arg(reason), 1};
}

QString localTime(const Backup& backup)
{
    return QLocale::c().toString(backup.time.toLocalTime(), QStringLiteral("yyyy-MM-dd HH:mm"));
}

/// Absent when the backup cannot be read whole.
std::optional<BoardContents> contentsOf(const Backups& backups, const Backup& backup)
{
    const auto values = backups.read(backup.name);
    return values ? boardIn(*values) : std::nullopt;
}

QString sizeOf(const BoardContents& board)
{
    return QStringLiteral("goals: %1, open todos: %2")
        .arg(board.goals.size())
        .arg(openTodoCount(board));
}

QString reasonOf(const Backup& backup)
{
    switch (backup.reason) {
    case BackupReason::daily:
        return {};
    case BackupReason::beforeRestore:
        return QStringLiteral(" (before a backup was restored)");
    case BackupReason::beforeImport:
        return QStringLiteral(" (before a file was imported)");
    }
    Q_UNREACHABLE();
}

} // namespace

CommandOutput listBackups(const QString& settingsPath)
{
    const SqliteBackups backups(settingsPath);
    const QList<Backup> list = backups.list();
    if (list.isEmpty())
        return {QStringLiteral("There is no backup of the board in %1 yet.\n").arg(settingsPath)};
    QString text;
    for (const Backup& backup : list) {
        const std::optional<BoardContents> board = contentsOf(backups, backup);
        text +=
            QStringLiteral("%1  %2  %3%4\n")
                .arg(backup.name, localTime(backup),
                     board ? sizeOf(*board) : QStringLiteral("cannot be read"), reasonOf(backup));
    }
    return {text};
}

CommandOutput restoreBackup(const QString& settingsPath, const QString& name)
{
    SqliteBackups backups(settingsPath);
    const QList<Backup> list = backups.list();
    const auto backup = std::ranges::find(list, name, &Backup::name);
    if (backup == list.end())
        return failed(QStringLiteral("there is no backup %1 of the board in %2; --list-backups "
                                     "lists what there is")
                          .arg(name, settingsPath));
    const std::optional<BoardContents> contents = contentsOf(backups, *backup);
    if (!contents)
        return failed(QStringLiteral("the backup %1 of the board in %2 cannot be read; the board "
                                     "is as it was")
                          .arg(name, settingsPath));

    SqliteSettingsStore store(settingsPath);
    if (store.isAlreadyInUse())
        return failed(QStringLiteral("Kelpa runs with the board in %1; restore the backup from its "
                                     "menu, or close it first")
                          .arg(settingsPath));
    // What is wrong with the file was reported on standard error.
    if (!store.isLoaded() || store.status().error)
        return {{}, {}, 1};
    if (!backups.keepBoard(BackupReason::beforeRestore))
        return failed(QStringLiteral("the present board could not be kept as a backup, so nothing "
                                     "was restored"));
    const BoardContents board = restored(loadBoard(store).contents, *contents);
    const std::optional<std::vector<SettingsEntry>> entries = wholeBoardEntries(board);
    if (!entries)
        return failed(QStringLiteral("the backup %1 has a value that cannot be stored; the board "
                                     "in %2 is as it was")
                          .arg(name, settingsPath));
    if (!store.write(*entries))
        return {{}, {}, 1};
    return {QStringLiteral("Restored the board of %1: %2.\nThe board before is a backup, too.\n")
                .arg(localTime(*backup), sizeOf(board))};
}

void backUpDaily(SqliteSettingsStore& store)
{
    const auto backup = std::make_shared<DailyBackup>(store.path());
    store.setBeforeSave([backup] { backup->beforeSave(); });
    store.setMakeRoom([backup] { backup->giveUp(); });
}

} // namespace kelpa
