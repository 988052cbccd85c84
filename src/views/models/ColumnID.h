// How the columns of the board and their lists of todos are named in QML.
#pragma once

#include "model/Identifiers.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <variant>

namespace kelpa {

/// The text that names a column in QML: the goal's UUID, or "kelpa-unassigned".
QString columnText(std::optional<GoalID> goalID);

/// A column that a text of `columnText` names.
struct ColumnID
{
    std::optional<GoalID> goalID;
    friend bool operator==(const ColumnID&, const ColumnID&) = default;
};

/// None for any text that `columnText` could not have given.
std::optional<ColumnID> columnFromText(QStringView text);

/// The goal that a column's text names; none for the unassigned column, and for no column.
std::optional<GoalID> goalFromColumnText(const QString& text);

/// Names the list of the open todos of all columns.
inline const QString unifiedTodosText = QStringLiteral("unified-todos");

struct WholeBoard
{
    friend bool operator==(const WholeBoard&, const WholeBoard&) = default;
};

/// A list of todos: that of a column, or of the whole board.
using TodoList = std::variant<ColumnID, WholeBoard>;

/// None for any text that names neither a column nor the whole board.
std::optional<TodoList> todoListFromText(const QString& text);

} // namespace kelpa
