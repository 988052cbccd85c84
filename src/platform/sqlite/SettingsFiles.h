// The settings file among its neighbours: its place, its folder, the lock beside it, and moving it
// out of the way.
#pragma once

#include "platform/FileDescriptor.h"
#include "platform/sqlite/SettingsTrouble.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

#include <optional>

namespace kelpa {

/// "kelpa/kelpa.sqlite" in $XDG_DATA_HOME, or in ~/.local/share where that is unset or relative.
QString defaultSettingsPath();

/// Makes the folder of `path` and those above it (mode 0700) and an empty file (mode 0600) where
/// they do not exist. What exists keeps its mode.
std::optional<SettingsTrouble> makeSettingsFile(const QString& path);

/// Makes the folder of `path` alone.
std::optional<SettingsTrouble> makeSettingsFolder(const QString& path);

/// Renames the file with its "-wal" and "-shm" to "….damaged-<time>"; the new path of the file, or
/// none when it stays where it is, with its "-wal".
std::optional<QString> moveSettingsFileAside(const QString& path);

/// The time now as the names of what is kept aside bear it: "2026-11-21T10:00:00Z".
QString asideStamp();

/// `path` with every symbolic link resolved, so that all paths to one file become one. Also for a
/// file, its folder, or a link's target, that does not exist yet.
QString resolvedPath(const QString& path);

/// Which file a path leads to, so that one notices when it is another one.
struct FileIdentity
{
    dev_t device = 0;
    ino_t inode = 0;

    /// None when there is no such file, or something else in its place.
    static std::optional<FileIdentity> of(const QString& path);

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// An exclusive lock on a file beside the settings, held until it is destroyed or the process ends,
/// however it ends. The file stays: removing it would let two processes lock two files of one name.
class FileLock
{
public:
    /// Does not wait. `inUse` when another holds it; nothing when it is held now. A lock on a file
    /// that was removed since, or on one of another path, keeps nobody out: a new one is taken and
    /// the old one given up.
    std::optional<SettingsTrouble> acquire(const QString& path);

    /// Whether it is held, and its path still leads to the file that is locked.
    bool isInPlace() const;

private:
    QString m_path;
    FileDescriptor m_file;
};

} // namespace kelpa
