// Reads one desktop entry file.
#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace kelpa {

struct DesktopEntry
{
    /// Of its file.
    QString path;
    /// Without ".desktop".
    QString id;
    /// In the language of the process.
    QString name;
    QString startupWmClass;
    /// A name in the icon theme, or an absolute path.
    QString icon;
    /// File name of the program whose process owns the application's windows; empty when the
    /// command does not determine it, as with an interpreter that runs a script.
    QString program;
    /// Not meant to be offered for launching.
    bool isHiddenFromMenus = false;
    /// Declared deleted (Hidden=true): it counts as absent, and so does every later entry of the
    /// id.
    bool isDeleted = false;
};

/// The name of an entry's file without ".desktop"; none when it does not end so.
std::optional<QString> entryIDOfFile(const QString& fileName);

/// None when the file is not a usable entry of an application: not a regular file, larger than
/// 1 MiB, not the format, or its program is not installed. Any thread; reads the disk.
std::optional<DesktopEntry> readDesktopEntry(const QString& path, const QString& id);

/// The commands of an entry, as in the file; empty where the key is missing.
struct EntryCommands
{
    QString exec;
    /// The command of the action "new-window".
    QString newWindowExec;
};

/// Any thread; reads the disk.
EntryCommands readEntryCommands(const QString& path);

/// The directories that hold applications/, icons/ and pixmaps/, the person's own first, as the
/// environment names them. Any thread.
std::vector<QString> applicationDataDirectories();

} // namespace kelpa
