#include "app/BackupCommands.h"

#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/sqlite/backup/BackupFolder.h"
#include "platform/sqlite/backup/DailyBackup.h"
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

QString localTime(const BackupName& name)
{
    return QLocale::c().toString(name.time.toLocalTime(), QStringLiteral("yyyy-MM-dd HH:mm"));
}

/// Absent when the backup cannot be read whole.
std::optional<BoardContents> contentsOf(const BackupFolder& folder, const BackupName& name)
{
    const FileContents contents = folder.read(name);
    return contents.error ? std::nullopt : boardIn(contents.values);
}

QString sizeOf(const BoardContents& board)
{
    return QStringLiteral("%1 goals, %2 open todos")
        .arg(board.goals.size())
        .arg(openTodoCount(board));
}

/// The backup of the present board; absent for a board that is empty.
SettingsResult<std::optional<BackupName>> keepBoard(const QString& path)
{
    SettingsResult<std::unique_ptr<SqliteFile>> held = snapshotOf(path);
    if (const auto* const error = std::get_if<SettingsError>(&held))
        return *error;
    const std::unique_ptr<SqliteFile>& board = std::get<0>(held);
    if (!board)
        return std::optional<BackupName>();
    const auto added = BackupFolder(path).add(
        *board, {QDateTime::currentDateTimeUtc(), BackupReason::beforeRestore});
    if (const auto* const error = std::get_if<SettingsError>(&added))
        return *error;
    return std::optional(std::get<BackupName>(added));
}

} // namespace

CommandOutput listBackups(const QString& settingsPath)
{
    const BackupFolder folder(settingsPath);
    const QList<BackupName> backups = folder.list();
    if (backups.isEmpty())
        return {QStringLiteral("There is no backup of the board in %1 yet.\n").arg(settingsPath)};
    QString text;
    for (const BackupName& name : backups) {
        const std::optional<BoardContents> board = contentsOf(folder, name);
        text += QStringLiteral("%1  %2  %3%4\n")
                    .arg(name.text(), localTime(name),
                         board ? sizeOf(*board) : QStringLiteral("cannot be read"),
                         name.reason == BackupReason::beforeRestore
                             ? QStringLiteral(" (before a backup was restored)")
                             : QString());
    }
    return {text};
}

CommandOutput restoreBackup(const QString& settingsPath, const QString& name)
{
    const BackupFolder folder(settingsPath);
    const QList<BackupName> backups = folder.list();
    const auto backup = std::ranges::find(backups, name, &BackupName::text);
    if (backup == backups.end())
        return failed(QStringLiteral("there is no backup %1 of the board in %2; --list-backups "
                                     "lists what there is")
                          .arg(name, settingsPath));
    const std::optional<BoardContents> contents = contentsOf(folder, *backup);
    if (!contents)
        return failed(QStringLiteral("the backup %1 cannot be read; the board is as it was")
                          .arg(folder.pathOf(*backup)));

    SqliteSettingsStore store(settingsPath);
    if (store.isAlreadyInUse())
        return failed(
            QStringLiteral("Kelpa runs with the board in %1; close it first").arg(settingsPath));
    // What is wrong with the file was reported on standard error.
    if (!store.isLoaded() || store.status().error)
        return {{}, {}, 1};
    const auto kept = keepBoard(store.path());
    if (std::holds_alternative<SettingsError>(kept))
        return failed(QStringLiteral("the present board could not be kept in %1, so nothing was "
                                     "restored")
                          .arg(folder.path()));
    const BoardContents board = restored(loadBoard(store).contents, *contents);
    std::vector<SettingsEntry> entries = boardEntries(board.goals, board.unassignedTodos);
    entries.push_back(assignmentsEntry(board.assignments));
    if (!store.write(entries))
        return {{}, {}, 1};
    QString text =
        QStringLiteral("Restored the board of %1: %2.\n").arg(localTime(*backup), sizeOf(board));
    if (const std::optional<BackupName>& before = std::get<0>(kept))
        text += QStringLiteral("The board before is the backup %1.\n").arg(before->text());
    return {text};
}

void backUpDaily(SqliteSettingsStore& store)
{
    store.setBeforeSave(
        [backup = std::make_shared<DailyBackup>(store.path())] { backup->beforeSave(); });
}

} // namespace kelpa
