// Decides on and carries out drops of a text on a column of the board, or behind the last goal.
#pragma once

#include "model/TodoDragPayload.h"
#include "views/models/ColumnID.h"
#include "views/models/DragPayload.h"

#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class GoalController;
class WindowStore;

/// Main thread. A column is named by `columnText`; any other name refuses every drop.
class DropController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

public:
    /// `store` and `goals` outlive the controller.
    DropController(WindowStore& store, GoalController& goals, QObject* parent = nullptr);

    /// Whether the column accepts `text`, even where it is already.
    Q_INVOKABLE bool canDrop(const QString& text, const QString& columnID) const;
    /// Whether dropping `text` there would change the board.
    Q_INVOKABLE bool wouldDropMove(const QString& text, const QString& columnID) const;
    /// Carries the drop out; returns false and does nothing when it is refused.
    Q_INVOKABLE bool drop(const QString& text, const QString& columnID);
    /// The column's title in a line; empty for a goal that is gone.
    Q_INVOKABLE QString columnTitle(const QString& columnID) const;
    /// Whether `text` is that of a goal.
    Q_INVOKABLE bool isGoalDrag(const QString& text) const;
    /// The same for the place behind all visible goals, where only goals are accepted.
    Q_INVOKABLE bool canDropAtEnd(const QString& text) const;
    Q_INVOKABLE bool wouldDropAtEndMove(const QString& text) const;
    Q_INVOKABLE bool dropAtEnd(const QString& text);

private:
    bool hasTodo(const TodoDragPayload& todo) const;

    /// The outcome of a drop on a column; `none` for an item that is there already.
    enum class DropEffect { refused, none, change };
    DropEffect effectOf(const DragPayload& payload, const ColumnID& column) const;
    DropEffect effectOf(const QString& text, const QString& columnID) const;

    /// The column of the dragged goal, when it shows among others that have their own order;
    /// otherwise empty.
    QString movableColumn(const QString& text) const;

    WindowStore& m_store;
    GoalController& m_goals;
};

} // namespace kelpa
