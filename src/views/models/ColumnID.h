// Texts that identify the columns of the board, and their lists of todos, in QML.
#pragma once

#include "model/Identifiers.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <variant>

namespace kelpa {

/// Identifies a column in QML: the goal's UUID, or "kelpa-unassigned" for no goal.
QString columnText(std::optional<GoalID> goalID);

/// A column of the board.
struct ColumnID
{
    /// None for the unassigned column.
    std::optional<GoalID> goalID;
    friend bool operator==(const ColumnID&, const ColumnID&) = default;
};

/// None for any text that `columnText` cannot return.
std::optional<ColumnID> columnFromText(QStringView text);

/// The goal of the column that `text` identifies; none for the unassigned column, and for any other
/// text.
std::optional<GoalID> goalFromColumnText(const QString& text);

/// Identifies the list of the open todos of all columns.
inline const QString unifiedTodosText = QStringLiteral("unified-todos");

struct WholeBoard
{
    friend bool operator==(const WholeBoard&, const WholeBoard&) = default;
};

/// A list of todos: that of a column, or of the whole board.
using TodoList = std::variant<ColumnID, WholeBoard>;

/// None for any text that identifies neither a column nor the whole board.
std::optional<TodoList> todoListFromText(const QString& text);

} // namespace kelpa
