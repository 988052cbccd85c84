// Drops of dragged todos within lists: on a row, or below the last row. It answers the drop areas
// and carries a drop out; the store moves the todo.
#pragma once

#include "views/models/DragPayload.h"
#include "views/todos/TodoRows.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace kelpa {

class TodoController;
class WindowStore;

/// Main thread. `text` is what a drag carries; todos and lists are named as for the TodoController.
/// A todo that was deleted or moved since its drag began is refused.
class TodoDrops : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The todo controller has it.")

public:
    enum class Answer {
        /// No todo: the column below the row may accept it.
        PassOn,
        /// A todo that the row does not accept, and that must not reach the column either: who
        /// drops a todo on a row means a place among the others.
        Refuse,
        Accept,
    };
    Q_ENUM(Answer)

    /// Both outlive it.
    TodoDrops(WindowStore& store, TodoController& todos);

    Q_INVOKABLE kelpa::TodoDrops::Answer answerOnRow(const QString& text, const QString& listID,
                                                     const QString& todoID) const;
    /// Whether dropping before the row's todo changes the order of the whole board.
    Q_INVOKABLE bool wouldMoveOnRow(const QString& text, const QString& todoID) const;
    /// Moves the dragged todo before the row's; false, and nothing done, when it is refused.
    Q_INVOKABLE bool dropOnRow(const QString& text, const QString& listID, const QString& todoID);

    /// The same below the last row of the list, which accepts only todos that it shows.
    Q_INVOKABLE bool canDropAtEnd(const QString& text, const QString& listID) const;
    Q_INVOKABLE bool wouldMoveAtEnd(const QString& text, const QString& listID) const;
    Q_INVOKABLE bool dropAtEnd(const QString& text, const QString& listID);

private:
    /// Refused when a name names nothing.
    TodoRowDropOutcome outcomeOnRow(const QString& text, const QString& listID,
                                    const QString& todoID) const;
    /// A dragged todo and the list that shows it.
    struct ShownTodo
    {
        TodoID id;
        QList<UnifiedTodoEntry> entries;
    };
    /// Absent when `text` is no todo or the list does not show it.
    std::optional<ShownTodo> shownTodo(const QString& text, const QString& listID) const;

    WindowStore& m_store;
    TodoController& m_todos;
};

} // namespace kelpa
