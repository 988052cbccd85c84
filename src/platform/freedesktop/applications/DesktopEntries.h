// The installed desktop entries, cached in memory and read again when their folders change.
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
    /// folder applications/ of each and its subfolders, at the first call. Folders are checked for
    /// changes at most every `checkInterval`; an entry that is edited in place, without a new file,
    /// is noticed with the next change of its folder.
    explicit DesktopEntries(std::vector<QString> dataDirectories,
                            std::chrono::milliseconds checkInterval = std::chrono::seconds(3));

    ResolvedApplication resolve(const ApplicationClues& clues) override;

    /// The icon of an entry: a name in the icon theme or an absolute path; empty when there is no
    /// such entry or it has none. Any thread but the main one.
    QString icon(const QString& desktopEntryID);

    /// Absent when no entry of exactly this id is installed. Any thread but the main one.
    std::optional<DesktopEntry> entry(const QString& desktopEntryID);

    /// The entry to which the windows of a program of this file name resolve, by the commands of
    /// the entries; absent when none or several match. Any thread but the main one.
    std::optional<QString> idOfProgram(const QString& program);

    /// The entry to which the windows of an entry's application resolve: the same one, unless
    /// another one claims their class. Any thread but the main one.
    std::optional<QString> idOfWindows(const QString& desktopEntryID);

    /// Changes whenever the entries are read again. Any thread but the main one.
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
