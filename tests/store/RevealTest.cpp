// What is revealed on the board: it is selected and shown, whatever hid it.

#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

class Reveal : public StoreFixture
{
protected:
    TargetSelection target() { return store().boardNavigation().target; }
};

TEST_F(Reveal, A_todo_is_shown_in_its_goal_each_time)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    const GoalID b = makeGoal(QStringLiteral("B"));
    const TodoID first = makeTodo(a);
    const TodoID second = makeTodo(b);
    store().reveal(second);
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::on(TargetSelection::goal(b)));
    EXPECT_EQ(store().restoredTodoID(), second);
    EXPECT_EQ(store().restorationID(), 1);
    store().reveal(second);
    EXPECT_EQ(store().restorationID(), 2) << "the board may have been scrolled since";
    store().reveal(first);
    EXPECT_EQ(target(), TargetSelection::goal(a));
    EXPECT_EQ(store().restoredTodoID(), first);
    const TodoID loose = makeTodo(std::nullopt);
    store().reveal(loose);
    EXPECT_EQ(target(), TargetSelection::unassigned());
    EXPECT_EQ(store().restoredTodoID(), loose);
}

TEST_F(Reveal, A_goal_is_shown_without_a_todo_also_where_it_is_selected_already)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    store().reveal(makeTodo(a));
    store().reveal(a);
    EXPECT_EQ(target(), TargetSelection::goal(a));
    EXPECT_EQ(store().restoredTodoID(), std::nullopt);
    EXPECT_EQ(store().restorationID(), 2);
}

TEST_F(Reveal, What_is_in_a_goal_that_is_hidden_ends_the_hiding)
{
    const GoalID done = makeGoal(QStringLiteral("Done"));
    const TodoID todo = makeTodo(done);
    desktop.addWindow(1, 100, QStringLiteral("Letter"));
    store().refresh();
    store().assign(1, done);
    store().toggleTodo(todo, done);
    store().toggleTodo(todo, done);
    const auto hide = [this] {
        store().setHidingGoalsWithoutOpenTodos(true);
        ASSERT_TRUE(store().visibleGoals().isEmpty());
    };
    hide();
    store().reveal(done);
    EXPECT_FALSE(store().isHidingGoalsWithoutOpenTodos());
    EXPECT_EQ(target(), TargetSelection::goal(done));
    hide();
    store().reveal(todo);
    EXPECT_FALSE(store().isHidingGoalsWithoutOpenTodos());
    hide();
    store().reveal(WindowID(1));
    EXPECT_FALSE(store().isHidingGoalsWithoutOpenTodos());
    EXPECT_EQ(store().boardNavigation().selectedWindowID, std::optional<WindowID>(1));
    EXPECT_EQ(target(), TargetSelection::goal(done));
}

TEST_F(Reveal, What_is_shown_anyhow_leaves_hiding_and_search_alone)
{
    const GoalID open = makeGoal(QStringLiteral("Open"));
    const TodoID todo = makeTodo(open);
    desktop.addWindow(1, 100, QStringLiteral("Letter"));
    desktop.addWindow(2, 100, QStringLiteral("Report"));
    store().refresh();
    store().setHidingGoalsWithoutOpenTodos(true);
    store().setSearchText(QStringLiteral("let"));
    store().reveal(todo);
    store().reveal(WindowID(1));
    EXPECT_TRUE(store().isHidingGoalsWithoutOpenTodos());
    EXPECT_EQ(store().searchText(), QStringLiteral("let"));
    store().reveal(WindowID(2));
    EXPECT_EQ(store().searchText(), QString());
    EXPECT_EQ(store().boardNavigation().selectedWindowID, std::optional<WindowID>(2));
}

TEST_F(Reveal, What_is_gone_changes_nothing)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    store().activateTarget(TargetSelection::goal(a), EnterWindowLayer::no);
    store().reveal(GoalID::create());
    store().reveal(TodoID::create());
    store().reveal(WindowID(9));
    EXPECT_EQ(target(), TargetSelection::goal(a));
    EXPECT_EQ(store().restorationID(), 0);
    EXPECT_FALSE(store().canRedo());
}

} // namespace
} // namespace kelpa::test
