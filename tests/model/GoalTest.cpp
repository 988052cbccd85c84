#include "model/Goal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelpa {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Row
{
    const char* title;
    TodoStatus status;
    std::optional<double> completedAt;
    std::int64_t order;
};

constexpr auto todo = TodoStatus::todo;
constexpr auto ing = TodoStatus::ing;
constexpr auto completed = TodoStatus::completed;

Goal goalWith(const std::vector<Row>& rows)
{
    Goal goal;
    for (const Row& row : rows) {
        TodoItem item{TodoID::create(), QString::fromLatin1(row.title), row.status, {}, row.order};
        if (row.completedAt)
            item.completedAt = Date{*row.completedAt};
        goal.todos.append(item);
    }
    return goal;
}

std::vector<std::string> visibleTitles(const Goal& goal)
{
    std::vector<std::string> titles;
    for (const TodoItem& item : goal.visibleTodos())
        titles.push_back(item.title.toStdString());
    return titles;
}

TEST(Goal, A_new_goal_is_blue_p2_and_without_todos)
{
    const Goal goal;
    EXPECT_EQ(goal.accent, GoalAccent::blue);
    EXPECT_EQ(goal.priority, GoalPriority::p2);
    EXPECT_THAT(goal.todos, IsEmpty());
}

TEST(Goal, A_goal_without_todos_has_no_open_one_and_shows_none)
{
    EXPECT_FALSE(Goal().hasOpenTodo());
    EXPECT_EQ(Goal().openTodoCount(), 0);
    EXPECT_THAT(Goal().visibleTodos(), IsEmpty());
}

TEST(Goal, A_todo_in_progress_counts_as_open)
{
    const Goal goal = goalWith({{"a", ing, {}, 0}});
    EXPECT_TRUE(goal.hasOpenTodo());
    EXPECT_EQ(goal.openTodoCount(), 1);
    EXPECT_THAT(visibleTitles(goal), ElementsAre("a"));
}

TEST(Goal, Open_todos_are_counted_without_the_completed_ones)
{
    const Goal goal = goalWith({{"a", ing, {}, 0}, {"b", completed, 1.0, 1}, {"c", todo, {}, 2}});
    EXPECT_EQ(goal.openTodoCount(), 2);
}

TEST(Goal, A_goal_whose_todos_are_all_completed_shows_none)
{
    const Goal goal = goalWith({{"a", completed, 1.0, 0}, {"b", completed, 2.0, 1}});
    EXPECT_FALSE(goal.hasOpenTodo());
    EXPECT_THAT(goal.visibleTodos(), IsEmpty());
}

TEST(Goal, One_open_and_three_completed_todos_show_the_open_and_the_last_completed_one)
{
    const Goal goal = goalWith({{"first", completed, 10.0, 0},
                                {"open", todo, {}, 1},
                                {"last", completed, 30.0, 2},
                                {"second", completed, 20.0, 3}});
    EXPECT_THAT(visibleTitles(goal), ElementsAre("open", "last"));
}

TEST(Goal, Of_two_completed_at_the_same_time_the_earlier_in_stored_order_is_shown)
{
    const Goal goal = goalWith(
        {{"earlier", completed, 30.0, 5}, {"later", completed, 30.0, 2}, {"open", todo, {}, 9}});
    EXPECT_THAT(visibleTitles(goal), ElementsAre("earlier", "open"));
}

TEST(Goal, A_completed_todo_without_time_is_shown_only_when_no_other_has_one)
{
    EXPECT_THAT(visibleTitles(goalWith({{"timeless", completed, {}, 0},
                                        {"timed", completed, -1'000'000.0, 1},
                                        {"open", todo, {}, 2}})),
                ElementsAre("timed", "open"));
    EXPECT_THAT(visibleTitles(goalWith({{"timeless", completed, {}, 0},
                                        {"also timeless", completed, {}, 1},
                                        {"open", todo, {}, 2}})),
                ElementsAre("timeless", "open"));
}

TEST(Goal, Visible_todos_are_sorted_by_order_not_by_their_place)
{
    const Goal goal = goalWith(
        {{"c", todo, {}, 30}, {"b", completed, 1.0, 20}, {"a", ing, {}, -5}, {"d", todo, {}, 40}});
    EXPECT_THAT(visibleTitles(goal), ElementsAre("a", "b", "c", "d"));
}

TEST(Goal, Todos_of_equal_order_keep_their_stored_order)
{
    const Goal goal = goalWith({{"1", todo, {}, 7},
                                {"2", completed, 3.0, 7},
                                {"3", ing, {}, 7},
                                {"4", todo, {}, 7},
                                {"0", todo, {}, 6}});
    EXPECT_THAT(visibleTitles(goal), ElementsAre("0", "1", "2", "3", "4"));
}

TEST(Goal, An_open_todo_is_shown_even_when_it_bears_a_completion_time)
{
    const Goal goal = goalWith({{"open", todo, 99.0, 0}, {"done", completed, 1.0, 1}});
    EXPECT_THAT(visibleTitles(goal), ElementsAre("open", "done"));
}

TEST(Goal, The_stored_todos_stay_as_they_are)
{
    const Goal goal = goalWith({{"b", todo, {}, 2}, {"a", todo, {}, 1}});
    EXPECT_THAT(visibleTitles(goal), ElementsAre("a", "b"));
    EXPECT_EQ(goal.todos.at(0).title, u"b");
}

} // namespace

} // namespace kelpa
