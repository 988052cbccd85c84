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
        return goalID ? DragPayload(*goalID) : DragPayload(RefusedDrop());
    }
    if (const std::optional<TodoDragPayload> todo = TodoDragPayload::fromEncodedValue(text))
        return DragPayload(*todo);
    const std::optional<WindowID> windowID = windowNumber(text);
    return windowID ? DragPayload(*windowID) : DragPayload(RefusedDrop());
}

QString dragText(WindowID windowID)
{
    return QString::number(windowID);
}

QString dragText(GoalID goalID)
{
    return goalPrefix.toString() + goalID.text();
}

TodoRowDropOutcome todoRowDropOutcome(QStringView text, const TodoList& list, TodoID rowTodoID)
{
    const std::optional<TodoDragPayload> payload = TodoDragPayload::fromEncodedValue(text);
    if (!payload)
        return {};
    const ColumnID* const column = std::get_if<ColumnID>(&list);
    if (column != nullptr && column->goalID != payload->sourceGoalID)
        return {};
    if (payload->todoID == rowTodoID)
        return {true, std::nullopt};
    return {true, payload->todoID};
}

} // namespace kelpa
