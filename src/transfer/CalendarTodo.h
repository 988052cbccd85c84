// One VTODO component, as the calendar library reads and writes it.
#pragma once

#include "model/Date.h"
#include "model/TodoItem.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTimeZone>

#include <optional>

namespace kelpa {

struct CalendarTodo
{
    QString uid{};
    QString title{};
    TodoStatus status = TodoStatus::todo;
    std::optional<Date> completedAt{};
    /// 1, the highest, … 9; 0 for none.
    int priority = 0;
    QStringList categories{};
    /// The UID of the component that this one is a part of; empty for none.
    QString parent{};
    /// Whether Kelpa wrote it for a goal.
    bool isGoal = false;
};

/// The properties that `readCalendarTodo` understands.
bool isCalendarTodoProperty(const QByteArray& upperCaseName);

/// Reads a component of these content lines, which may be folded. Absent where the library finds
/// none. `zone` is that of times without one.
std::optional<CalendarTodo> readCalendarTodo(const QByteArray& contentLines, const QTimeZone& zone);

/// The component, its lines folded and ended by CR LF. `now` is when it was written.
QByteArray writtenCalendarTodo(const CalendarTodo& todo, Date now);

/// The text of one content line of any property; empty where there is none.
QString textOfContentLine(const QByteArray& contentLine);

} // namespace kelpa
