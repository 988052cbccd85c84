// Values of the board as files write them.
#pragma once

#include "model/Date.h"
#include "model/TodoItem.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringView>
#include <QTimeZone>

#include <optional>

namespace kelpa {

/// By ascending `order`; todos of equal order stay as they are.
QList<TodoItem> inOrder(QList<TodoItem> todos);

/// UTC, to the millisecond. Absent outside of the years 1 … 9999, which are all that files write.
std::optional<QDateTime> dateTimeOf(const Date& date);

/// "2026-11-22T10:15:00.000Z"; empty where `dateTimeOf` is absent.
QString isoTime(const Date& date);
/// Absent for any other form.
std::optional<Date> dateOfIsoTime(QStringView text);

/// The noon of a day: the same day in the zones around.
Date noonOf(const QDate& day, const QTimeZone& zone);

} // namespace kelpa
