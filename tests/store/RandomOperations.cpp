#include "store/RandomOperations.h"

namespace kelpa::test {

using namespace std::chrono_literals;

std::optional<BoardModel::ModelGoal> RandomOperations::addedGoal(bool isExpected)
{
    const auto known = m_model.contents().goals;
    std::optional<BoardModel::ModelGoal> added;
    for (const BoardModel::ModelGoal& each : BoardModel::contentsOf(store()).goals) {
        if (std::ranges::find(known, each.id, &BoardModel::ModelGoal::id) == known.end())
            added = each;
    }
    EXPECT_EQ(added.has_value(), isExpected);
    return added;
}

void RandomOperations::forgetCompleted(const QList<TodoItem>& todos)
{
    for (const TodoItem& item : todos) {
        if (item.status == TodoStatus::completed)
            m_todos.remove(item.id);
    }
}

std::string RandomOperations::operate()
{
    switch (below(26)) {
    case 0:
        if (store().goals().size() < 12) {
            const QString title = anyTitle();
            store().createGoal(title);
            m_model.createGoal(title, addedGoal(!title.trimmed().isEmpty()));
        }
        return "createGoal";
    case 1: {
        const GoalID id = anyGoal();
        const QString title = anyTitle();
        store().renameGoal(id, title);
        m_model.renameGoal(id, title);
        return "renameGoal";
    }
    case 2: {
        if (!chance(3))
            return "nothing";
        const GoalID id = anyGoal();
        for (const Goal& each : store().goals()) {
            if (each.id != id)
                continue;
            for (const TodoItem& item : each.todos)
                m_todos.remove(item.id);
        }
        m_assignments.removeIf([&id](const auto& entry) { return entry.value() == id; });
        store().deleteGoal(id);
        m_model.deleteGoal(id);
        return "deleteGoal";
    }
    case 3: {
        const GoalID moved = anyGoal();
        const GoalID target = anyGoal();
        store().moveGoal(moved, target);
        m_model.moveGoal(moved, target);
        return "moveGoal";
    }
    case 4: {
        const auto priority = static_cast<GoalPriority>(below(4));
        const GoalID id = anyGoal();
        store().setGoalPriority(priority, id);
        m_model.setPriority(priority, id);
        return "setGoalPriority";
    }
    case 5: {
        const bool isSorting = chance(2);
        store().setAutoSortingGoals(isSorting);
        m_model.setSorting(isSorting);
        return "setAutoSortingGoals";
    }
    case 6:
        store().setHidingGoalsWithoutOpenTodos(chance(2));
        return "setHidingGoalsWithoutOpenTodos";
    case 7:
    case 8: {
        if (m_todos.size() >= 60)
            return "nothing";
        const std::optional<GoalID> list = anyList();
        const bool exists = !list || std::ranges::any_of(store().goals(), [&](const Goal& each) {
            return each.id == *list;
        });
        const qsizetype before = exists ? todos(list).size() : 0;
        const QString title = anyTitle();
        store().addTodo(title, list);
        std::optional<TodoID> added;
        if (exists && todos(list).size() > before)
            added = todos(list).last().id;
        EXPECT_EQ(added.has_value(), exists && !title.trimmed().isEmpty());
        if (added)
            m_todos.insert(*added);
        m_model.addTodo(title, list, added);
        return "addTodo";
    }
    case 9: {
        const Place place = anyTodo();
        const QString title = anyTitle();
        store().updateTodo(place.id, title, place.list);
        m_model.renameTodo(place.id, title, place.list);
        return "updateTodo";
    }
    case 10:
    case 11: {
        const Place place = anyTodo();
        store().toggleTodo(place.id, place.list);
        m_model.toggleTodo(place.id, place.list, scheduler.calendarTime());
        return "toggleTodo";
    }
    case 12: {
        const Place place = anyTodo();
        m_todos.remove(place.id);
        store().deleteTodo(place.id, place.list);
        m_model.deleteTodo(place.id, place.list);
        return "deleteTodo";
    }
    case 13: {
        const Place place = anyTodo();
        const std::optional<GoalID> to = anyList();
        store().moveTodo(place.id, place.list, to);
        m_model.moveToList(place.id, place.list, to);
        return "moveTodo to a list";
    }
    case 14: {
        const TodoID moved = anyTodo().id;
        const TodoID target = anyTodo().id;
        store().moveTodo(moved, target);
        m_model.moveBefore(moved, target);
        if (moved != target && m_todos.contains(moved) && m_todos.contains(target))
            checkMovedBefore(moved, target);
        return "moveTodo before";
    }
    case 15:
        if (chance(3))
            store().setSearchText(chance(2) ? QString() : anyTitle());
        else if (chance(2))
            store().requestAddTodo(anyGoal());
        else
            store().cancelTodoEditor();
        return "todo editor or search";
    case 16:
        changeDesktop();
        if (chance(2))
            store().refresh();
        else
            store().refreshInBackground();
        scheduler.advance(0ms);
        return "refresh";
    case 17: {
        const WindowID id = anyWindow();
        const std::optional<GoalID> goalID = anyList();
        if (windowWith(id, store().windows()) != nullptr)
            m_model.assign({id}, goalID);
        store().assign(id, goalID);
        for (const WindowItem& item : store().windows()) {
            if (item.id != id)
                continue;
            if (item.goalID)
                m_assignments.insert(QString::number(id), *item.goalID);
            else if (!goalID)
                m_assignments.remove(QString::number(id));
        }
        return "assign";
    }
    case 18: {
        const QSet<WindowID> ids{anyWindow(), anyWindow()};
        const GoalID goalID = anyGoal();
        const auto isListed = [this](WindowID id) {
            return windowWith(id, store().windows()) != nullptr;
        };
        if (std::ranges::all_of(ids, isListed))
            m_model.assign({ids.begin(), ids.end()}, goalID);
        if (store().assign(ids, goalID)) {
            for (const WindowID id : ids)
                m_assignments.insert(QString::number(id), goalID);
        }
        return "assign several";
    }
    case 19: {
        const auto direction = static_cast<NavigationDirection>(below(4));
        if (store().boardNavigation().layer == BoardNavigationLayer::windows)
            store().moveWindowSelection(direction);
        else
            store().moveTargetSelection(direction);
        return "arrow";
    }
    case 20: {
        store().setTargetGridColumnCount(1 + below(4));
        const auto enter = chance(2) ? EnterWindowLayer::yes : EnterWindowLayer::no;
        const int target = below(4);
        store().activateTarget(target == 0   ? TargetSelection::none()
                               : target == 1 ? TargetSelection::unifiedTodos()
                               : target == 2 ? TargetSelection::unassigned()
                                             : TargetSelection::goal(anyGoal()),
                               enter);
        return "activateTarget";
    }
    case 21:
    case 22:
        store().undo();
        m_model.undo();
        expectBoard(m_history.undo(m_before));
        return "undo";
    case 23:
        store().redo();
        m_model.redo();
        expectBoard(m_history.redo(m_before));
        return "redo";
    case 24: {
        const std::optional<GoalID> list = anyTodo().list;
        for (const Goal& each : store().goals()) {
            if (each.id == list)
                forgetCompleted(each.todos);
        }
        if (!list)
            forgetCompleted(store().unassignedTodos());
        store().deleteCompletedTodos(list);
        m_model.deleteCompletedTodos(list);
        return "deleteCompletedTodos";
    }
    default:
        switch (below(4)) {
        case 0:
            store().returnToTargetSelection();
            return "returnToTargetSelection";
        case 1:
            store().clearTargetSelection();
            return "clearTargetSelection";
        case 2:
            store().setLanguage(static_cast<AppLanguage>(below(6)));
            if (!store().unassignedTodos().isEmpty())
                store().copyTodo(store().unassignedTodos().first());
            return "setLanguage, copyTodo";
        default:
            scheduler.advance(700ms);
            return "time passes";
        }
    }
}

} // namespace kelpa::test
