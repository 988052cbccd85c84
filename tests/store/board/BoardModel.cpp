#include "store/board/BoardModel.h"

#include "store/WindowStore.h"

#include <QHash>

#include <algorithm>

namespace kelpa::test {

namespace {

constexpr std::size_t mostSteps = 100;

/// The todos list after list: in the order of the goals, those without a goal last.
BoardModel::Contents byList(const BoardModel::Contents& board)
{
    BoardModel::Contents grouped{board.goals, {}, board.windows};
    const auto append = [&](const BoardModel::List& list) {
        std::ranges::copy_if(board.todos, std::back_inserter(grouped.todos),
                             [&](const BoardModel::ModelTodo& todo) { return todo.list == list; });
    };
    for (const BoardModel::ModelGoal& goal : board.goals)
        append(goal.id);
    append(std::nullopt);
    return grouped;
}

} // namespace

BoardModel::Contents BoardModel::contentsOf(const WindowStore& store)
{
    Contents board;
    const auto append = [&board](const QList<TodoItem>& todos, const List& list) {
        for (const TodoItem& todo : todos)
            board.todos.push_back(
                {todo.id, todo.title, todo.status, todo.completedAt, todo.order, list});
    };
    for (const Goal& goal : store.goals()) {
        board.goals.push_back({goal.id, goal.title, goal.accent, goal.priority});
        append(goal.todos, goal.id);
    }
    append(store.unassignedTodos(), std::nullopt);
    const Assignments& assignments = store.assignments();
    for (auto each = assignments.constBegin(); each != assignments.constEnd(); ++each)
        board.windows.emplace(each.key().toUInt(), each.value());
    return board;
}

BoardModel::Contents BoardModel::contents() const
{
    return byList(m_board);
}

bool BoardModel::hasList(const List& list) const
{
    return !list || std::ranges::find(m_board.goals, *list, &ModelGoal::id) != m_board.goals.end();
}

BoardModel::ModelGoal* BoardModel::goal(GoalID id)
{
    const auto found = std::ranges::find(m_board.goals, id, &ModelGoal::id);
    return found == m_board.goals.end() ? nullptr : &*found;
}

BoardModel::ModelTodo* BoardModel::todo(TodoID id, const List& list)
{
    const auto found = std::ranges::find(m_board.todos, id, &ModelTodo::id);
    return found == m_board.todos.end() || found->list != list ? nullptr : &*found;
}

std::vector<TodoID> BoardModel::sequence() const
{
    std::vector<ModelTodo> todos = m_board.todos;
    std::ranges::sort(todos, {}, &ModelTodo::order);
    std::vector<TodoID> ids;
    ids.reserve(todos.size());
    for (const ModelTodo& each : todos)
        ids.push_back(each.id);
    return ids;
}

void BoardModel::renumber(const std::vector<TodoID>& ids)
{
    for (ModelTodo& each : m_board.todos)
        each.order = std::ranges::find(ids, each.id) - ids.begin();
}

void BoardModel::sortGoals()
{
    if (!m_isSorting)
        return;
    QHash<GoalID, int> openTodos;
    for (const ModelTodo& todo : m_board.todos) {
        if (todo.list && todo.status != TodoStatus::completed)
            ++openTodos[*todo.list];
    }
    std::ranges::stable_sort(m_board.goals, [&](const ModelGoal& a, const ModelGoal& b) {
        return a.priority != b.priority ? a.priority < b.priority
                                        : openTodos.value(a.id) > openTodos.value(b.id);
    });
}

/// A step is what has changed the board.
void BoardModel::end(const Step& before)
{
    sortGoals();
    if (before.board == m_board || byList(before.board) == byList(m_board))
        return;
    m_future.clear();
    m_past.push_back({before.board, before.isSorting, before.isSorting != m_isSorting});
    if (m_past.size() > mostSteps)
        m_past.erase(m_past.begin());
}

void BoardModel::createGoal(const QString& title, const std::optional<ModelGoal>& added)
{
    const Step before = present();
    if (!title.trimmed().isEmpty() && added)
        m_board.goals.push_back({added->id, title.trimmed(), added->accent, GoalPriority::p2});
    end(before);
}

void BoardModel::renameGoal(GoalID id, const QString& title)
{
    const Step before = present();
    ModelGoal* const found = goal(id);
    if (found != nullptr && !title.trimmed().isEmpty())
        found->title = title.trimmed();
    end(before);
}

void BoardModel::deleteGoal(GoalID id)
{
    const Step before = present();
    std::erase_if(m_board.goals, [id](const ModelGoal& each) { return each.id == id; });
    std::erase_if(m_board.todos, [id](const ModelTodo& each) { return each.list == List(id); });
    std::erase_if(m_board.windows, [id](const auto& each) { return each.second == id; });
    // The others are in their order already.
    end(before);
}

void BoardModel::moveGoal(GoalID moved, GoalID target)
{
    const Step before = present();
    if (!m_isSorting && moved != target && goal(moved) != nullptr && goal(target) != nullptr) {
        const ModelGoal taken = *goal(moved);
        std::erase(m_board.goals, taken);
        m_board.goals.insert(std::ranges::find(m_board.goals, target, &ModelGoal::id), taken);
    }
    end(before);
}

void BoardModel::setPriority(GoalPriority priority, GoalID id)
{
    const Step before = present();
    if (ModelGoal* const found = goal(id))
        found->priority = priority;
    end(before);
}

void BoardModel::setSorting(bool isSorting)
{
    const Step before = present();
    m_isSorting = isSorting;
    end(before);
}

void BoardModel::addTodo(const QString& title, const List& list, const std::optional<TodoID>& added)
{
    const Step before = present();
    if (!title.trimmed().isEmpty() && hasList(list) && added) {
        std::int64_t order = 0;
        for (const ModelTodo& each : m_board.todos)
            order = std::max(order, each.order + 1);
        m_board.todos.push_back(
            {*added, title.trimmed(), TodoStatus::todo, std::nullopt, order, list});
    }
    end(before);
}

void BoardModel::renameTodo(TodoID id, const QString& title, const List& list)
{
    const Step before = present();
    ModelTodo* const found = todo(id, list);
    if (found != nullptr && !title.trimmed().isEmpty())
        found->title = title.trimmed();
    end(before);
}

void BoardModel::toggleTodo(TodoID id, const List& list, Date now)
{
    const Step before = present();
    if (ModelTodo* const found = todo(id, list)) {
        found->completedAt.reset();
        switch (found->status) {
        case TodoStatus::todo:
            found->status = TodoStatus::ing;
            break;
        case TodoStatus::ing:
            found->status = TodoStatus::completed;
            found->completedAt = now;
            break;
        case TodoStatus::completed:
            found->status = TodoStatus::todo;
            break;
        }
    }
    end(before);
}

void BoardModel::deleteTodo(TodoID id, const List& list)
{
    const Step before = present();
    if (const ModelTodo* const found = todo(id, list))
        std::erase(m_board.todos, ModelTodo(*found));
    end(before);
}

void BoardModel::deleteCompletedTodos(const List& list)
{
    const Step before = present();
    std::erase_if(m_board.todos, [&list](const ModelTodo& each) {
        return each.list == list && each.status == TodoStatus::completed;
    });
    end(before);
}

void BoardModel::moveToList(TodoID id, const List& from, const List& to)
{
    const Step before = present();
    const ModelTodo* const found = todo(id, from);
    if (found != nullptr && hasList(to)) {
        ModelTodo moved = *found;
        std::erase(m_board.todos, moved);
        moved.list = to;
        m_board.todos.push_back(moved);
    }
    end(before);
}

void BoardModel::moveBefore(TodoID moved, TodoID target)
{
    const Step before = present();
    std::vector<TodoID> ids = sequence();
    if (moved != target && std::ranges::count(ids, moved) > 0 &&
        std::ranges::count(ids, target) > 0) {
        std::erase(ids, moved);
        ids.insert(std::ranges::find(ids, target), moved);
        renumber(ids);
    }
    end(before);
}

void BoardModel::assign(const std::vector<WindowID>& windows, const List& to)
{
    const Step before = present();
    if (hasList(to)) {
        for (const WindowID window : windows) {
            m_board.windows.erase(window);
            if (to)
                m_board.windows.emplace(window, *to);
        }
    }
    end(before);
}

void BoardModel::goTo(std::vector<Step>& from, std::vector<Step>& inverses)
{
    if (from.empty())
        return;
    const Step step = from.back();
    from.pop_back();
    inverses.push_back({m_board, m_isSorting, step.hasSwitched});
    m_board = step.board;
    if (step.hasSwitched)
        m_isSorting = step.isSorting;
    sortGoals();
}

void BoardModel::undo()
{
    goTo(m_past, m_future);
}

void BoardModel::redo()
{
    goTo(m_future, m_past);
}

void BoardModel::restart()
{
    m_past.clear();
    m_future.clear();
    renumber(sequence());
}

} // namespace kelpa::test
