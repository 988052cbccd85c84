// The folder of dated copies beside the board's file.
#pragma once

#include "platform/sqlite/SettingsError.h"
#include "platform/sqlite/SqliteFile.h"
#include "platform/sqlite/backup/BackupName.h"

#include <QList>
#include <QString>

#include <memory>

namespace kelpa {

/// Any thread, several at once, but for `add`: one at a time for each reason. Every function waits
/// for the disk.
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

    /// Copies `board`, which holds a snapshot, reads the copy back, and only then gives it its
    /// name: under it there is a whole backup or none, also after a power cut. Where the name is
    /// taken, takes the next free second. Removes what an earlier attempt has left, and the backups
    /// that are no longer kept.
    SettingsResult<BackupName> add(SqliteFile& board, BackupName name) const;

    /// Everything that the backup holds.
    FileContents read(const BackupName& name) const;

private:
    void thinAfter(const BackupName& added) const;

    QString m_path;
};

/// A connection to the board's file that reads what the file holds now; null for a file without a
/// value, of which there is nothing to keep.
SettingsResult<std::unique_ptr<SqliteFile>> snapshotOf(const QString& boardPath);

} // namespace kelpa
