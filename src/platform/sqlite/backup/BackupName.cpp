#include "platform/sqlite/backup/BackupName.h"

#include <QDate>
#include <QTime>
#include <QTimeZone>

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

namespace kelpa {

namespace {

const QString dayFormat = QStringLiteral("yyyy-MM-dd");
const QString clockFormat = QStringLiteral("'T'hhmmss'Z'");
const QString fileSuffix = QStringLiteral(".sqlite");
using Period = std::pair<int, int>;

Period dayOf(const QDate& date)
{
    return {date.year(), date.dayOfYear()};
}

Period weekOf(const QDate& date)
{
    int year = 0;
    const int week = date.weekNumber(&year);
    return {year, week};
}

Period monthOf(const QDate& date)
{
    return {date.year(), date.month()};
}

} // namespace

QString suffixOf(BackupReason reason)
{
    switch (reason) {
    case BackupReason::daily:
        return {};
    case BackupReason::beforeRestore:
        return QStringLiteral(".before-restore");
    case BackupReason::beforeImport:
        return QStringLiteral(".before-import");
    }
    Q_UNREACHABLE();
}

QString BackupName::text() const
{
    return time.toString(dayFormat + clockFormat);
}

QString BackupName::fileName() const
{
    return text() + suffixOf(reason) + fileSuffix;
}

std::optional<BackupName> BackupName::fromFileName(const QString& name)
{
    if (!name.endsWith(fileSuffix))
        return std::nullopt;
    QString text = name.chopped(fileSuffix.size());
    BackupReason reason = BackupReason::daily;
    for (const BackupReason each : {BackupReason::beforeRestore, BackupReason::beforeImport}) {
        const QString suffix = suffixOf(each);
        if (!text.endsWith(suffix))
            continue;
        text.chop(suffix.size());
        reason = each;
        break;
    }
    // Each by itself: read as one, they would be a local time, of which some days lack an hour.
    const QDate day = QDate::fromString(text.left(dayFormat.size()), dayFormat);
    const QTime clock = QTime::fromString(text.mid(dayFormat.size()), clockFormat);
    const QDateTime time = QDateTime(day, clock, QTimeZone::utc()).toUTC();
    const BackupName read{time, reason};
    // Only what this program writes: no other spelling of the same time.
    return time.isValid() && read.fileName() == name ? std::optional(read) : std::nullopt;
}

QList<BackupName> backupsToRemove(QList<BackupName> backups, const BackupName& added,
                                  const QTimeZone& zone)
{
    std::ranges::stable_sort(backups, std::ranges::greater(), &BackupName::time);
    QList<bool> isKept(backups.size(), false);
    const auto dateOf = [&](qsizetype i) { return backups[i].time.toTimeZone(zone).date(); };
    const auto keepNewest = [&](qsizetype most, Period (*periodOf)(const QDate&)) {
        std::set<Period> periods;
        for (qsizetype i = 0; i < backups.size(); ++i) {
            const Period period = periodOf(dateOf(i));
            if (std::cmp_less(periods.size(), most) && periods.insert(period).second)
                isKept[i] = true;
        }
    };
    keepNewest(daysWithBackup, dayOf);
    keepNewest(weeksWithBackup, weekOf);
    keepNewest(monthsWithBackup, monthOf);
    const QDate day = added.time.toTimeZone(zone).date();
    for (qsizetype i = 0, ofDay = 0; i < backups.size(); ++i) {
        const bool isOfDay = dateOf(i) == day && ofDay++ < backupsOfDay;
        if (isOfDay || backups[i] == added)
            isKept[i] = true;
    }
    QList<BackupName> removed;
    for (qsizetype i = 0; i < backups.size(); ++i) {
        if (!isKept[i])
            removed.append(backups[i]);
    }
    return removed;
}

} // namespace kelpa
