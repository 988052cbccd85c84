// What a person should know about the file behind a settings store.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace kelpa {

/// Why settings cannot be read or written.
enum class SettingsError : std::uint8_t {
    /// Another Kelpa has the file open.
    inUse,
    /// The file or its folder cannot be reached or read: permissions, a disk that is away.
    unreachable,
    /// A folder is in the file's place.
    isFolder,
    /// A file is in the place of its folder, or of one above.
    folderIsFile,
    /// The file can be read but not written, or is missing in a folder that cannot be written to.
    readOnly,
    /// Another program holds the file's lock for longer than Kelpa may wait.
    busy,
    /// No space is left.
    full,
    /// Not a database, damaged, or the database of another program, and it could not be renamed.
    damaged,
    /// Written by a later release, in a format that this one does not know.
    newer,
    /// Any other input or output error.
    failed,
};

/// A damaged or foreign file that was renamed, so that nothing overwrites it.
struct FileMovedAside
{
    /// Its new name, without the folder.
    QString name;
    /// Whether memory held every value of the file, so that the new file has all of them; otherwise
    /// it has those that could be read.
    bool isRestored = false;

    friend bool operator==(const FileMovedAside&, const FileMovedAside&) = default;
};

struct SettingsStatus
{
    /// Why the last attempt to read or write failed; absent after one that succeeded.
    std::optional<SettingsError> error;
    /// Whether the stored values have been read.
    bool isLoaded = true;
    /// Whether values have been written that are not on the disk yet.
    bool hasUnsavedValues = false;
    /// The last one since the program started.
    std::optional<FileMovedAside> movedAside;
    /// Whether there is a file, or nobody can tell.
    bool mayHoldBoard = true;

    friend bool operator==(const SettingsStatus&, const SettingsStatus&) = default;
};

} // namespace kelpa
