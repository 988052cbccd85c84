// The names of backups, and which of them are kept.
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QTimeZone>

#include <cstdint>
#include <optional>

namespace kelpa {

/// Why a backup was made.
enum class BackupReason : std::uint8_t {
    /// Before the first change of a day.
    daily,
    /// Before another backup replaced the board.
    beforeRestore,
};

/// A backup, by what its file's name says: "2026-11-22T101500Z.sqlite", or
/// "2026-11-22T101500Z.before-restore.sqlite". Without colons, which some disks refuse.
struct BackupName
{
    /// When the board was as the backup holds it, in whole seconds, UTC.
    QDateTime time;
    BackupReason reason = BackupReason::daily;

    /// The name by which a person chooses it: "2026-11-22T101500Z".
    QString text() const;
    QString fileName() const;
    /// Absent for a name of any other form.
    static std::optional<BackupName> fromFileName(const QString& name);

    friend bool operator==(const BackupName&, const BackupName&) = default;
};

/// The backups of a day that are kept at most: those of the latest day that has any.
constexpr qsizetype backupsOfLatestDay = 20;
constexpr qsizetype daysWithBackup = 7;
constexpr qsizetype weeksWithBackup = 4;
constexpr qsizetype monthsWithBackup = 12;

/// The backups that are removed: all but the newest of the latest 20 of the latest day, and the
/// newest of each of the latest 7 days, 4 weeks (from Monday) and 12 months, counting only those
/// that have a backup. Does not ask for the present time, so neither a long absence nor a clock
/// that was wrong for a day removes anything by itself. `zone` says where days begin.
QList<BackupName> backupsToRemove(QList<BackupName> backups, const QTimeZone& zone);

} // namespace kelpa
