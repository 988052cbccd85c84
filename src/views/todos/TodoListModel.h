// The todos of one list of the board as a model. Views create it, so that a board of many goals
// costs only the lists on the screen.
#pragma once

#include "views/models/RowListModel.h"
#include "views/todos/TodoRows.h"

#include <QPointer>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class TodoController;

/// Follows the store of its `todos`. Main thread.
class TodoListModel : public RowListModel<UnifiedTodoEntry>
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(kelpa::TodoController* todos READ todos WRITE setTodos NOTIFY todosChanged REQUIRED)
    Q_PROPERTY(QString listID READ listID WRITE setListID NOTIFY listIDChanged REQUIRED)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int onlyCompletedCount READ onlyCompletedCount NOTIFY onlyCompletedCountChanged)

public:
    explicit TodoListModel(QObject* parent = nullptr);

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    TodoController* todos() const { return m_todos; }
    void setTodos(TodoController* todos);
    /// A text of `columnText`, or `unifiedTodosText`; for any other text the list is empty.
    QString listID() const { return m_listID; }
    void setListID(const QString& listID);
    int count() const { return rowCount(); }
    /// How many completed todos a goal has of which the list shows none; 0 while it shows any.
    int onlyCompletedCount() const { return m_onlyCompletedCount; }

    /// The row of a todo; -1 when the list does not show it.
    Q_INVOKABLE int rowOf(const QString& todoID) const;

Q_SIGNALS:
    void todosChanged();
    void listIDChanged();
    void countChanged();
    void onlyCompletedCountChanged();

private:
    void update();

    QPointer<TodoController> m_todos;
    QString m_listID;
    int m_onlyCompletedCount = 0;
};

} // namespace kelpa
