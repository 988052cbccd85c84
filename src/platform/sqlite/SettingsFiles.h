// File-system operations on the settings file: its path, its folder, the lock file beside it, and
// moving a damaged file aside.
#pragma once

#include "platform/FileDescriptor.h"
#include "platform/sqlite/SettingsError.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <optional>

namespace kelpa {

/// "kelpa/kelpa.sqlite" in $XDG_DATA_HOME, or in ~/.local/share where that is unset or relative.
QString defaultSettingsPath();

/// Creates the folder of `path` with its parents (mode 0700) and an empty file (mode 0600) where
/// they do not exist. Existing ones keep their modes.
std::optional<SettingsError> makeSettingsFile(const QString& path);

/// Creates only the folder of `path`, with its parents.
std::optional<SettingsError> makeSettingsFolder(const QString& path);

/// Puts the names in a folder on the disk, so that what was created, renamed or removed there stays
/// so after a power cut.
void syncFolder(const QString& folder);

/// Whether there is a regular file at `path`, or its folder does not tell.
bool mayBeFile(const QString& path);

/// Whether nothing is missing but the right to write: the file can be read or created where it and
/// its folder can be written to, which they cannot.
bool isWriteProtected(const QString& path);

/// Renames the file, its "-wal" and its "-shm" to "….damaged-<time>". Returns the new path of the
/// file, which it has after a power cut, too; absent when the file stays where it is, with its
/// "-wal".
std::optional<QString> moveSettingsFileAside(const QString& path);

/// The current time as in the names of copies kept aside: "2026-11-21T10:00:00Z".
QString asideTimestamp();

/// `path` with every symbolic link resolved, so that all paths to one file become equal. The file,
/// its folder or a link's target need not exist yet.
QString resolvedPath(const QString& path);

/// The identity of the file at a path, to detect that it was replaced.
struct FileIdentity
{
    dev_t device = 0;
    ino_t inode = 0;

    /// Absent when there is no regular file at `path`.
    static std::optional<FileIdentity> of(const QString& path);

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// What tells that somebody has changed a file: any write, and any change of its length, also sets
/// both times.
struct FileState
{
    enum class Time : std::uint8_t {
        /// No program can set it back.
        statusChange,
        /// Unlike the other, a change of the owner leaves it as it is. SQLite sets the owner of the
        /// log with each connection of a privileged user.
        modification,
    };

    FileIdentity identity;
    off_t size = 0;
    std::chrono::nanoseconds changed{0};

    /// Absent when there is no regular file at `path`.
    static std::optional<FileState> of(const QString& path, Time time = Time::statusChange);

    friend bool operator==(const FileState&, const FileState&) = default;
};

/// An exclusive lock on a file beside the settings, held until this object is destroyed or the
/// process ends, however it ends. The lock file is never removed, since two processes could then
/// lock two files of the same name; it holds the process and its computer, for others to read.
class FileLock
{
public:
    /// Does not wait. Returns `inUse` when another process holds the lock; no error when it is held
    /// now. A lock on a file that was removed since, or on another path, excludes nobody: it is
    /// released and a new one taken.
    std::optional<SettingsError> acquire(const QString& path);

    /// The process that holds the lock at `path`, as it has written there; absent when it runs on
    /// another computer, or nobody has written. Means nothing while nobody holds the lock.
    static std::optional<qint64> holderOf(const QString& path);

    /// Whether the lock is held and its path still leads to the locked file.
    bool isInPlace() const;

private:
    void writeHolder() const;

    QString m_path;
    FileDescriptor m_file;
};

} // namespace kelpa
