#include "platform/freedesktop/applications/DesktopEntries.h"

#include "platform/ExecutableName.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace kelpa {

namespace {

/// Bounds for a directory that contains itself or is filled on purpose.
constexpr int maximalFolderDepth = 4;
constexpr std::size_t maximalEntries = 20'000;

/// A folder that was changed so recently may be changed again without a new time. Two seconds is
/// the coarsest clock of the file systems in use.
constexpr std::chrono::milliseconds coarsestClock = std::chrono::seconds(2);

} // namespace

DesktopEntries::DesktopEntries(std::vector<QString> dataDirectories,
                               std::chrono::milliseconds checkInterval)
    : m_dataDirectories(std::move(dataDirectories)), m_checkInterval(checkInterval)
{}

ResolvedApplication DesktopEntries::resolve(const ApplicationClues& clues)
{
    const QString program = executableName(clues.process);
    const std::lock_guard lock(m_mutex);
    refresh();
    const DesktopEntry* entry = m_index.find(clues, program);
    if (entry == nullptr)
        return {};
    return {entry->id, entry->name};
}

QString DesktopEntries::icon(const QString& desktopEntryID)
{
    const std::lock_guard lock(m_mutex);
    refresh();
    const DesktopEntry* entry = m_index.entry(desktopEntryID);
    return entry != nullptr ? entry->icon : QString();
}

std::optional<DesktopEntry> DesktopEntries::entry(const QString& desktopEntryID)
{
    const std::lock_guard lock(m_mutex);
    refresh();
    const DesktopEntry* entry = m_index.entry(desktopEntryID);
    return entry != nullptr ? std::optional(*entry) : std::nullopt;
}

std::optional<QString> DesktopEntries::idOfProgram(const QString& program)
{
    const std::lock_guard lock(m_mutex);
    refresh();
    const DesktopEntry* entry = m_index.find({}, program);
    return entry != nullptr ? std::optional(entry->id) : std::nullopt;
}

std::optional<QString> DesktopEntries::idOfWindows(const QString& desktopEntryID)
{
    const std::lock_guard lock(m_mutex);
    refresh();
    const DesktopEntry* entry = m_index.entry(desktopEntryID);
    if (entry != nullptr && !entry->startupWmClass.isEmpty())
        entry = m_index.find({{}, {}, entry->startupWmClass, {}, 0}, {});
    return entry != nullptr ? std::optional(entry->id) : std::nullopt;
}

std::uint64_t DesktopEntries::generation()
{
    const std::lock_guard lock(m_mutex);
    refresh();
    return m_generation;
}

void DesktopEntries::refresh()
{
    const auto now = std::chrono::steady_clock::now();
    if (m_checked && now - *m_checked < m_checkInterval)
        return;
    const bool isFirst = !m_checked;
    m_checked = now;
    if (!isFirst && !isOutdated())
        return;
    m_folders.clear();
    std::vector<DesktopEntry> entries;
    for (const QString& directory : m_dataDirectories)
        readFolder(directory + QStringLiteral("/applications"), QString(), 0, entries);
    m_index = DesktopEntryIndex(std::move(entries));
    ++m_generation;
}

bool DesktopEntries::isOutdated() const
{
    return std::any_of(m_folders.begin(), m_folders.end(), [](const Folder& folder) {
        return !folder.isSettled || QFileInfo(folder.path).lastModified() != folder.changed;
    });
}

void DesktopEntries::readFolder(const QString& path, const QString& prefix, int depth,
                                std::vector<DesktopEntry>& entries)
{
    // Its time is taken before its contents, so that a change in between is seen the next time. A
    // folder that does not exist yet is remembered as well, because it may appear.
    const QDateTime changed = QFileInfo(path).lastModified();
    const bool isSettled =
        !changed.isValid() ||
        std::abs(changed.msecsTo(QDateTime::currentDateTime())) > coarsestClock.count();
    m_folders.push_back({path, changed, isSettled});
    // Sorted, so that two equal candidates always have the same order. Only folders and
    // regular files: a pipe among them would block whoever opens it.
    const QFileInfoList contents =
        QDir(path).entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& file : contents) {
        if (entries.size() >= maximalEntries)
            return;
        if (file.isDir()) {
            if (depth < maximalFolderDepth)
                readFolder(file.filePath(), prefix + file.fileName() + u'-', depth + 1, entries);
        } else if (const auto id = entryIDOfFile(file.fileName())) {
            if (std::optional<DesktopEntry> entry = readDesktopEntry(file.filePath(), prefix + *id))
                entries.push_back(std::move(*entry));
        }
    }
}

} // namespace kelpa
