#include "platform/freedesktop/applications/DesktopEntryIndex.h"

#include <QSet>

#include <initializer_list>
#include <utility>

namespace kelpa {

namespace {

/// Toolkits put spaces in a class where packagers put hyphens in a file name.
QString foldedID(const QString& id)
{
    return id.toCaseFolded().replace(u' ', u'-');
}

} // namespace

DesktopEntryIndex::DesktopEntryIndex(std::vector<DesktopEntry> entries)
{
    QSet<QString> seen;
    for (DesktopEntry& entry : entries) {
        if (entry.id.isEmpty() || seen.contains(entry.id))
            continue;
        seen.insert(entry.id);
        if (!entry.isDeleted)
            m_entries.push_back(std::move(entry));
    }
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const DesktopEntry& entry = m_entries[i];
        m_byID[entry.id].push_back(i);
        m_byFoldedID[foldedID(entry.id)].push_back(i);
        if (const qsizetype dot = entry.id.lastIndexOf(u'.'); dot >= 0)
            m_byLastPart[foldedID(entry.id.mid(dot + 1))].push_back(i);
        if (!entry.startupWmClass.isEmpty()) {
            m_byWmClass[entry.startupWmClass].push_back(i);
            m_byFoldedWmClass[entry.startupWmClass.toCaseFolded()].push_back(i);
        }
        if (!entry.program.isEmpty())
            m_byProgram[entry.program].push_back(i);
    }
}

const DesktopEntry* DesktopEntryIndex::entry(const QString& id) const
{
    return preferred(m_byID, id);
}

const DesktopEntry* DesktopEntryIndex::find(const ApplicationClues& clues,
                                            const QString& program) const
{
    if (const DesktopEntry* found =
            byID(entryIDOfFile(clues.gtkApplicationID).value_or(clues.gtkApplicationID)))
        return found;
    const QString kdeFile = clues.kdeDesktopFile.mid(clues.kdeDesktopFile.lastIndexOf(u'/') + 1);
    if (const DesktopEntry* found = byID(entryIDOfFile(kdeFile).value_or(kdeFile)))
        return found;
    // The instance comes first: an installed web page has an instance of its own while its class is
    // the browser's.
    const std::initializer_list<const QString*> classes{&clues.wmClassInstance, &clues.wmClassName};
    for (const QString* wmClass : classes) {
        if (const DesktopEntry* found = preferred(m_byWmClass, *wmClass))
            return found;
    }
    for (const QString* wmClass : classes) {
        if (const DesktopEntry* found = preferred(m_byFoldedWmClass, wmClass->toCaseFolded()))
            return found;
    }
    for (const QString* wmClass : classes) {
        if (const DesktopEntry* found = byWmClass(*wmClass))
            return found;
    }
    return only(m_byProgram, program);
}

const DesktopEntry* DesktopEntryIndex::byID(const QString& id) const
{
    const DesktopEntry* found = preferred(m_byID, id);
    return found != nullptr ? found : preferred(m_byFoldedID, foldedID(id));
}

const DesktopEntry* DesktopEntryIndex::byWmClass(const QString& wmClass) const
{
    const DesktopEntry* found = byID(wmClass);
    return found != nullptr ? found : only(m_byLastPart, foldedID(wmClass));
}

/// Of several, those meant for launching count before the others; of two equal ones neither does.
const DesktopEntry* DesktopEntryIndex::only(const Positions& positions, const QString& key) const
{
    const auto found = positions.constFind(key);
    if (key.isEmpty() || found == positions.cend())
        return nullptr;
    if (found->size() == 1)
        return &m_entries[found->front()];
    const DesktopEntry* shown = nullptr;
    for (const std::size_t i : *found) {
        if (!m_entries[i].isHiddenFromMenus) {
            if (shown != nullptr)
                return nullptr;
            shown = &m_entries[i];
        }
    }
    return shown;
}

/// The first that is meant for launching, or else the first.
const DesktopEntry* DesktopEntryIndex::preferred(const Positions& positions,
                                                 const QString& key) const
{
    const auto found = positions.constFind(key);
    if (key.isEmpty() || found == positions.cend())
        return nullptr;
    for (const std::size_t i : *found) {
        if (!m_entries[i].isHiddenFromMenus)
            return &m_entries[i];
    }
    return &m_entries[found->front()];
}

} // namespace kelpa
