#include "views/todos/TodoListModel.h"

#include "model/Text.h"
#include "views/models/ColumnID.h"
#include "views/todos/TodoController.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

enum Role {
    todoIDRole = Qt::UserRole + 1,
    columnIDRole,
    titleRole,
    statusRole,
    statusSymbolRole,
    isDoneRole,
    goalTitleRole,
    isFoundRole,
    isMissedRole,
};

} // namespace

TodoListModel::TodoListModel(QObject* parent) : RowListModel(parent)
{
    connect(this, &QAbstractItemModel::rowsInserted, this, &TodoListModel::countChanged);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &TodoListModel::countChanged);
}

QVariant TodoListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const UnifiedTodoEntry& entry = rows().at(index.row());
    switch (role) {
    case todoIDRole:
        return entry.todo.id.text();
    case columnIDRole:
        return columnText(entry.goalID);
    case titleRole:
        return singleLine(entry.todo.title);
    case statusRole:
        return rawValue(entry.todo.status);
    case statusSymbolRole:
        return statusSymbol(entry.todo.status);
    case isDoneRole:
        return !entry.todo.isOpen();
    case goalTitleRole:
        return singleLine(entry.goalTitle);
    case isFoundRole:
        return entry.match == SearchMatch::found;
    case isMissedRole:
        return entry.match == SearchMatch::missed;
    default:
        return {};
    }
}

QHash<int, QByteArray> TodoListModel::roleNames() const
{
    return {{todoIDRole, "todoID"},       {columnIDRole, "columnID"},
            {titleRole, "title"},         {statusRole, "status"},
            {isDoneRole, "isDone"},       {statusSymbolRole, "statusSymbol"},
            {goalTitleRole, "goalTitle"}, {isFoundRole, "isFound"},
            {isMissedRole, "isMissed"}};
}

void TodoListModel::setTodos(TodoController* todos)
{
    if (m_todos == todos)
        return;
    if (m_todos != nullptr)
        disconnect(m_todos, nullptr, this, nullptr);
    m_todos = todos;
    if (m_todos != nullptr)
        connect(m_todos, &TodoController::entriesChanged, this, &TodoListModel::update);
    Q_EMIT todosChanged();
    update();
}

void TodoListModel::setListID(const QString& listID)
{
    if (m_listID == listID)
        return;
    m_listID = listID;
    Q_EMIT listIDChanged();
    update();
}

int TodoListModel::rowOf(const QString& todoID) const
{
    const std::optional<TodoID> wanted = TodoID::fromText(todoID);
    if (!wanted)
        return -1;
    const auto found = std::ranges::find_if(
        rows(), [&wanted](const UnifiedTodoEntry& entry) { return entry.todo.id == wanted; });
    return found == rows().end() ? -1 : static_cast<int>(found - rows().begin());
}

void TodoListModel::update()
{
    setRows(m_todos != nullptr ? m_todos->entries(m_listID) : QList<UnifiedTodoEntry>());
    const bool isEmptyList = m_todos != nullptr && rows().isEmpty();
    const int onlyCompleted = isEmptyList ? m_todos->completedCount(m_listID) : 0;
    if (std::exchange(m_onlyCompletedCount, onlyCompleted) != onlyCompleted)
        Q_EMIT onlyCompletedCountChanged();
}

} // namespace kelpa
