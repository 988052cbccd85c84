#include "model/BoardJson.h"

#include "model/BoardJsonReading.h"
#include "model/JsonText.h"

#include <cmath>

namespace kelpa {

namespace {

/// Expected size of a record, so that encoding seldom has to reallocate.
constexpr qsizetype bytesPerRecord = 192;

bool writeTodo(JsonText& json, const TodoItem& todo)
{
    json.raw(R"({"id":)");
    json.uuid(todo.id.value);
    json.raw(R"(,"title":)");
    json.string(todo.title);
    json.raw(R"(,"status":)");
    json.string(rawValue(todo.status));
    if (todo.completedAt) {
        if (!std::isfinite(todo.completedAt->secondsSinceReferenceDate))
            return false;
        json.raw(R"(,"completedAt":)");
        json.number(todo.completedAt->secondsSinceReferenceDate);
    }
    json.raw(R"(,"order":)");
    json.integer(todo.order);
    json.raw("},");
    return true;
}

bool writeTodos(JsonText& json, const QList<TodoItem>& todos)
{
    json.raw("[");
    for (const TodoItem& todo : todos) {
        if (!writeTodo(json, todo))
            return false;
    }
    json.close(']');
    return true;
}

bool writeGoal(JsonText& json, const Goal& goal)
{
    json.raw(R"({"id":)");
    json.uuid(goal.id.value);
    json.raw(R"(,"title":)");
    json.string(goal.title);
    json.raw(R"(,"accent":)");
    json.string(rawValue(goal.accent));
    json.raw(R"(,"priority":)");
    json.string(rawValue(goal.priority));
    json.raw(R"(,"todos":)");
    if (!writeTodos(json, goal.todos))
        return false;
    json.raw("},");
    return true;
}

template <class ID>
std::optional<ID> toIdentifier(const Json* value)
{
    const std::optional<QString> text = toText(value);
    return text ? ID::fromText(*text) : std::nullopt;
}

/// The status of a stored todo; records of an earlier release carry a flag instead.
std::optional<TodoStatus> toStatus(const Json& object)
{
    if (const Json* const status = member(object, "status")) {
        const std::optional<QString> text = toText(status);
        return text ? todoStatusFromRawValue(*text) : std::nullopt;
    }
    const Json* const isCompleted = member(object, "isCompleted");
    if (isCompleted == nullptr)
        return TodoStatus::todo;
    if (!isCompleted->IsBool())
        return std::nullopt;
    return isCompleted->GetBool() ? TodoStatus::completed : TodoStatus::todo;
}

std::optional<TodoItem> toTodo(const Json& value)
{
    if (!value.IsObject())
        return std::nullopt;
    const std::optional<TodoID> id = toIdentifier<TodoID>(member(value, "id"));
    std::optional<QString> title = toText(member(value, "title"));
    const std::optional<TodoStatus> status = toStatus(value);
    if (!id || !title || !status)
        return std::nullopt;

    TodoItem todo{*id, *std::move(title), *status, std::nullopt, 0};
    if (const Json* const completedAt = member(value, "completedAt")) {
        if (!completedAt->IsNumber())
            return std::nullopt;
        todo.completedAt = Date{completedAt->GetDouble()};
    }
    if (const Json* const order = member(value, "order")) {
        const std::optional<std::int64_t> number = toInteger(*order);
        if (!number)
            return std::nullopt;
        todo.order = *number;
    }
    return todo;
}

template <class Record>
std::optional<QList<Record>> toList(const Json& value,
                                    std::optional<Record> (*toRecord)(const Json&))
{
    if (!value.IsArray())
        return std::nullopt;
    QList<Record> records;
    records.reserve(static_cast<qsizetype>(value.Size()));
    for (const Json& element : value.GetArray()) {
        std::optional<Record> record = toRecord(element);
        if (!record)
            return std::nullopt;
        records.append(*std::move(record));
    }
    return records;
}

std::optional<Goal> toGoal(const Json& value)
{
    if (!value.IsObject())
        return std::nullopt;
    const std::optional<GoalID> id = toIdentifier<GoalID>(member(value, "id"));
    std::optional<QString> title = toText(member(value, "title"));
    const std::optional<QString> accentText = toText(member(value, "accent"));
    const std::optional<GoalAccent> accent =
        accentText ? goalAccentFromRawValue(*accentText) : std::nullopt;
    if (!id || !title || !accent)
        return std::nullopt;

    Goal goal{*id, *std::move(title), *accent, defaultGoalPriority, {}};
    if (const Json* const priority = member(value, "priority")) {
        const std::optional<QString> text = toText(priority);
        const std::optional<GoalPriority> known =
            text ? goalPriorityFromRawValue(*text) : std::nullopt;
        if (!known)
            return std::nullopt;
        goal.priority = *known;
    }
    if (const Json* const todos = member(value, "todos")) {
        std::optional<QList<TodoItem>> list = toList<TodoItem>(*todos, toTodo);
        if (!list)
            return std::nullopt;
        goal.todos = *std::move(list);
    }
    return goal;
}

} // namespace

std::optional<QByteArray> encodeGoals(const QList<Goal>& goals)
{
    qsizetype records = goals.size();
    for (const Goal& goal : goals)
        records += goal.todos.size();

    JsonText json(records * bytesPerRecord);
    json.raw("[");
    for (const Goal& goal : goals) {
        if (!writeGoal(json, goal))
            return std::nullopt;
    }
    json.close(']');
    return json.take();
}

std::optional<QByteArray> encodeTodos(const QList<TodoItem>& todos)
{
    JsonText json(todos.size() * bytesPerRecord);
    if (!writeTodos(json, todos))
        return std::nullopt;
    return json.take();
}

QByteArray encodeAssignments(const Assignments& assignments)
{
    JsonText json(assignments.size() * bytesPerRecord);
    json.raw("{");
    for (const auto& [key, goalID] : assignments.asKeyValueRange()) {
        json.string(key);
        json.raw(":");
        json.uuid(goalID.value);
        json.raw(",");
    }
    json.close('}');
    return json.take();
}

std::optional<QList<Goal>> toGoals(const Json& value)
{
    return toList<Goal>(value, toGoal);
}

std::optional<QList<TodoItem>> toTodos(const Json& value)
{
    return toList<TodoItem>(value, toTodo);
}

std::optional<QList<Goal>> decodeGoals(const QByteArray& json)
{
    const JsonDocument document(json);
    return document.root() != nullptr ? toGoals(*document.root()) : std::nullopt;
}

std::optional<QList<TodoItem>> decodeTodos(const QByteArray& json)
{
    const JsonDocument document(json);
    return document.root() != nullptr ? toTodos(*document.root()) : std::nullopt;
}

std::optional<Assignments> decodeAssignments(const QByteArray& json)
{
    const JsonDocument document(json);
    if (document.root() == nullptr || !document.root()->IsObject())
        return std::nullopt;
    Assignments assignments;
    for (const auto& entry : document.root()->GetObject()) {
        const std::optional<QString> key = toText(&entry.name);
        const std::optional<GoalID> goalID = toIdentifier<GoalID>(&entry.value);
        if (!key || !goalID)
            return std::nullopt;
        assignments.insert(*key, *goalID);
    }
    return assignments;
}

} // namespace kelpa
