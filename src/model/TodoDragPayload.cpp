#include "model/TodoDragPayload.h"

#include <QList>

namespace kelpa {

namespace {

constexpr QStringView prefix = u"kelpa-todo";
constexpr QStringView unassigned = u"unassigned";

} // namespace

QString TodoDragPayload::encodedValue() const
{
    const QString source = sourceGoalID ? sourceGoalID->text() : unassigned.toString();
    return prefix.toString() + u':' + source + u':' + todoID.text();
}

std::optional<TodoDragPayload> TodoDragPayload::fromEncodedValue(QStringView text)
{
    const QList<QStringView> pieces = text.split(u':');
    if (pieces.size() != 3 || pieces[0] != prefix)
        return std::nullopt;
    const std::optional<TodoID> todoID = TodoID::fromText(pieces[2]);
    if (!todoID)
        return std::nullopt;
    if (pieces[1] == unassigned)
        return TodoDragPayload{std::nullopt, *todoID};
    const std::optional<GoalID> goalID = GoalID::fromText(pieces[1]);
    if (!goalID)
        return std::nullopt;
    return TodoDragPayload{goalID, *todoID};
}

} // namespace kelpa
