#include "model/BoardJson.h"

#include <rapidjson/document.h>
#include <rapidjson/writer.h>

#include <cmath>
#include <limits>
#include <string_view>

namespace kelpa {

namespace {

/// Lets the writer append to a QByteArray without a buffer in between.
struct ByteArraySink
{
    using Ch = char;
    QByteArray& bytes;
    void Put(char c) { bytes.append(c); }
    void Flush() {}
};

using Writer = rapidjson::Writer<ByteArraySink>;

void writeKey(Writer& writer, std::string_view key)
{
    writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
}

void writeString(Writer& writer, const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    writer.String(utf8.constData(), static_cast<rapidjson::SizeType>(utf8.size()));
}

bool writeTodo(Writer& writer, const TodoItem& todo)
{
    writer.StartObject();
    writeKey(writer, "id");
    writeString(writer, todo.id.text());
    writeKey(writer, "title");
    writeString(writer, todo.title);
    writeKey(writer, "status");
    writeString(writer, rawValue(todo.status));
    if (todo.completedAt) {
        if (!std::isfinite(todo.completedAt->secondsSinceReferenceDate))
            return false;
        writeKey(writer, "completedAt");
        writer.Double(todo.completedAt->secondsSinceReferenceDate);
    }
    writeKey(writer, "order");
    writer.Int64(todo.order);
    writer.EndObject();
    return true;
}

bool writeTodos(Writer& writer, const QList<TodoItem>& todos)
{
    writer.StartArray();
    for (const TodoItem& todo : todos) {
        if (!writeTodo(writer, todo))
            return false;
    }
    writer.EndArray();
    return true;
}

using Json = rapidjson::Value;

/// The member `key` of `object`; nothing when it is absent or null.
const Json* member(const Json& object, const char* key)
{
    const auto found = object.FindMember(key);
    if (found == object.MemberEnd() || found->value.IsNull())
        return nullptr;
    return &found->value;
}

std::optional<QString> toText(const Json* value)
{
    if (value == nullptr || !value->IsString())
        return std::nullopt;
    return QString::fromUtf8(value->GetString(), static_cast<qsizetype>(value->GetStringLength()));
}

template <class ID>
std::optional<ID> toIdentifier(const Json* value)
{
    const std::optional<QString> text = toText(value);
    return text ? ID::fromText(*text) : std::nullopt;
}

/// Integers in any notation (5, 5.0, 5e0) that name a signed 64-bit integer exactly.
std::optional<std::int64_t> toInteger(const Json& value)
{
    if (value.IsInt64())
        return value.GetInt64();
    if (!value.IsDouble())
        return std::nullopt;
    const double number = value.GetDouble();
    constexpr double limit = 9'223'372'036'854'775'808.0; // 2^63
    if (number < -limit || number >= limit || std::trunc(number) != number)
        return std::nullopt;
    return static_cast<std::int64_t>(number);
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

/// Iterative, so that a deeply nested text cannot exhaust the stack; invalid UTF-8 is refused.
bool parse(rapidjson::Document& document, const QByteArray& json)
{
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag |
                               rapidjson::kParseValidateEncodingFlag;
    document.Parse<flags>(json.constData(), static_cast<std::size_t>(json.size()));
    return !document.HasParseError();
}

/// Room for a record, so that encoding seldom has to move what it wrote.
constexpr qsizetype bytesPerRecord = 160;

} // namespace

std::optional<QByteArray> encodeGoals(const QList<Goal>& goals)
{
    qsizetype records = goals.size();
    for (const Goal& goal : goals)
        records += goal.todos.size();

    QByteArray json;
    json.reserve(records * bytesPerRecord);
    ByteArraySink sink{json};
    Writer writer(sink);
    writer.StartArray();
    for (const Goal& goal : goals) {
        writer.StartObject();
        writeKey(writer, "id");
        writeString(writer, goal.id.text());
        writeKey(writer, "title");
        writeString(writer, goal.title);
        writeKey(writer, "accent");
        writeString(writer, rawValue(goal.accent));
        writeKey(writer, "priority");
        writeString(writer, rawValue(goal.priority));
        writeKey(writer, "todos");
        if (!writeTodos(writer, goal.todos))
            return std::nullopt;
        writer.EndObject();
    }
    writer.EndArray();
    return json;
}

std::optional<QByteArray> encodeTodos(const QList<TodoItem>& todos)
{
    QByteArray json;
    json.reserve(todos.size() * bytesPerRecord);
    ByteArraySink sink{json};
    Writer writer(sink);
    if (!writeTodos(writer, todos))
        return std::nullopt;
    return json;
}

QByteArray encodeAssignments(const Assignments& assignments)
{
    QByteArray json;
    ByteArraySink sink{json};
    Writer writer(sink);
    writer.StartObject();
    for (const auto& [key, goalID] : assignments.asKeyValueRange()) {
        const QByteArray utf8 = key.toUtf8();
        writer.Key(utf8.constData(), static_cast<rapidjson::SizeType>(utf8.size()));
        writeString(writer, goalID.text());
    }
    writer.EndObject();
    return json;
}

std::optional<QList<Goal>> decodeGoals(const QByteArray& json)
{
    rapidjson::Document document;
    if (!parse(document, json))
        return std::nullopt;
    return toList<Goal>(document, toGoal);
}

std::optional<QList<TodoItem>> decodeTodos(const QByteArray& json)
{
    rapidjson::Document document;
    if (!parse(document, json))
        return std::nullopt;
    return toList<TodoItem>(document, toTodo);
}

std::optional<Assignments> decodeAssignments(const QByteArray& json)
{
    rapidjson::Document document;
    if (!parse(document, json) || !document.IsObject())
        return std::nullopt;
    Assignments assignments;
    for (const auto& entry : document.GetObject()) {
        const std::optional<QString> key = toText(&entry.name);
        const std::optional<GoalID> goalID = toIdentifier<GoalID>(&entry.value);
        if (!key || !goalID)
            return std::nullopt;
        assignments.insert(*key, *goalID);
    }
    return assignments;
}

} // namespace kelpa
