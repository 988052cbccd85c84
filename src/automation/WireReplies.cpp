// Replies as arguments of messages, and back.

#include "automation/Methods.h"
#include "automation/WireValues.h"

#include <algorithm>
#include <utility>

namespace kelpa::automation {

namespace {

const QString idKey = QStringLiteral("id");
const QString titleKey = QStringLiteral("title");
const QString goalKey = QStringLiteral("goal");
const QString priorityKey = QStringLiteral("priority");
const QString openTodosKey = QStringLiteral("openTodos");
const QString todosKey = QStringLiteral("todos");
const QString desktopKey = QStringLiteral("desktop");
const QString statusKey = QStringLiteral("status");
const QString completedAtKey = QStringLiteral("completedAt");
const QString applicationKey = QStringLiteral("application");
const QString minimizedKey = QStringLiteral("minimized");

using Maps = QList<QVariantMap>;

QVariantMap mapOf(const GoalRecord& goal)
{
    return {{idKey, toWire(goal.id)},
            {titleKey, goal.title},
            {priorityKey, toWire(goal.priority)},
            {openTodosKey, goal.openTodos},
            {todosKey, goal.todos},
            {desktopKey, goal.desktop}};
}

QVariantMap mapOf(const TodoRecord& todo)
{
    return {{idKey, toWire(todo.id)},
            {titleKey, todo.title},
            {statusKey, toWire(todo.status)},
            {completedAtKey, todo.completedAt},
            {goalKey, toWire(todo.goal)}};
}

QVariantMap mapOf(const WindowRecord& window)
{
    return {{idKey, toWire(window.id)},
            {titleKey, window.title},
            {applicationKey, window.application},
            {goalKey, toWire(window.goal)},
            {minimizedKey, window.isMinimized}};
}

template <class Record>
Maps mapsOf(const QList<Record>& records)
{
    Maps maps;
    maps.reserve(records.size());
    for (const Record& record : records)
        maps.append(mapOf(record));
    return maps;
}

/// Whether the value has the type, and could be assigned.
template <class Field>
bool take(const QVariantMap& map, const QString& key, Field& field)
{
    const QVariant value = map.value(key);
    return value.userType() == toWire(field).userType() && !fromWire(value, field);
}

bool take(const QVariantMap& map, const QString& key, bool& field)
{
    const QVariant value = map.value(key);
    field = value.toBool();
    return value.userType() == QMetaType::Bool;
}

bool takeRecord(const QVariantMap& map, GoalRecord& goal)
{
    return take(map, idKey, goal.id) && take(map, titleKey, goal.title) &&
           take(map, priorityKey, goal.priority) && take(map, openTodosKey, goal.openTodos) &&
           take(map, todosKey, goal.todos) &&
           // Version 2 of the interface has none; a Kelpa of that version may still run.
           (!map.contains(desktopKey) || take(map, desktopKey, goal.desktop));
}

bool takeRecord(const QVariantMap& map, TodoRecord& todo)
{
    return take(map, idKey, todo.id) && take(map, titleKey, todo.title) &&
           take(map, statusKey, todo.status) && take(map, completedAtKey, todo.completedAt) &&
           take(map, goalKey, todo.goal);
}

bool takeRecord(const QVariantMap& map, WindowRecord& window)
{
    return take(map, idKey, window.id) && take(map, titleKey, window.title) &&
           take(map, applicationKey, window.application) && take(map, goalKey, window.goal) &&
           take(map, minimizedKey, window.isMinimized);
}

template <class Record>
std::optional<Reply> recordsFrom(const QVariantList& arguments)
{
    if (arguments.size() != 1 || !arguments.first().canConvert<Maps>())
        return std::nullopt;
    const auto maps = arguments.first().value<Maps>();
    QList<Record> records;
    records.reserve(maps.size());
    for (const QVariantMap& map : maps) {
        Record record;
        if (!takeRecord(map, record))
            return std::nullopt;
        records.append(std::move(record));
    }
    return Reply(std::move(records));
}

std::optional<Reply> addedFrom(const QVariantList& arguments)
{
    if (arguments.size() != 1 || arguments.first().userType() != QMetaType::QString)
        return std::nullopt;
    const std::optional<QUuid> id = uuidFromText(arguments.first().toString());
    return id ? std::optional<Reply>(Added{*id}) : std::nullopt;
}

qsizetype sizeOf(const GoalRecord& goal)
{
    return goal.title.size();
}
qsizetype sizeOf(const TodoRecord& todo)
{
    return todo.title.size();
}
qsizetype sizeOf(const WindowRecord& window)
{
    return window.title.size() + window.application.size();
}

template <class Record>
bool isTooLargeList(const QList<Record>& records)
{
    // Three bytes for a character at most, and what is around it.
    constexpr qsizetype around = 200;
    qsizetype size = 0;
    for (const Record& record : records)
        size += around + 3 * sizeOf(record);
    return size > largestReply;
}

} // namespace

QVariantList toWire(const Reply& reply)
{
    if (const auto* const added = std::get_if<Added>(&reply))
        return {uuidText(added->id)};
    if (const auto* const goals = std::get_if<QList<GoalRecord>>(&reply))
        return {QVariant::fromValue(mapsOf(*goals))};
    if (const auto* const todos = std::get_if<QList<TodoRecord>>(&reply))
        return {QVariant::fromValue(mapsOf(*todos))};
    if (const auto* const windows = std::get_if<QList<WindowRecord>>(&reply))
        return {QVariant::fromValue(mapsOf(*windows))};
    return {};
}

std::optional<Reply> replyFrom(ReplyKind kind, const QVariantList& arguments)
{
    switch (kind) {
    case ReplyKind::nothing:
        return arguments.isEmpty() ? std::optional<Reply>(Nothing()) : std::nullopt;
    case ReplyKind::identifier:
        return addedFrom(arguments);
    case ReplyKind::goals:
        return recordsFrom<GoalRecord>(arguments);
    case ReplyKind::todos:
        return recordsFrom<TodoRecord>(arguments);
    case ReplyKind::windows:
        return recordsFrom<WindowRecord>(arguments);
    }
    Q_UNREACHABLE();
}

bool isTooLarge(const Reply& reply)
{
    if (const auto* const goals = std::get_if<QList<GoalRecord>>(&reply))
        return isTooLargeList(*goals);
    if (const auto* const todos = std::get_if<QList<TodoRecord>>(&reply))
        return isTooLargeList(*todos);
    if (const auto* const windows = std::get_if<QList<WindowRecord>>(&reply))
        return isTooLargeList(*windows);
    return false;
}

} // namespace kelpa::automation
