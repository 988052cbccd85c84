// Todos in a text of several lines, as it is pasted from a list elsewhere.
#pragma once

#include <QList>
#include <QString>

namespace kelpa {

struct TodoLine
{
    /// Trimmed, never blank.
    QString title;
    bool isCompleted = false;

    friend bool operator==(const TodoLine&, const TodoLine&) = default;
};

/// A todo for each line that is not blank, without the mark of a list before its text: "- ", "* ",
/// "+ ", "• ", "1. " or "1) ", and a box, "[ ] " or "[x] ". A ticked box makes a completed todo.
QList<TodoLine> todosInLines(const QString& text);

/// The number of todos that may be offered when a field's text changes: those of its lines where
/// the change brought lines, which only a paste does, and 0 where there are fewer than two.
qsizetype pastedTodoCount(const QString& before, const QString& after);

} // namespace kelpa
