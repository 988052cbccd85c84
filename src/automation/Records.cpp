#include "automation/Records.h"
#include "model/UtcTime.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kelpa::automation {

namespace {

struct OrderedRecord
{
    std::int64_t order = 0;
    TodoRecord record;
};

void append(QList<OrderedRecord>& records, const QList<TodoItem>& todos,
            std::optional<GoalID> goalID)
{
    for (const TodoItem& todo : todos) {
        records.append({todo.order,
                        {todo.id, todo.title, todo.status,
                         todo.completedAt ? dateText(*todo.completedAt) : QString(), goalID}});
    }
}

} // namespace

QString dateText(Date date)
{
    static const Date epoch = Date::fromDateTime(QDateTime::fromMSecsSinceEpoch(0));
    const double seconds =
        std::floor(date.secondsSinceReferenceDate - epoch.secondsSinceReferenceDate);
    // The years that its form has room for, 0000 to 9999.
    constexpr double first = -62'167'219'200;
    constexpr double last = 253'402'300'799;
    if (!(seconds >= first && seconds <= last))
        return {};
    return utcTime(static_cast<qint64>(seconds) * 1000).toString(Qt::ISODate);
}

QList<GoalRecord> goalRecords(const QList<Goal>& goals, const GoalPins& pins)
{
    QList<GoalRecord> records;
    records.reserve(goals.size());
    for (const Goal& goal : goals) {
        records.append({goal.id, goal.title, goal.priority,
                        static_cast<std::uint32_t>(goal.openTodoCount()),
                        static_cast<std::uint32_t>(goal.todos.size()),
                        static_cast<std::uint32_t>(pins.value(goal.id))});
    }
    return records;
}

QList<TodoRecord> todoRecords(const QList<Goal>& goals, const QList<TodoItem>& unassigned)
{
    QList<OrderedRecord> ordered;
    for (const Goal& goal : goals)
        append(ordered, goal.todos, goal.id);
    append(ordered, unassigned, std::nullopt);
    std::ranges::stable_sort(ordered, {}, &OrderedRecord::order);
    QList<TodoRecord> records;
    records.reserve(ordered.size());
    for (OrderedRecord& each : ordered)
        records.append(std::move(each.record));
    return records;
}

QList<WindowRecord> windowRecords(const QList<WindowItem>& windows)
{
    QList<WindowRecord> records;
    records.reserve(windows.size());
    for (const WindowItem& window : windows)
        records.append(
            {window.id, window.title, window.ownerName, window.goalID, window.isMinimized});
    return records;
}

} // namespace kelpa::automation
