// The field for a todo over whatever is in front, without its window.
#include "views/entry/EntryController.h"

#include "support/TwoGoalsFixture.h"

#include <QSignalSpy>

namespace kelpa::test {
namespace {

class QuickEntry : public TwoGoalsFixture
{
protected:
    void SetUp() override
    {
        store().renameGoal(first, QStringLiteral("Kitchen"));
        store().renameGoal(second, QStringLiteral("Kitchen garden"));
    }
    void type(const char* text)
    {
        const QString typed = QString::fromUtf8(text);
        entry.edit(typed, static_cast<int>(typed.size()));
    }
    QStringList titles(std::optional<GoalID> in)
    {
        QStringList result;
        for (const TodoItem& todo : todos(in))
            result.append(todo.title);
        return result;
    }

    EntryController entry{store()};
};

TEST_F(QuickEntry, Return_adds_the_todo_in_one_step_and_closes)
{
    const QStringList before = titles(std::nullopt);
    const QSignalSpy added(&entry, &EntryController::added);
    entry.open(EntryOver::window);
    type("  ");
    entry.commit();
    EXPECT_TRUE(entry.isOpen());
    type(" Buy !high milk ");
    entry.commit();
    EXPECT_EQ(titles(std::nullopt), before + QStringList{QStringLiteral("Buy !high milk")});
    EXPECT_FALSE(entry.isOpen());
    EXPECT_EQ(entry.text(), QString());
    EXPECT_EQ(added.size(), 1);
    store().undo();
    EXPECT_EQ(titles(std::nullopt), before);
}

TEST_F(QuickEntry, The_goal_of_the_window_in_front_is_proposed_else_the_last_one)
{
    desktop.addAccessibleWindow(8, 100, QStringLiteral("Front"));
    store().refresh();
    store().assign(7, first);
    entry.open(EntryOver::window);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Unsorted"));
    EXPECT_EQ(entry.goalAccent(), QString());
    entry.close();
    store().assign(8, second);
    entry.open(EntryOver::window);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Kitchen garden"));
    EXPECT_EQ(entry.goalAccent(), rawValue(goal(second).accent));
    type("Sow");
    entry.commit();
    EXPECT_TRUE(titles(second).contains(QStringLiteral("Sow")));
    store().assign(8, std::nullopt);
    entry.open(EntryOver::window);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Kitchen garden"));
    store().deleteGoal(second);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Unsorted"));
}

TEST_F(QuickEntry, A_window_that_came_since_the_board_was_closed_is_in_front)
{
    desktop.addAccessibleWindow(8, 100, QStringLiteral("Front"));
    store().refresh();
    store().assign(8, second);
    store().stopObserving();
    entry.open(EntryOver::window);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Kitchen garden"));
}

TEST_F(QuickEntry, The_goal_that_is_proposed_stays_while_the_person_types)
{
    store().assign(7, first);
    entry.open(EntryOver::window);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Kitchen"));
    type("Sow");
    store().assign(7, second);
    store().refresh();
    type("Sow seeds");
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Kitchen"));
    store().deleteGoal(first);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Kitchen garden")) << "that goal is gone";
}

TEST_F(QuickEntry, Windows_that_come_late_correct_the_proposal_only_of_an_empty_field)
{
    store().assign(7, first);
    entry.open(EntryOver::window);
    store().assign(7, second);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Kitchen garden"));
    store().assign(7, std::nullopt);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Kitchen garden")) << "corrected once";
    entry.close();

    entry.open(EntryOver::window);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Unsorted"));
    type("S");
    store().assign(7, first);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Unsorted"));
}

TEST_F(QuickEntry, Over_the_board_the_selected_goal_is_proposed)
{
    store().activateTarget(TargetSelection::goal(first), EnterWindowLayer::no);
    entry.open(EntryOver::board);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Kitchen"));
}

TEST_F(QuickEntry, A_goal_that_is_taken_leaves_the_text)
{
    entry.open(EntryOver::window);
    type("Buy #kit");
    EXPECT_EQ(entry.count(), 2);
    EXPECT_EQ(entry.currentTitle(), QStringLiteral("Kitchen"));
    entry.moveCurrent(-1);
    EXPECT_EQ(entry.currentTitle(), QStringLiteral("Kitchen garden"));
    entry.commit();
    EXPECT_FALSE(entry.isCompleting());
    EXPECT_TRUE(entry.isOpen());
    EXPECT_EQ(entry.replacementCount(), 1);
    EXPECT_EQ(entry.text(), QStringLiteral("Buy "));
    EXPECT_EQ(entry.caret(), 4);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Kitchen garden"));
    type("Buy seeds");
    entry.commit();
    EXPECT_TRUE(titles(second).contains(QStringLiteral("Buy seeds")));
}

TEST_F(QuickEntry, A_title_that_is_written_out_needs_no_second_Return)
{
    entry.open(EntryOver::window);
    type("Buy milk #KITCHEN");
    EXPECT_TRUE(entry.isCompleting());
    entry.commit();
    EXPECT_TRUE(titles(first).contains(QStringLiteral("Buy milk")));
    EXPECT_FALSE(entry.isOpen());

    entry.open(EntryOver::window);
    type("#Kitchen garden");
    entry.commit();
    EXPECT_TRUE(entry.isOpen()) << "there is no todo yet";
    EXPECT_EQ(entry.text(), QString());
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Kitchen garden"));
}

TEST_F(QuickEntry, Escape_declines_the_goals_first_and_then_closes)
{
    entry.open(EntryOver::window);
    type("Call #kitchen");
    entry.cancel();
    EXPECT_FALSE(entry.isCompleting());
    EXPECT_TRUE(entry.isOpen());
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Unsorted"));
    type("Call #kitchen now");
    EXPECT_FALSE(entry.isCompleting());
    entry.cancel();
    EXPECT_FALSE(entry.isOpen());
    entry.open(EntryOver::window);
    EXPECT_EQ(entry.text(), QStringLiteral("Call #kitchen now"));
    entry.commit();
    EXPECT_TRUE(titles(std::nullopt).contains(QStringLiteral("Call #kitchen now")));
}

TEST_F(QuickEntry, A_draft_keeps_the_goal_that_was_taken_for_it)
{
    entry.open(EntryOver::window);
    type("Sow #garden");
    entry.take(0);
    entry.close();
    entry.open(EntryOver::window);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Kitchen garden"));
    type("");
    entry.close();
    entry.open(EntryOver::window);
    EXPECT_EQ(entry.goalTitle(), QStringLiteral("Unsorted"));
}

TEST_F(QuickEntry, What_matches_no_goal_stays_text)
{
    entry.open(EntryOver::window);
    type("Fix #12 in C#");
    EXPECT_FALSE(entry.isCompleting());
    entry.commit();
    EXPECT_TRUE(titles(std::nullopt).contains(QStringLiteral("Fix #12 in C#")));
}

TEST_F(QuickEntry, A_goal_that_is_gone_loses_no_todo)
{
    entry.open(EntryOver::window);
    type("Sow #garden");
    entry.take(0);
    type("Sow");
    store().deleteGoal(second);
    entry.commit();
    EXPECT_TRUE(titles(std::nullopt).contains(QStringLiteral("Sow")));
}

} // namespace
} // namespace kelpa::test
