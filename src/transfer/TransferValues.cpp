#include "transfer/TransferValues.h"
#include "model/UtcTime.h"

#include <algorithm>
#include <cmath>

namespace kelpa {

namespace {

constexpr double msPerSecond = 1000;
constexpr int noon = 12;
constexpr int lastYear = 9999;
/// More than the years 1 … 9999 have to either side of 1970, in milliseconds.
constexpr double mostMs = 4e14;

} // namespace

QList<TodoItem> inOrder(QList<TodoItem> todos)
{
    if (!std::ranges::is_sorted(std::as_const(todos), {}, &TodoItem::order))
        std::ranges::stable_sort(todos, {}, &TodoItem::order);
    return todos;
}

std::optional<QDateTime> dateTimeOf(const Date& date)
{
    static const Date epoch = Date::fromDateTime(QDateTime::fromMSecsSinceEpoch(0));
    const double ms = std::round(
        (date.secondsSinceReferenceDate - epoch.secondsSinceReferenceDate) * msPerSecond);
    // Also where it is no number.
    if (!(std::abs(ms) < mostMs))
        return std::nullopt;
    QDateTime time = utcTime(static_cast<qint64>(ms));
    const int year = time.date().year();
    if (year < 1 || year > lastYear)
        return std::nullopt;
    return time;
}

QString isoTime(const Date& date)
{
    const std::optional<QDateTime> time = dateTimeOf(date);
    return time ? time->toString(Qt::ISODateWithMs) : QString();
}

std::optional<Date> dateOfIsoTime(QStringView text)
{
    const QDateTime time = QDateTime::fromString(text.toString(), Qt::ISODateWithMs);
    const std::optional<Date> date =
        time.isValid() ? std::optional(Date::fromDateTime(time)) : std::nullopt;
    return date && isoTime(*date) == text ? date : std::nullopt;
}

Date noonOf(const QDate& day, const QTimeZone& zone)
{
    return Date::fromDateTime(QDateTime(day, QTime(noon, 0), zone));
}

} // namespace kelpa
