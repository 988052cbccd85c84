// Long random sequences of operations; the invariants are checked after each one.

#include "store/board/BoardPersistence.h"
#include "store/board/HistoryModel.h"
#include "store/board/TodoOrder.h"
#include "support/StoreFixture.h"

#include <QByteArray>

#include <iostream>
#include <random>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using Enter = EnterWindowLayer;

constexpr int operationCount = 100'000;

/// KELPA_TEST_SEED repeats a run; otherwise every run takes another way.
std::uint64_t chosenSeed()
{
    bool isNumber = false;
    const std::uint64_t given = qgetenv("KELPA_TEST_SEED").toULongLong(&isNumber);
    return isNumber ? given : std::random_device()();
}

class RandomOperations : public StoreFixture
{
protected:
    RandomOperations() : m_seed(chosenSeed()), m_random(m_seed)
    {
        std::cout << "KELPA_TEST_SEED=" << m_seed << '\n';
    }

    int below(int bound) { return std::uniform_int_distribution(0, bound - 1)(m_random); }
    bool chance(int oneIn) { return below(oneIn) == 0; }

    /// Mostly a goal of the board, now and then one that it does not know.
    GoalID anyGoal()
    {
        const QList<Goal>& goals = store().goals();
        if (goals.isEmpty() || chance(20))
            return GoalID::create();
        return goals[below(static_cast<int>(goals.size()))].id;
    }

    std::optional<GoalID> anyList() { return chance(3) ? std::nullopt : std::optional(anyGoal()); }

    struct Place
    {
        TodoID id;
        std::optional<GoalID> list;
    };

    Place anyTodo()
    {
        QList<Place> places;
        for (const Goal& each : store().goals()) {
            for (const TodoItem& item : each.todos)
                places.append({item.id, each.id});
        }
        for (const TodoItem& item : store().unassignedTodos())
            places.append({item.id, std::nullopt});
        if (places.isEmpty() || chance(20))
            return {TodoID::create(), anyList()};
        return places[below(static_cast<int>(places.size()))];
    }

    QString anyTitle()
    {
        static const QStringList titles{QStringLiteral("a"),        QStringLiteral("  b "),
                                        QStringLiteral(" "),        QStringLiteral("日本語"),
                                        QStringLiteral("👍🏽"), QStringLiteral("\"\\\n")};
        return titles[below(static_cast<int>(titles.size()))];
    }

    WindowID anyWindow() { return static_cast<WindowID>(1 + below(14)); }

    void changeDesktop()
    {
        const WindowID id = anyWindow();
        if (desktop.onScreen.contains(id))
            desktop.removeWindow(id);
        else
            desktop.addWindow(id, 100 + below(4), anyTitle());
    }

    /// One operation, chosen by chance; gives its name.
    std::string operate();

    /// The board is this one, and the test knows it so.
    void expectBoard(const BoardVersion& board);
    /// Back as far as it goes, and forth again.
    void checkHistory();
    void checkMovedBefore(TodoID moved, TodoID target);
    void checkTodos();
    void checkGoals();
    void checkNavigation();
    void checkAssignments();
    void checkSavedState();

    /// The expected contents, which the test tracks beside the store.
    QSet<TodoID> m_todos;
    Assignments m_assignments;
    HistoryModel m_history;
    BoardVersion m_before;

    const std::uint64_t m_seed;
    std::mt19937_64 m_random;
};

std::string RandomOperations::operate()
{
    switch (below(25)) {
    case 0:
        if (store().goals().size() < 12)
            store().createGoal(anyTitle());
        return "createGoal";
    case 1:
        store().renameGoal(anyGoal(), anyTitle());
        return "renameGoal";
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
        return "deleteGoal";
    }
    case 3:
        store().moveGoal(anyGoal(), anyGoal());
        return "moveGoal";
    case 4:
        store().setGoalPriority(static_cast<GoalPriority>(below(4)), anyGoal());
        return "setGoalPriority";
    case 5:
        store().setAutoSortingGoals(chance(2));
        return "setAutoSortingGoals";
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
        store().addTodo(anyTitle(), list);
        if (exists && todos(list).size() > before)
            m_todos.insert(todos(list).last().id);
        return "addTodo";
    }
    case 9: {
        const Place place = anyTodo();
        store().updateTodo(place.id, anyTitle(), place.list);
        return "updateTodo";
    }
    case 10:
    case 11: {
        const Place place = anyTodo();
        store().toggleTodo(place.id, place.list);
        return "toggleTodo";
    }
    case 12: {
        const Place place = anyTodo();
        m_todos.remove(place.id);
        store().deleteTodo(place.id, place.list);
        return "deleteTodo";
    }
    case 13: {
        const Place place = anyTodo();
        store().moveTodo(place.id, place.list, anyList());
        return "moveTodo to a list";
    }
    case 14: {
        const TodoID moved = anyTodo().id;
        const TodoID target = anyTodo().id;
        store().moveTodo(moved, target);
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
        const Enter enter = chance(2) ? Enter::yes : Enter::no;
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
        expectBoard(m_history.undo(m_before));
        return "undo";
    case 23:
        store().redo();
        expectBoard(m_history.redo(m_before));
        return "redo";
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
        expectBoard(expected);
        checkSavedState();
    }
    EXPECT_FALSE(store().canUndo());
    for (; steps > 0 && !HasFailure(); --steps) {
        const BoardVersion expected = m_history.redo(HistoryModel::present(store()));
        store().redo();
        expectBoard(expected);
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

void RandomOperations::checkSavedState()
{
    EXPECT_EQ(settings.document(goalsKey), *encodeGoals(store().goals()));
    EXPECT_EQ(settings.document(unassignedTodosKey), *encodeTodos(store().unassignedTodos()));
    if (!m_assignments.isEmpty()) {
        EXPECT_EQ(settings.document(assignmentsKey), encodeAssignments(store().assignments()));
    }
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
    std::string last = "start";
    for (int i = 0; i < operationCount && !HasFailure(); ++i) {
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
                                         "operation " + std::to_string(i) + " (" + last +
                                             "), KELPA_TEST_SEED=" + std::to_string(m_seed));
        checkTodos();
        checkGoals();
        checkNavigation();
        checkAssignments();
        checkSavedState();
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
            EXPECT_EQ(store().isAutoSortingGoals(), wasSorting);
            EXPECT_EQ(normalized(store().goals(), store().unassignedTodos()),
                      normalized(before, looseBefore));
            store().refresh();
            checkTodos();
        }
    }
}

} // namespace
} // namespace kelpa::test
