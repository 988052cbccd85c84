// What programs have asked a disk to do, in order, and what the disk may hold when its power is cut
// in between: only what was synced is sure to be there. Of the rest any part may be, sector by
// sector, whatever the order.
#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>

#include <cstdint>
#include <functional>
#include <random>

namespace kelpa::test {

/// Names are relative to the root of the disk, without a slash before them.
struct DiskStep
{
    enum class Kind : std::uint8_t {
        /// `name` leads to the new file or folder `inode`.
        createFile,
        createFolder,
        /// `bytes` at `offset` of `inode`.
        write,
        /// As `write`, as far as the file grows: nobody wrote these bytes.
        growth,
        /// `inode` is `offset` bytes long.
        truncate,
        /// `name` leads nowhere, and `newName` to `inode`.
        rename,
        remove,
        /// The content of `inode` is on the disk.
        syncFile,
        /// The names in the folder `name` are on the disk.
        syncFolder,
    };

    Kind kind = Kind::write;
    int inode = 0;
    QString name = {};
    QString newName = {};
    qint64 offset = 0;
    QByteArray bytes = {};
};

using DiskHistory = QList<DiskStep>;

/// What a disk holds after a cut.
struct DiskImage
{
    QMap<QString, QByteArray> files;
    QSet<QString> folders;

    /// Creates all of it in an empty folder.
    void writeTo(const QString& folder) const;
    /// Distinguishes images.
    QByteArray digest() const;
};

/// What becomes of the steps that were not synced.
enum class Loss : std::uint8_t {
    /// All of them are lost.
    everything,
    /// None of them is, as when a program is killed.
    nothing,
    /// Those after some step are lost, and that one is torn.
    laterOnes,
    /// Any of them, and any sector of what was written.
    any,
};

/// The disk at some step of a history.
class CutDisk
{
public:
    void perform(const DiskStep& step);
    /// What it holds if the power is cut now.
    DiskImage imageAfter(Loss loss, std::mt19937_64& random) const;

private:
    struct Contents
    {
        QMap<int, QByteArray> files;
        QMap<QString, int> names;
        QSet<int> folders;

        void apply(const DiskStep& step);
    };

    void applyPending(const std::function<bool(const DiskStep&)>& isSynced);

    Contents m_synced;
    DiskHistory m_pending;
};

} // namespace kelpa::test
