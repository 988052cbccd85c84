// Times in UTC. Qt replaces the functions with a `Qt::TimeSpec` by others that Qt 6.4 does not
// have; those with a time zone are in all of them.
#pragma once

#include <QDateTime>
#include <QTimeZone>

namespace kelpa {

/// Not valid where the day or the time is not.
inline QDateTime utcTime(QDate day, QTime time)
{
    return QDateTime(day, time, QTimeZone::utc()).toUTC();
}

/// `ms` milliseconds after the beginning of 1970.
inline QDateTime utcTime(qint64 ms)
{
    return QDateTime::fromMSecsSinceEpoch(ms, QTimeZone::utc()).toUTC();
}

} // namespace kelpa
