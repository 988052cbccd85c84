// Keeps the board as it is before the first change of each day.
#pragma once

#include "platform/sqlite/SqliteFile.h"
#include "platform/sqlite/backup/BackupName.h"

#include <QDate>
#include <QDateTime>
#include <QString>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <thread>

namespace kelpa {

/// The thread that saves; a thread of its own, at low priority, makes the copy.
class DailyBackup
{
public:
    /// The present time, local; called on the thread that saves.
    using Clock = std::function<QDateTime()>;

    /// After a backup that failed, how long none is tried: a disk that is full stays so for a
    /// while.
    static constexpr std::chrono::minutes retryInterval{10};

    explicit DailyBackup(
        QString boardPath, Clock now = [] { return QDateTime::currentDateTime(); });
    DailyBackup(const DailyBackup&) = delete;
    DailyBackup& operator=(const DailyBackup&) = delete;
    /// Waits for the copy that is being made.
    ~DailyBackup();

    /// To be called before each save. Where the day has no backup yet, holds the file as it is now
    /// and begins to copy it. The save need not wait for the copy. A copy that an earlier program
    /// had no time to put on the disk is completed instead, where it is of the same day. Whether
    /// the day has a backup is looked up in the folder once a day, and after a copy that failed.
    void beforeSave();
    /// Waits for the copy that is being made.
    void finish();
    /// Lets go of the file: the room that the log takes is needed. The copy is tried again later.
    void giveUp();

private:
    bool isDue(const QDateTime& now);
    bool keep(std::unique_ptr<SqliteFile> board, const BackupName& name,
              const std::stop_token& stop);

    const QString m_boardPath;
    const Clock m_now;
    /// The latest day that has a backup, or for which one is being made.
    QDate m_lastDay;
    std::optional<std::chrono::steady_clock::time_point> m_retryAt;
    std::atomic<bool> m_isCopying = false;
    /// The file is held as it was before the save.
    std::atomic<bool> m_isHolding = false;
    std::atomic<bool> m_hasFailed = false;
    std::jthread m_copier;
};

} // namespace kelpa
