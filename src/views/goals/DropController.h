// What a text that is dropped on a column of the board, or behind the last goal, means and does.
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

    /// Whether the column takes `text`, also where it is already.
    Q_INVOKABLE bool canDrop(const QString& text, const QString& columnID) const;
    /// Whether dropping `text` there would change the board.
    Q_INVOKABLE bool wouldDropMove(const QString& text, const QString& columnID) const;
    /// Carries the drop out; false, and nothing done, when it is refused.
    Q_INVOKABLE bool drop(const QString& text, const QString& columnID);
    /// Whether `text` is that of a goal.
    Q_INVOKABLE bool isGoalDrag(const QString& text) const;
    /// The same behind all goals that show, where only goals are taken.
    Q_INVOKABLE bool canDropAtEnd(const QString& text) const;
    Q_INVOKABLE bool wouldDropAtEndMove(const QString& text) const;
    Q_INVOKABLE bool dropAtEnd(const QString& text);

private:
    bool hasTodo(const TodoDragPayload& todo) const;

    /// What letting go of something over a column comes to. `none` is where it is already.
    enum class DropEffect { refused, none, change };
    DropEffect effectOf(const DragPayload& drop, const ColumnID& column) const;
    DropEffect effectOf(const QString& text, const QString& columnID) const;

    /// The column of the dragged goal, when it shows among others that have their own order;
    /// otherwise empty.
    QString movableColumn(const QString& text) const;

    WindowStore& m_store;
    GoalController& m_goals;
};

} // namespace kelpa
