// The folder of dated copies beside the board's file.
#pragma once

#include "platform/sqlite/SettingsError.h"
#include "platform/sqlite/SqliteFile.h"
#include "platform/sqlite/backup/BackupName.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>
#include <stop_token>

namespace kelpa {

/// A copy that holds all of the board, but is perhaps not on the disk yet.
struct UnsyncedBackup
{
    BackupName name;
    /// Of the values that it holds, if they reach the disk.
    QByteArray digest;
};

/// Any thread, several at once, but for `copy`, `complete` and `add`: one at a time for each
/// reason. Every function waits for the disk.
class BackupFolder
{
public:
    /// The folder "<boardPath>.backups". Nothing is created until the first backup.
    explicit BackupFolder(const QString& boardPath);

    const QString& path() const { return m_path; }
    /// The file of a backup.
    QString pathOf(const BackupName& name) const;

    /// Newest first; files of other names are not listed.
    QList<BackupName> list() const;

    /// Copies `board`, which holds a snapshot, without the values that no backup holds, reads the
    /// copy back, and only then gives it its name: under it there is a whole backup or none, also
    /// after a power cut. Where the name is taken, takes the next free second. Removes what an
    /// earlier attempt has left, and the backups that are no longer kept.
    SettingsResult<BackupName> add(SqliteFile& board, const BackupName& name) const;

    /// The first part of `add`, which does not wait for the disk to write, and after which `board`
    /// is not needed any more. `busy` where `stop` was requested. Afterwards the copy is there
    /// until it is completed or removed, also when the program ends, though not after a power cut.
    SettingsResult<UnsyncedBackup> copy(SqliteFile& board, const BackupName& name,
                                        const std::stop_token& stop) const;
    /// The second part, which waits for the disk. Where it fails, the copy is removed.
    SettingsResult<BackupName> complete(const UnsyncedBackup& copy) const;
    void remove(const UnsyncedBackup& copy) const;
    /// What was neither completed nor removed.
    QList<UnsyncedBackup> incomplete(BackupReason reason) const;

    /// Everything that the backup holds.
    FileContents read(const BackupName& name) const;

private:
    QString pathOf(const UnsyncedBackup& copy) const;
    void thinAfter(const BackupName& added) const;

    QString m_path;
};

/// A connection to the board's file that reads what the file holds now; null for a file without a
/// value, of which there is nothing to keep.
SettingsResult<std::unique_ptr<SqliteFile>> snapshotOf(const QString& boardPath);

} // namespace kelpa
