#include "store/board/BoardImport.h"

#include "store/board/GoalOrder.h"
#include "store/board/TodoOrder.h"

#include <QSet>

#include <utility>
#include <vector>

namespace kelpa {

namespace {

/// Gives every goal and todo a new identity that `present` has already.
void makeDistinct(BoardContents& made, const BoardContents& present)
{
    QSet<GoalID> goalIDs;
    for (const Goal& goal : present.goals)
        goalIDs.insert(goal.id);
    QSet<TodoID> todoIDs;
    const QList<TodoItem> todos = allTodos(present.goals, present.unassignedTodos);
    todoIDs.reserve(todos.size());
    for (const TodoItem& todo : todos)
        todoIDs.insert(todo.id);

    const auto renew = [&todoIDs](QList<TodoItem>& list) {
        for (TodoItem& todo : list) {
            if (todoIDs.contains(todo.id))
                todo.id = TodoID::create();
        }
    };
    for (Goal& goal : made.goals) {
        if (goalIDs.contains(goal.id))
            goal.id = GoalID::create();
        renew(goal.todos);
    }
    renew(made.unassignedTodos);
}

/// Colours the goals as if they had been created one after the other.
void chooseAccents(QList<Goal>& made, QList<Goal> before)
{
    for (Goal& goal : made) {
        goal.accent = nextAccent(before);
        Goal colored;
        colored.accent = goal.accent;
        before.append(colored);
    }
}

} // namespace

BoardContents withImport(const BoardContents& present, const ImportedBoard& import, ImportMode mode)
{
    const bool isAdding = mode == ImportMode::add;
    BoardContents made{import.goals, import.todosWithoutGoal, {}};
    if (!import.hasAllFields)
        chooseAccents(made.goals, isAdding ? present.goals : QList<Goal>());
    else if (isAdding)
        makeDistinct(made, present);
    if (isAdding)
        return joined(present, std::move(made));
    return restored(present, joined({}, std::move(made)));
}

PreparedImport preparedImport(const BoardContents& present, const ImportedBoard& import,
                              ImportMode mode, bool isAutoSortingGoals)
{
    BoardContents after = withImport(present, import, mode);
    if (isAutoSortingGoals)
        after.goals = automaticallySorted(after.goals);
    std::vector<SettingsEntry> entries = boardEntries(after.goals, after.unassignedTodos);
    return {present, isAutoSortingGoals, {std::move(after), std::move(entries)}};
}

} // namespace kelpa
