#include "automation/WireValues.h"

namespace kelpa::automation {

namespace {

/// The beginning of a text that a message repeats.
QString quoted(const QString& text)
{
    constexpr qsizetype longestQuote = 80;
    return text.size() > longestQuote ? text.left(longestQuote) + u'…' : text;
}

template <class Value>
std::optional<Failure> fromText(std::optional<Value> value, Value& field, FailureKind kind,
                                const QString& message)
{
    if (!value)
        return Failure{kind, message};
    field = *value;
    return std::nullopt;
}

} // namespace

std::optional<Failure> fromWire(const QVariant& value, QString& field)
{
    field = value.toString();
    return std::nullopt;
}

std::optional<Failure> fromWire(const QVariant& value, GoalID& field)
{
    const QString text = value.toString();
    return fromText(GoalID::fromText(text), field, FailureKind::unknownGoal,
                    QStringLiteral("there is no goal %1").arg(quoted(text)));
}

std::optional<Failure> fromWire(const QVariant& value, TodoID& field)
{
    const QString text = value.toString();
    return fromText(TodoID::fromText(text), field, FailureKind::unknownTodo,
                    QStringLiteral("there is no todo %1").arg(quoted(text)));
}

std::optional<Failure> fromWire(const QVariant& value, std::optional<GoalID>& field)
{
    field.reset();
    if (value.toString().isEmpty())
        return std::nullopt;
    GoalID goal;
    if (auto failure = fromWire(value, goal))
        return failure;
    field = goal;
    return std::nullopt;
}

std::optional<Failure> fromWire(const QVariant& value, GoalPriority& field)
{
    const QString text = value.toString();
    return fromText(
        goalPriorityFromRawValue(text.toLower()), field, FailureKind::invalidArguments,
        QStringLiteral("there is no priority '%1'; there are p0, p1, p2 and p3").arg(quoted(text)));
}

std::optional<Failure> fromWire(const QVariant& value, TodoStatus& field)
{
    const QString text = value.toString();
    return fromText(todoStatusFromRawValue(text), field, FailureKind::invalidArguments,
                    QStringLiteral("there is no status '%1'; there are todo, ing and completed")
                        .arg(quoted(text)));
}

std::optional<Failure> fromWire(const QVariant& value, MovePlace& field)
{
    field = value.toBool() ? MovePlace::behind : MovePlace::before;
    return std::nullopt;
}

std::optional<Failure> fromWire(const QVariant& value, WindowID& field)
{
    field = value.toUInt();
    return std::nullopt;
}

} // namespace kelpa::automation
