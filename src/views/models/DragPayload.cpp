#include "views/models/DragPayload.h"

#include <limits>
#include <optional>

namespace kelpa {

namespace {

constexpr QStringView goalPrefix = u"kelpa-goal:";

std::optional<WindowID> windowNumber(QStringView text)
{
    const bool isNegative = text.startsWith(u'-');
    const QStringView digits = isNegative || text.startsWith(u'+') ? text.sliced(1) : text;
    if (digits.isEmpty())
        return std::nullopt;
    constexpr std::uint64_t greatest = std::numeric_limits<WindowID>::max();
    std::uint64_t number = 0;
    for (const QChar digit : digits) {
        if (digit < u'0' || digit > u'9')
            return std::nullopt;
        number = number * 10 + static_cast<std::uint64_t>(digit.unicode() - u'0');
        if (number > greatest)
            return std::nullopt;
    }
    if (isNegative && number != 0)
        return std::nullopt;
    return static_cast<WindowID>(number);
}

} // namespace

DragPayload dragPayloadFromText(QStringView text)
{
    if (text.startsWith(goalPrefix)) {
        const std::optional<GoalID> goalID = GoalID::fromText(text.sliced(goalPrefix.size()));
        return goalID ? DragPayload(*goalID) : DragPayload(UnknownPayload());
    }
    if (const std::optional<TodoDragPayload> todo = TodoDragPayload::fromEncodedValue(text))
        return DragPayload(*todo);
    const std::optional<WindowID> windowID = windowNumber(text);
    return windowID ? DragPayload(*windowID) : DragPayload(UnknownPayload());
}

QString dragText(WindowID windowID)
{
    return QString::number(windowID);
}

QString dragText(GoalID goalID)
{
    return goalPrefix.toString() + goalID.text();
}

TodoRowDropOutcome todoRowDropOutcome(const DragPayload& payload, const TodoRowDropTarget& target)
{
    const TodoDragPayload* const todo = std::get_if<TodoDragPayload>(&payload);
    if (todo == nullptr)
        return {};
    const ColumnID* const column = std::get_if<ColumnID>(&target.list);
    if (column != nullptr && column->goalID != todo->sourceGoalID)
        return {};
    if (todo->todoID == target.todoID)
        return {true, std::nullopt};
    return {true, todo->todoID};
}

} // namespace kelpa
