// Which installed application a window belongs to.
#pragma once

#include "model/Identifiers.h"

#include <QString>

#include <optional>

namespace kelpa::x11 {

/// What a window and its process say of their application. A clue that is not given is empty.
struct ApplicationClues
{
    QString gtkApplicationID;
    QString kdeDesktopFile;
    QString wmClassInstance;
    QString wmClassName;
    ProcessID process = 0;

    friend bool operator==(const ApplicationClues&, const ApplicationClues&) = default;
};

struct ResolvedApplication
{
    /// Absent when no installed desktop entry is the application's.
    std::optional<QString> desktopEntryID;
    /// The name to show; empty when none is known.
    QString name;
};

/// Called on the thread that takes a look at the desktop, one call at a time; it may read files but
/// must not wait for another program.
class ApplicationResolver
{
public:
    virtual ~ApplicationResolver() = default;

    virtual ResolvedApplication resolve(const ApplicationClues& clues) = 0;
};

} // namespace kelpa::x11
