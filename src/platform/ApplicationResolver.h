// Finds the installed application that a window belongs to.
#pragma once

#include "model/Identifiers.h"

#include <QString>

#include <optional>

namespace kelpa {

/// The clues that a window gives about its application. An empty text or a process of 0 is an
/// absent clue; any of them may be wrong or hostile.
struct ApplicationClues
{
    /// `_GTK_APPLICATION_ID`
    QString gtkApplicationID;
    /// `_KDE_NET_WM_DESKTOP_FILE`: an id with or without ".desktop", or a path.
    QString kdeDesktopFile;
    /// The two parts of `WM_CLASS`.
    QString wmClassInstance;
    QString wmClassName;
    ProcessID process = 0;

    friend bool operator==(const ApplicationClues&, const ApplicationClues&) = default;
};

struct ResolvedApplication
{
    /// The desktop-entry id without its suffix, as in "org.gnome.gedit"; absent when no installed
    /// entry belongs to the application.
    std::optional<QString> desktopEntryID;
    /// The entry's name in the language of the process; empty without an entry.
    QString name;

    friend bool operator==(const ResolvedApplication&, const ResolvedApplication&) = default;
};

class ApplicationResolver
{
public:
    virtual ~ApplicationResolver() = default;

    /// Any thread but the main one: may read the installed entries from the disk.
    virtual ResolvedApplication resolve(const ApplicationClues& clues) = 0;
};

} // namespace kelpa
