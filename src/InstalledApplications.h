// Tells the X11 window server which installed application a window belongs to.
#pragma once

#include "platform/freedesktop/ApplicationResolver.h"
#include "platform/x11/ApplicationResolver.h"

namespace kelpa {

class InstalledApplications final : public x11::ApplicationResolver
{
public:
    /// `entries` outlives it.
    explicit InstalledApplications(kelpa::ApplicationResolver& entries) : m_entries(entries) {}

    x11::ResolvedApplication resolve(const x11::ApplicationClues& clues) override
    {
        const ResolvedApplication found =
            m_entries.resolve({clues.gtkApplicationID, clues.kdeDesktopFile, clues.wmClassInstance,
                               clues.wmClassName, clues.process});
        return {found.desktopEntryID, found.name};
    }

private:
    kelpa::ApplicationResolver& m_entries;
};

} // namespace kelpa
