// Long random sequences of operations; the invariants are checked after each one.

#include "store/RandomOperations.h"
#include "store/board/BoardPersistence.h"
#include "store/board/TodoOrder.h"

#include <iostream>

namespace kelpa::test {

void RandomOperations::expectBoard(const BoardVersion& board)
{
    EXPECT_EQ(HistoryModel::present(store()), board);
    m_todos.clear();
    for (const TodoItem& item : allTodos(board.contents.goals, board.contents.unassignedTodos))
        m_todos.insert(item.id);
    m_assignments = board.contents.assignments;
}

void RandomOperations::checkHistory()
{
    const BoardVersion start = HistoryModel::present(store());
    int steps = 0;
    for (; m_history.canUndo() && !HasFailure(); ++steps) {
        ASSERT_TRUE(store().canUndo());
        const BoardVersion expected = m_history.undo(HistoryModel::present(store()));
        store().undo();
        m_model.undo();
        expectBoard(expected);
        checkModel();
        checkSavedState();
    }
    EXPECT_FALSE(store().canUndo());
    for (; steps > 0 && !HasFailure(); --steps) {
        const BoardVersion expected = m_history.redo(HistoryModel::present(store()));
        store().redo();
        m_model.redo();
        expectBoard(expected);
        checkModel();
    }
    expectBoard(start);
}

void RandomOperations::checkTodos()
{
    QSet<TodoID> found;
    QSet<std::int64_t> orders;
    qsizetype count = 0;
    const auto scan = [&](const QList<TodoItem>& todos) {
        for (const TodoItem& item : todos) {
            ++count;
            found.insert(item.id);
            orders.insert(item.order);
            EXPECT_EQ(item.completedAt.has_value(), item.status == TodoStatus::completed);
            EXPECT_EQ(item.title, item.title.trimmed());
            EXPECT_FALSE(item.title.isEmpty());
        }
    };
    for (const Goal& each : store().goals())
        scan(each.todos);
    scan(store().unassignedTodos());
    EXPECT_EQ(found, m_todos) << "a todo was lost or appeared";
    EXPECT_EQ(count, found.size()) << "a todo is in two lists";
    EXPECT_EQ(orders.size(), found.size()) << "two todos share an order";
}

void RandomOperations::checkMovedBefore(TodoID moved, TodoID target)
{
    QMap<std::int64_t, TodoID> byOrder;
    for (const TodoItem& item : allTodos(store().goals(), store().unassignedTodos()))
        byOrder.insert(item.order, item.id);
    const QList<TodoID> sequence = byOrder.values();
    EXPECT_EQ(sequence.indexOf(moved) + 1, sequence.indexOf(target));
    EXPECT_EQ(byOrder.firstKey(), 0);
    EXPECT_EQ(byOrder.lastKey(), byOrder.size() - 1);
}

void RandomOperations::checkGoals()
{
    QSet<GoalID> ids;
    for (const Goal& each : store().goals())
        ids.insert(each.id);
    EXPECT_EQ(ids.size(), store().goals().size());
    if (!store().isAutoSortingGoals())
        return;
    const auto isBefore = [](const Goal& a, const Goal& b) {
        return a.priority != b.priority ? a.priority < b.priority
                                        : a.openTodoCount() > b.openTodoCount();
    };
    EXPECT_TRUE(std::ranges::is_sorted(store().goals(), isBefore));
}

void RandomOperations::checkNavigation()
{
    const BoardNavigationState& state = store().boardNavigation();
    // Whether or not the search shows them.
    const QList<WindowItem>& windows = store().windows();
    if (state.layer == BoardNavigationLayer::windows) {
        EXPECT_FALSE(state.target.isNone());
        ASSERT_TRUE(state.selectedWindowID.has_value());
        EXPECT_TRUE(std::ranges::any_of(windows, [&state](const WindowItem& item) {
            return item.id == *state.selectedWindowID &&
                   TargetSelection::of(item.goalID) == state.target;
        }));
    } else {
        EXPECT_EQ(state.selectedWindowID, std::nullopt);
    }
    if (const std::optional<GoalID> selected = state.target.goalID()) {
        const QList<Goal> visible = store().visibleGoals();
        EXPECT_TRUE(std::ranges::any_of(
            visible, [&selected](const Goal& each) { return each.id == *selected; }));
    }
}

void RandomOperations::checkAssignments()
{
    EXPECT_EQ(store().assignments(), m_assignments);
    for (const WindowItem& item : store().windows()) {
        const auto assigned = m_assignments.constFind(QString::number(item.id));
        const bool isAssigned = assigned != m_assignments.constEnd();
        EXPECT_EQ(item.goalID, isAssigned ? std::optional(*assigned) : std::nullopt);
    }
}

void RandomOperations::checkModel()
{
    const BoardModel::Contents expected = m_model.contents();
    const BoardModel::Contents actual = BoardModel::contentsOf(store());
    EXPECT_TRUE(actual.goals == expected.goals) << "other goals, or in another order";
    EXPECT_TRUE(actual.todos == expected.todos) << "other todos, or in another order";
    EXPECT_TRUE(actual.windows == expected.windows) << "windows are in other goals";
    EXPECT_EQ(store().canUndo(), m_model.canUndo());
    EXPECT_EQ(store().canRedo(), m_model.canRedo());
}

void RandomOperations::checkSavedState()
{
    EXPECT_EQ(settings.document(goalsKey), *encodeGoals(store().goals()));
    EXPECT_EQ(settings.document(unassignedTodosKey), *encodeTodos(store().unassignedTodos()));
    if (!m_assignments.isEmpty()) {
        EXPECT_EQ(settings.document(assignmentsKey), encodeAssignments(store().assignments()));
    }
}

namespace {

/// What every run of the tests does; KELPA_RANDOM_OPERATIONS names another number.
int operationCount()
{
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("KELPA_RANDOM_OPERATIONS", &isGiven);
    return isGiven ? given : 40'000;
}

/// Goals in order and loose todos, with the orders that a start gives them.
std::pair<QList<Goal>, QList<TodoItem>> normalized(QList<Goal> goals, QList<TodoItem> loose)
{
    const TodoPositions positions = normalizedPositions(goals, loose);
    applyPositions(goals, positions);
    applyPositions(loose, positions);
    return {goals, loose};
}

TEST_F(RandomOperations, Keep_every_promise_of_the_board)
{
    std::cout << seedText(m_seed) << '\n';
    std::string last = "start";
    const int count = operationCount();
    for (int i = 0; i < count && !HasFailure(); ++i) {
        const QList<Goal> goals = store().goals();
        const QList<TodoItem> unassigned = store().unassignedTodos();
        const BoardNavigationState navigation = store().boardNavigation();
        const QList<WindowItem> windows = store().windows();
        m_before = HistoryModel::present(store());
        takeSignals();

        last = operate();
        if (last != "undo" && last != "redo")
            m_history.record(m_before, HistoryModel::present(store()));

        const testing::ScopedTrace trace(__FILE__, __LINE__,
                                         "operation " + std::to_string(i) + " (" + last + "), " +
                                             seedText(m_seed));
        checkTodos();
        checkGoals();
        checkNavigation();
        checkAssignments();
        checkSavedState();
        checkModel();
        const QMap<QString, int> fired = takeSignals();
        EXPECT_LE(store().goals() != goals, fired.contains(QStringLiteral("goals")));
        EXPECT_EQ(store().unassignedTodos() != unassigned,
                  fired.contains(QStringLiteral("unassignedTodos")));
        EXPECT_EQ(store().boardNavigation() != navigation,
                  fired.contains(QStringLiteral("boardNavigation")));
        EXPECT_EQ(store().windows() != windows, fired.contains(QStringLiteral("windows")));

        EXPECT_EQ(store().canUndo(), m_history.canUndo());
        EXPECT_EQ(store().canRedo(), m_history.canRedo());

        if (i % 1000 == 999)
            checkHistory();
        if (i % 5000 == 4999) {
            const QList<Goal> before = store().goals();
            const QList<TodoItem> looseBefore = store().unassignedTodos();
            const bool wasSorting = store().isAutoSortingGoals();
            restartedStore();
            m_history.clear();
            m_model.restart();
            EXPECT_EQ(store().isAutoSortingGoals(), wasSorting);
            EXPECT_EQ(normalized(store().goals(), store().unassignedTodos()),
                      normalized(before, looseBefore));
            store().refresh();
            checkTodos();
            checkModel();
        }
    }
}

} // namespace
} // namespace kelpa::test
