#include "platform/sqlite/backup/BackupName.h"

#include <QDate>

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

namespace kelpa {

namespace {

const QString timeFormat = QStringLiteral("yyyy-MM-dd'T'HHmmss'Z'");
const QString fileSuffix = QStringLiteral(".sqlite");
const QString restoreSuffix = QStringLiteral(".before-restore");

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

QString BackupName::text() const
{
    return time.toString(timeFormat);
}

QString BackupName::fileName() const
{
    const QString reasonText = reason == BackupReason::beforeRestore ? restoreSuffix : QString();
    return text() + reasonText + fileSuffix;
}

std::optional<BackupName> BackupName::fromFileName(const QString& name)
{
    if (!name.endsWith(fileSuffix))
        return std::nullopt;
    QString text = name.chopped(fileSuffix.size());
    BackupReason reason = BackupReason::daily;
    if (text.endsWith(restoreSuffix)) {
        text.chop(restoreSuffix.size());
        reason = BackupReason::beforeRestore;
    }
    QDateTime time = QDateTime::fromString(text, timeFormat);
    time.setTimeSpec(Qt::UTC);
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
