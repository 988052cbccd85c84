// The names of backups, and which of them are kept.
#pragma once

#include "platform/Backups.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QTimeZone>

#include <optional>

namespace kelpa {

/// What the name of a file says of the reason, before its ending: ".before-restore"; nothing for
/// daily ones.
QString suffixOf(BackupReason reason);

/// A backup, by what its file's name says: "2026-11-22T101500Z.sqlite", or
/// "2026-11-22T101500Z.before-restore.sqlite", or "….before-import.sqlite". Without colons, which
/// some disks refuse.
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

/// The backups that are kept of the day on which one is made.
constexpr qsizetype backupsOfDay = 20;
constexpr qsizetype daysWithBackup = 7;
constexpr qsizetype weeksWithBackup = 4;
constexpr qsizetype monthsWithBackup = 12;

/// The backups that are removed after `added`, one of them, was made: all but that one, the newest
/// 20 of its day, and the newest of each of the latest 7 days, 4 weeks (from Monday) and 12 months,
/// counting only those that have a backup. Does not ask for the present time, so that a long
/// absence removes nothing, and a clock that is wrong for a day costs at most one backup each of a
/// day, a week and a month. `zone` says where days begin.
QList<BackupName> backupsToRemove(QList<BackupName> backups, const BackupName& added,
                                  const QTimeZone& zone);

} // namespace kelpa
