// A folder whose changes are recorded, those that SQLite makes and those that the program makes
// itself: a layer between SQLite and the file system, and the C library's functions that sync,
// rename and remove.
#pragma once

#include "platform/sqlite/power/DiskHistory.h"

#include <QMap>
#include <QString>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace kelpa::test {

/// While it exists, files that SQLite opens in this process are recorded if they are in the folder.
/// One at a time; outlives these files. Any thread.
class RecordedDisk
{
public:
    /// What the folder holds already counts as synced.
    explicit RecordedDisk(const QString& folder);
    RecordedDisk(const RecordedDisk&) = delete;
    RecordedDisk& operator=(const RecordedDisk&) = delete;
    ~RecordedDisk();

    DiskHistory history();
    /// The length of the history.
    qsizetype stepCount();

    /// The one that exists; null when none does.
    static RecordedDisk* current();

    // Called by what records. Paths are absolute; others than those on this disk are left out.
    std::optional<int> inodeOf(const QString& path);
    void noteWrite(int inode, qint64 offset, const QByteArray& bytes);
    void noteTruncate(int inode, qint64 size);
    void noteSync(const QString& path, bool isFolder);
    /// Records what `call` does, which returns 0 if it has succeeded; returns the same.
    int rename(const QString& from, const QString& to, const std::function<int()>& call);
    int remove(const QString& path, const std::function<int()>& call);

private:
    struct Layer;

    std::optional<QString> nameOf(const QString& path) const;
    void noteNewFiles();
    void append(DiskStep step);

    const QString m_folder;
    std::mutex m_mutex;
    DiskHistory m_history;
    QMap<QString, int> m_names;
    int m_lastInode = 0;
    std::unique_ptr<Layer> m_layer;
};

} // namespace kelpa::test
