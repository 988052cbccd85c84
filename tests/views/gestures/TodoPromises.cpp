#include "views/gestures/BoardPromises.h"
#include "views/todos/TodoListModel.h"

#include <QSet>

#include <algorithm>
#include <iterator>

namespace kelpa::test {

namespace {

QString titlesOf(const QList<TodoItem>& todos)
{
    QStringList titles;
    for (const TodoItem& todo : todos)
        titles.append(todo.title);
    return titles.join(u' ');
}

/// The todos that a list has to show, worked out anew: nothing of it is the views'.
QList<TodoItem> expectedTodos(const ShownBoard& board, const QString& listID)
{
    const auto byOrder = [](const TodoItem& left, const TodoItem& right) {
        return left.order < right.order;
    };
    const auto isOpen = [](const TodoItem& todo) { return todo.status != TodoStatus::completed; };
    const std::optional<TodoID> lingering = board.store.lingeringTodoID();
    QList<TodoItem> expected;
    if (listID == unifiedTodosText) {
        QList<TodoItem> all = board.store.unassignedTodos();
        QSet<QUuid> unassigned;
        for (const TodoItem& todo : std::as_const(all))
            unassigned.insert(todo.id.value);
        for (const Goal& goal : board.store.goals())
            all += goal.todos;
        std::ranges::copy_if(all, std::back_inserter(expected), [&](const TodoItem& todo) {
            const bool lingers = todo.id == lingering && !unassigned.contains(todo.id.value);
            return isOpen(todo) || lingers;
        });
    } else if (const std::optional<GoalID> goalID = goalFromColumnText(listID)) {
        const Goal* const goal = goalWith(*goalID, board.store.goals());
        if (goal == nullptr)
            return {};
        std::ranges::copy_if(goal->todos, std::back_inserter(expected), isOpen);
        const TodoItem* last = nullptr;
        for (const TodoItem& todo : goal->todos) {
            const bool isCandidate =
                expected.isEmpty() ? todo.id == lingering : todo.completedAt.has_value();
            if (!isOpen(todo) && isCandidate &&
                (last == nullptr || last->completedAt < todo.completedAt))
                last = &todo;
        }
        if (last != nullptr)
            expected.append(*last);
    } else {
        expected = board.store.unassignedTodos();
    }
    std::ranges::stable_sort(expected, byOrder);
    return expected;
}

} // namespace

QStringList brokenTodoLists(const ShownBoard& board, const QList<QQuickItem*>& items)
{
    QStringList broken;
    const auto requireThat = [&broken](bool holds, const QString& promise) {
        if (!holds)
            broken.append(promise);
    };
    for (const QQuickItem* const item : items) {
        if (!isOfType(*item, "TodoList"))
            continue;
        const auto* const model = item->property("listModel").value<TodoListModel*>();
        requireThat(model != nullptr, QStringLiteral("a list of todos has rows"));
        if (model == nullptr)
            continue;
        QList<TodoItem> shown;
        for (const UnifiedTodoEntry& row : model->rows()) {
            shown.append(row.todo);
            const Goal* const goal =
                row.goalID ? goalWith(*row.goalID, board.store.goals()) : nullptr;
            requireThat(!row.goalID || goal != nullptr,
                        QStringLiteral("a row's goal is one of the board"));
            requireThat((goal ? goal->todos : board.store.unassignedTodos()).contains(row.todo),
                        QStringLiteral("a row shows a todo of its goal as it is"));
        }
        const QList<TodoItem> expected = expectedTodos(board, model->listID());
        requireThat(
            shown == expected,
            QStringLiteral("a list shows its todos, each once and in their order: %1 for %2")
                .arg(titlesOf(shown), titlesOf(expected)));
    }
    return broken;
}

} // namespace kelpa::test
