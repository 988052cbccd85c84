#include "model/Date.h"

#include <QDateTime>

namespace kelpa {

namespace {

/// Milliseconds from 1970-01-01 to 2001-01-01, both at 00:00:00 UTC.
constexpr qint64 referenceDateSinceEpochMs = 978'307'200'000;

/// 0001-01-01 00:00:00 UTC.
constexpr double distantPastSeconds = -63'114'076'800.0;

} // namespace

Date Date::distantPast()
{
    return {distantPastSeconds};
}

Date Date::fromDateTime(const QDateTime& dateTime)
{
    const qint64 sinceReference = dateTime.toMSecsSinceEpoch() - referenceDateSinceEpochMs;
    return {static_cast<double>(sinceReference) / 1000.0};
}

} // namespace kelpa
