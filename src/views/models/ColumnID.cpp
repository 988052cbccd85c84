#include "views/models/ColumnID.h"

namespace kelpa {

namespace {

constexpr QStringView unassignedText = u"kelpa-unassigned";

} // namespace

QString columnText(std::optional<GoalID> goalID)
{
    return goalID ? goalID->text() : unassignedText.toString();
}

std::optional<ColumnID> columnFromText(QStringView text)
{
    if (text == unassignedText)
        return ColumnID{std::nullopt};
    const std::optional<GoalID> goalID = GoalID::fromText(text);
    return goalID ? std::optional(ColumnID{goalID}) : std::nullopt;
}

std::optional<GoalID> goalFromColumnText(const QString& text)
{
    const std::optional<ColumnID> column = columnFromText(text);
    return column ? column->goalID : std::nullopt;
}

std::optional<TodoList> todoListFromText(const QString& text)
{
    if (text == unifiedTodosText)
        return TodoList(WholeBoard());
    const std::optional<ColumnID> column = columnFromText(text);
    return column ? std::optional(TodoList(*column)) : std::nullopt;
}

} // namespace kelpa
