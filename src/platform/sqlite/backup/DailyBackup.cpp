#include "platform/sqlite/backup/DailyBackup.h"

#include "platform/LoggingCategories.h"
#include "platform/sqlite/backup/BackupFolder.h"

#include <QFile>
#include <QFileInfo>

#include <sys/resource.h>
#include <sys/statvfs.h>

#include <cstdint>
#include <memory>
#include <utility>

namespace kelpa {

namespace {

/// Below everything that a person waits for. Ten steps take about a tenth of the share.
constexpr int niceness = 10;

/// How much room a disk must have for a copy, in sizes of the board: a backup never takes what the
/// next saves need.
constexpr std::uint64_t roomInBoards = 4;

bool hasRoomBeside(const QString& boardPath)
{
    struct statvfs disk = {};
    if (::statvfs(QFile::encodeName(boardPath).constData(), &disk) != 0)
        return false;
    const auto size = static_cast<std::uint64_t>(QFileInfo(boardPath).size());
    return std::uint64_t{disk.f_bavail} * disk.f_frsize >= roomInBoards * size;
}

} // namespace

DailyBackup::DailyBackup(QString boardPath, Clock now)
    : m_boardPath(std::move(boardPath)), m_now(std::move(now))
{}

DailyBackup::~DailyBackup()
{
    finish();
}

void DailyBackup::finish()
{
    if (m_copier.joinable())
        m_copier.join();
}

bool DailyBackup::isDue(const QDateTime& now)
{
    // A copy that failed leaves the day without a backup.
    if (m_hasFailed.exchange(false)) {
        m_lastDay = {};
        m_retryAt = std::chrono::steady_clock::now() + retryInterval;
    }
    if (m_lastDay == now.date() || (m_retryAt && std::chrono::steady_clock::now() < *m_retryAt))
        return false;
    m_retryAt.reset();
    m_lastDay = now.date();
    for (const BackupName& name : BackupFolder(m_boardPath).list()) {
        if (name.reason == BackupReason::daily && name.time.toLocalTime().date() == now.date())
            return false;
    }
    return true;
}

void DailyBackup::beforeSave()
{
    // A disk that hangs may hold the copy for days.
    const QDateTime now = m_now();
    if (m_isCopying || !isDue(now))
        return;
    finish();
    SettingsResult<std::unique_ptr<SqliteFile>> held = snapshotOf(m_boardPath);
    if (std::holds_alternative<SettingsError>(held) || !hasRoomBeside(m_boardPath)) {
        m_hasFailed = true;
        return;
    }
    if (!std::get<0>(held))
        return;
    const BackupName name{now.toUTC(), BackupReason::daily};
    m_isCopying = true;
    m_isHolding = true;
    m_copier = std::jthread(
        [this, name, board = std::get<0>(std::move(held))](const std::stop_token& stop) mutable {
            // On Linux a thread has a niceness of its own, and 0 is the calling one.
            setpriority(PRIO_PROCESS, 0, getpriority(PRIO_PROCESS, 0) + niceness);
            if (!keep(std::move(board), name, stop)) {
                qCWarning(logSqlite, "the board of today could not be kept as a backup");
                m_hasFailed = true;
            }
            m_isCopying = false;
        });
}

/// Waits for the disk only after it has let go of the board.
bool DailyBackup::keep(std::unique_ptr<SqliteFile> board, const BackupName& name,
                       const std::stop_token& stop)
{
    const BackupFolder folder(m_boardPath);
    const QList<UnsyncedBackup> earlier = folder.incomplete(BackupReason::daily);
    const SettingsResult<UnsyncedBackup> copied = folder.copy(*board, name, stop);
    board.reset();
    m_isHolding = false;
    m_isHolding.notify_all();

    bool isKept = false;
    for (const UnsyncedBackup& each : earlier) {
        const bool isOfToday =
            each.name.time.toLocalTime().date() == name.time.toLocalTime().date();
        const bool isCompleted = std::holds_alternative<BackupName>(folder.complete(each));
        isKept = isKept || (isCompleted && isOfToday);
    }
    const auto* const copy = std::get_if<UnsyncedBackup>(&copied);
    if (copy == nullptr)
        return isKept;
    if (isKept)
        folder.remove(*copy);
    return isKept || std::holds_alternative<BackupName>(folder.complete(*copy));
}

void DailyBackup::giveUp()
{
    if (!m_isHolding)
        return;
    m_copier.request_stop();
    m_isHolding.wait(true);
}

} // namespace kelpa
