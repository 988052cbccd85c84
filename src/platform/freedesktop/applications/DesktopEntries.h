// The installed applications, kept in memory and read again when an application is installed.
#pragma once

#include "platform/ApplicationResolver.h"
#include "platform/freedesktop/applications/DesktopEntryIndex.h"

#include <QDateTime>
#include <QString>

#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

namespace kelpa {

class DesktopEntries final : public ApplicationResolver
{
public:
    /// `dataDirectories` as `applicationDataDirectories()` gives them; entries are read from the
    /// folder applications/ of each, also from folders in it. Nothing is read before the first
    /// question. Whether a folder has changed is looked up at most every `checkInterval`; an entry
    /// that is edited in place, without a new file, is noticed with the next change of its folder.
    explicit DesktopEntries(std::vector<QString> dataDirectories,
                            std::chrono::milliseconds checkInterval = std::chrono::seconds(3));

    ResolvedApplication resolve(const ApplicationClues& clues) override;

    /// The icon that an entry names: a name in the icon theme or an absolute path; empty when there
    /// is no such entry or it names none. Any thread but the main one.
    QString icon(const QString& desktopEntryID);

    /// Absent when no entry of exactly this id is installed. Any thread but the main one.
    std::optional<DesktopEntry> entry(const QString& desktopEntryID);

    /// The entry by which the windows of a program of this file name are known, when the commands
    /// of the entries tell; absent when none or several would do. Any thread but the main one.
    std::optional<QString> idOfProgram(const QString& program);

    /// The entry by which the windows of an entry's application are known: the same one, unless
    /// another one claims their class. Any thread but the main one.
    std::optional<QString> idOfWindows(const QString& desktopEntryID);

    /// Changes whenever the entries were read again. Any thread but the main one.
    std::uint64_t generation();

    const std::vector<QString>& dataDirectories() const { return m_dataDirectories; }

private:
    struct Folder
    {
        QString path;
        QDateTime changed;
        /// Whether a further change would show in `changed`, whose clock is coarse.
        bool isSettled = false;
    };

    void refresh();
    bool isOutdated() const;
    void readFolder(const QString& path, const QString& prefix, int depth,
                    std::vector<DesktopEntry>& entries);

    const std::vector<QString> m_dataDirectories;
    const std::chrono::milliseconds m_checkInterval;

    std::mutex m_mutex;
    std::optional<std::chrono::steady_clock::time_point> m_checked;
    std::vector<Folder> m_folders;
    DesktopEntryIndex m_index;
    std::uint64_t m_generation = 0;
};

} // namespace kelpa
