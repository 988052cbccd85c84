// The backups of the board, as the command line offers them, without a display.
#pragma once

#include <QByteArray>
#include <QString>

namespace kelpa {

class SqliteSettingsStore;

struct CommandOutput
{
    /// For standard output, in whole lines.
    QString text = {};
    /// For standard error, in whole lines.
    QString error = {};
    int exitStatus = 0;
    /// For standard output, byte by byte, after `text`.
    QByteArray data = {};
};

/// Lists the backups of the board in the file, the newest first: name, local time, goals, open
/// todos, and what each was made before.
CommandOutput listBackups(const QString& settingsPath);

/// Replaces goals, todos and assignments of the board by those of a backup. Keeps the board before
/// as a backup first, and changes nothing where that is not possible, the backup cannot be read
/// whole, or Kelpa runs with the board.
CommandOutput restoreBackup(const QString& settingsPath, const QString& name);

/// From now on the store keeps the board as it was before the first change of each day.
void backUpDaily(SqliteSettingsStore& store);

} // namespace kelpa
