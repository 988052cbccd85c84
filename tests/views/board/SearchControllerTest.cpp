// The search of the board as QML sees it.
#include "views/board/BoardController.h"

#include "support/TwoGoalsFixture.h"

#include <QSignalSpy>

namespace kelpa::test {
namespace {

using State = BoardNavigationState;

class SearchOfTheBoard : public TwoGoalsFixture
{
protected:
    void search(const char* text) { controller.search()->setText(QString::fromLatin1(text)); }
    QStringList raised()
    {
        scheduler.advance(std::chrono::milliseconds(0));
        return desktop.calls.filter(QStringLiteral("raise "));
    }

    BoardController controller{store()};
};

TEST_F(SearchOfTheBoard, The_first_match_is_a_window_else_a_goal_else_a_todo)
{
    desktop.addAccessibleWindow(8, 100, QStringLiteral("Green paper"));
    store().refresh();
    store().assign(8, second);
    store().renameGoal(first, QStringLiteral("Green goal"));
    store().addTodo(QStringLiteral("Green house"), second);
    store().clearTargetSelection();
    const QSignalSpy scrolls(&controller, &BoardController::selectionRequested);

    search("green");
    EXPECT_EQ(controller.search()->windowCount(), 1);
    EXPECT_EQ(controller.search()->goalCount(), 1);
    EXPECT_EQ(controller.search()->todoCount(), 1);
    EXPECT_TRUE(controller.search()->selectFirst());
    EXPECT_EQ(store().boardNavigation(), State::inside(TargetSelection::goal(second), 8));
    search("green g");
    EXPECT_TRUE(controller.search()->selectFirst());
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::goal(first)));
    search("green h");
    EXPECT_TRUE(controller.search()->selectFirst());
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::goal(second)));
    EXPECT_EQ(
        controller.todos()->title(controller.todos()->highlightedTodoID(), columnText(second)),
        QStringLiteral("Green house"));
    search("green z");
    EXPECT_FALSE(controller.search()->selectFirst());
    EXPECT_EQ(scrolls.count(), 2);
}

TEST_F(SearchOfTheBoard, The_first_match_is_found_without_being_selected)
{
    desktop.addAccessibleWindow(8, 100, QStringLiteral("Paper"));
    desktop.addAccessibleWindow(9, 100, QStringLiteral("Green paper"));
    store().refresh();
    store().assign(8, second);
    store().assign(9, second);
    store().renameGoal(first, QStringLiteral("Green goal"));
    store().addTodo(QStringLiteral("Green house"), second);
    store().clearTargetSelection();
    const auto match = [this](const char* text) {
        search(text);
        return controller.search()->firstMatch();
    };
    const QVariantMap window = match("paper");
    EXPECT_EQ(window.value(QStringLiteral("columnID")), columnText(second));
    EXPECT_EQ(window.value(QStringLiteral("window")), 0);
    const QVariantMap goal = match("green g");
    EXPECT_EQ(goal.value(QStringLiteral("columnID")), columnText(first));
    EXPECT_EQ(goal.value(QStringLiteral("window")), -1);
    EXPECT_EQ(goal.value(QStringLiteral("todoID")), QString());
    const QVariantMap todo = match("green h");
    EXPECT_EQ(todo.value(QStringLiteral("columnID")), columnText(second));
    EXPECT_EQ(controller.todos()->title(todo.value(QStringLiteral("todoID")).toString(),
                                        columnText(second)),
              QStringLiteral("Green house"));
    EXPECT_EQ(match("green z"), QVariantMap());
    EXPECT_EQ(store().boardNavigation(), State());
}

TEST_F(SearchOfTheBoard, Where_all_that_matches_is_hidden_it_shows)
{
    desktop.addAccessibleWindow(8, 100, QStringLiteral("Paper"));
    store().refresh();
    store().assign(8, second);
    store().setHidingGoalsWithoutOpenTodos(true);
    search("paper");
    EXPECT_EQ(controller.search()->hiddenCount(), 1);
    EXPECT_EQ(controller.search()->hiddenGoalCount(), 2);
    EXPECT_EQ(controller.search()->hiddenGoalWithWindowsCount(), 1);
    EXPECT_TRUE(controller.search()->selectFirst());
    EXPECT_EQ(store().boardNavigation(), State::inside(TargetSelection::goal(second), 8));
    EXPECT_EQ(controller.search()->hiddenCount(), 0);
    EXPECT_EQ(controller.search()->hiddenGoalCount(), 0);
}

TEST_F(SearchOfTheBoard, Opening_brings_a_window_forward_and_a_goal_only_into_view)
{
    desktop.addAccessibleWindow(8, 101, QStringLiteral("Paper"));
    store().refresh();
    store().renameGoal(first, QStringLiteral("Forest"));
    search("forest");
    EXPECT_TRUE(controller.search()->openFirst());
    EXPECT_EQ(raised(), QStringList());
    EXPECT_EQ(controller.search()->text(), QStringLiteral("forest"));
    search("paper");
    EXPECT_TRUE(controller.search()->openFirst());
    EXPECT_EQ(raised(), QStringList{QStringLiteral("raise Paper")});
    EXPECT_EQ(controller.search()->text(), QString());
    search("nobody");
    EXPECT_FALSE(controller.search()->openFirst());
}

TEST_F(SearchOfTheBoard, One_with_which_the_board_comes_forward_is_old_until_it_changes)
{
    const QSignalSpy changes(controller.search(), &SearchController::isOldChanged);
    controller.search()->noteForward();
    EXPECT_FALSE(controller.search()->isOld());
    search("rep");
    EXPECT_FALSE(controller.search()->isOld());
    controller.search()->noteForward();
    EXPECT_TRUE(controller.search()->isOld());
    search("repo");
    EXPECT_FALSE(controller.search()->isOld());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(SearchOfTheBoard, Columns_and_todos_that_do_not_match_step_back)
{
    store().renameGoal(first, QStringLiteral("Green goal"));
    store().addTodo(QStringLiteral("Green house"), second);
    store().addTodo(QStringLiteral("Read"), second);
    search("green");
    const QList<ColumnRow>& columns = controller.columns()->rows();
    ASSERT_EQ(columns.size(), 3);
    const auto columnOf = [&columns](GoalID goalID) {
        return *std::ranges::find(columns, std::optional(goalID), &ColumnRow::goalID);
    };
    EXPECT_TRUE(columns.front().isReceding);
    EXPECT_TRUE(columnOf(first).isTitleFound);
    EXPECT_FALSE(columnOf(first).isReceding);
    EXPECT_FALSE(columnOf(second).isTitleFound);
    EXPECT_FALSE(columnOf(second).isReceding);
    const QList<UnifiedTodoEntry> entries = controller.todos()->entries(columnText(second));
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries.at(0).match, SearchMatch::found);
    EXPECT_EQ(entries.at(1).match, SearchMatch::missed);

    search("");
    EXPECT_FALSE(columns.front().isReceding);
    EXPECT_EQ(controller.todos()->entries(columnText(second)).at(1).match,
              SearchMatch::notSearched);
}

} // namespace
} // namespace kelpa::test
