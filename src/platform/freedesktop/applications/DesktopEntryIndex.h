// Indexes the installed desktop entries, and finds the one that a window's clues identify.
#pragma once

#include "platform/ApplicationResolver.h"
#include "platform/freedesktop/applications/DesktopEntryFile.h"

#include <QHash>
#include <QString>

#include <cstddef>
#include <vector>

namespace kelpa {

/// A value; independent of later changes on the disk.
class DesktopEntryIndex
{
public:
    DesktopEntryIndex() = default;

    /// `entries` in order of precedence: of several with one id the first counts, and a deleted one
    /// hides the later ones.
    explicit DesktopEntryIndex(std::vector<DesktopEntry> entries);

    /// The entry of exactly this id (without suffix), or null. Valid as long as the index.
    const DesktopEntry* entry(const QString& id) const;

    /// The entry that the clues identify, or null. The clues count in this order: GTK application
    /// id, KDE desktop file, `WM_CLASS` against `StartupWMClass`, `WM_CLASS` against the ids, and
    /// last `program`, the file name of the process's program (empty when unknown). An ambiguous
    /// clue is ignored, because a wrong identity is worse than none.
    const DesktopEntry* find(const ApplicationClues& clues, const QString& program) const;

private:
    using Positions = QHash<QString, std::vector<std::size_t>>;

    const DesktopEntry* byID(const QString& id) const;
    const DesktopEntry* byWmClass(const QString& wmClass) const;
    const DesktopEntry* only(const Positions& positions, const QString& key) const;
    const DesktopEntry* preferred(const Positions& positions, const QString& key) const;

    std::vector<DesktopEntry> m_entries;
    Positions m_byID;
    Positions m_byFoldedID;
    Positions m_byLastPart;
    Positions m_byWmClass;
    Positions m_byFoldedWmClass;
    Positions m_byProgram;
};

} // namespace kelpa
