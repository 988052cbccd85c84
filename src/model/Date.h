// A point in calendar time, as the board's records store it.
#pragma once

#include <QHashFunctions>

#include <compare>

class QDateTime;

namespace kelpa {

/// Stored as a number: seconds (fractional) since 2001-01-01 00:00:00 UTC.
struct Date
{
    double secondsSinceReferenceDate = 0;

    /// Earlier than any date that occurs.
    static Date distantPast();
    static Date fromDateTime(const QDateTime& dateTime);

    friend auto operator<=>(const Date& left, const Date& right)
    {
        return left.secondsSinceReferenceDate <=> right.secondsSinceReferenceDate;
    }
    friend bool operator==(const Date&, const Date&) = default;
    friend size_t qHash(const Date& date, size_t seed = 0)
    {
        return ::qHash(date.secondsSinceReferenceDate, seed);
    }
};

} // namespace kelpa
