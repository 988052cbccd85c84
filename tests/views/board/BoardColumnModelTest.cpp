// The columns of the board follow the store.
#include "views/board/BoardColumnModel.h"

#include "support/StoreFixture.h"
#include "views/goals/MoveTargetModel.h"
#include "views/models/ModelLog.h"

namespace kelpa::test {
namespace {

class BoardColumns : public StoreFixture
{
protected:
    BoardColumns()
    {
        store().setLanguage(AppLanguage::english);
        store().setAutoSortingGoals(false);
    }
};

TEST_F(BoardColumns, The_unassigned_windows_come_first_and_then_the_goals_in_board_order)
{
    makeGoal(QStringLiteral("First"));
    makeGoal(QStringLiteral("Second"));
    const BoardColumnModel model(store());
    QStringList expected{QStringLiteral("Unsorted")};
    expected.append(goalTitles());
    EXPECT_EQ(texts(model, "title"), expected);
    EXPECT_TRUE(value(model, 0, "isUnassigned").toBool());
    EXPECT_FALSE(value(model, 1, "isUnassigned").toBool());
}

TEST_F(BoardColumns, Many_unassigned_windows_are_folded_and_named_by_their_applications)
{
    for (WindowID id = 1; id <= 10; ++id) {
        WindowListEntry& entry =
            desktop.addAccessibleWindow(id, 100, QStringLiteral("W%1").arg(id));
        entry.bounds->x = 100.0 * id;
        desktop.accessibilityWindows[100]->back().position->x = entry.bounds->x;
        entry.ownerName = id % 3 == 0 ? QStringLiteral("Editor") : QStringLiteral("Terminal");
    }
    store().refresh();
    const BoardColumnModel model(store());
    EXPECT_EQ(model.windows(std::nullopt)->rowCount(), 4);
    EXPECT_EQ(value(model, 0, "windowCount").toInt(), 10);
    EXPECT_EQ(value(model, 0, "foldedCount").toInt(), 6);
    EXPECT_EQ(value(model, 0, "foldedApplications").toString(),
              QStringLiteral("Terminal 4   Editor 2"));
    EXPECT_FALSE(value(model, 0, "isUnfolded").toBool());
    store().setUnsortedFold(UnsortedFold::unfolded);
    EXPECT_EQ(model.windows(std::nullopt)->rowCount(), 10);
    EXPECT_EQ(value(model, 0, "foldedCount").toInt(), 0);
    EXPECT_TRUE(value(model, 0, "isUnfolded").toBool());
}

TEST_F(BoardColumns, A_new_goal_is_one_inserted_column)
{
    BoardColumnModel model(store());
    ModelLog log(model);
    makeGoal(QStringLiteral("First"));
    const QStringList steps = log.take();
    EXPECT_EQ(steps.filter(QStringLiteral("insert")), QStringList{QStringLiteral("insert 1-1")});
    EXPECT_EQ(steps.filter(QStringLiteral("remove")), QStringList());
}

TEST_F(BoardColumns, A_goal_that_is_moved_is_one_moved_column)
{
    makeGoal(QStringLiteral("A"));
    makeGoal(QStringLiteral("B"));
    makeGoal(QStringLiteral("C"));
    const QList<Goal> goals = store().goals();
    BoardColumnModel model(store());
    ModelLog log(model);
    store().moveGoal(goals.at(2).id, goals.at(0).id);
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("move 3 before 1")});
}

TEST_F(BoardColumns, A_renamed_goal_changes_its_column_alone)
{
    const GoalID id = makeGoal(QStringLiteral("Old"));
    BoardColumnModel model(store());
    ModelLog log(model);
    store().renameGoal(id, QStringLiteral("New"));
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("change 1-1")});
    EXPECT_EQ(value(model, 1, "title").toString(), QStringLiteral("New"));
}

TEST_F(BoardColumns, A_deleted_goal_is_one_removed_column_and_its_windows_are_unassigned_again)
{
    desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
    store().refresh();
    const GoalID id = makeGoal();
    store().assign(7, id);
    BoardColumnModel model(store());
    ASSERT_EQ(model.windows(id)->rowCount(), 1);
    ModelLog log(model);
    store().deleteGoal(id);
    EXPECT_EQ(log.take().filter(QStringLiteral("remove")),
              QStringList{QStringLiteral("remove 1-1")});
    EXPECT_EQ(model.windows(id), nullptr);
    EXPECT_EQ(texts(*model.windows(std::nullopt), "title"), QStringList{QStringLiteral("Report")});
}

TEST_F(BoardColumns, Assigning_a_window_takes_its_card_from_one_column_to_the_other)
{
    desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
    desktop.addAccessibleWindow(8, 100, QStringLiteral("Letter"));
    store().refresh();
    const GoalID id = makeGoal();
    BoardColumnModel model(store());
    ModelLog unassigned(*model.windows(std::nullopt));
    ModelLog ofGoal(*model.windows(id));
    store().assign(7, id);
    EXPECT_EQ(unassigned.take().size(), 1);
    EXPECT_EQ(ofGoal.take(), QStringList{QStringLiteral("insert 0-0")});
    EXPECT_EQ(texts(*model.windows(std::nullopt), "title"), QStringList{QStringLiteral("Letter")});
    EXPECT_EQ(value(model, 0, "windowCount").toInt(), 1);
    EXPECT_EQ(value(model, 1, "windowCount").toInt(), 1);
}

TEST_F(BoardColumns, Searching_narrows_the_cards)
{
    desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
    desktop.addAccessibleWindow(8, 100, QStringLiteral("Letter"));
    store().refresh();
    const BoardColumnModel model(store());
    store().setSearchText(QStringLiteral("lett"));
    EXPECT_EQ(texts(*model.windows(std::nullopt), "title"), QStringList{QStringLiteral("Letter")});
}

TEST_F(BoardColumns, A_column_tells_windows_that_the_search_hides_from_none_at_all)
{
    desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
    store().refresh();
    const GoalID full = makeGoal();
    makeGoal();
    store().assign(7, full);
    const BoardColumnModel model(store());
    const auto told = [&model] {
        QList<bool> result;
        for (int row = 0; row < 3; ++row)
            result.append(value(model, row, "isSearchedEmpty").toBool());
        return result;
    };
    EXPECT_EQ(told(), QList<bool>({false, false, false}));
    store().setSearchText(QStringLiteral("letter"));
    EXPECT_EQ(told(), QList<bool>({false, true, false}));
    store().setSearchText(QStringLiteral("report"));
    EXPECT_EQ(told(), QList<bool>({false, false, false}));
}

TEST_F(BoardColumns, The_language_renames_the_unassigned_column)
{
    BoardColumnModel model(store());
    store().setLanguage(AppLanguage::german);
    EXPECT_EQ(value(model, 0, "title").toString(), QStringLiteral("Unsortiert"));
}

TEST_F(BoardColumns, The_selected_column_and_window_say_so)
{
    desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
    store().refresh();
    const GoalID id = makeGoal();
    store().assign(7, id);
    const BoardColumnModel model(store());
    store().activateTarget(TargetSelection::goal(id), EnterWindowLayer::yes);
    EXPECT_TRUE(value(model, 1, "isSelected").toBool());
    EXPECT_FALSE(value(model, 0, "isSelected").toBool());
    EXPECT_TRUE(value(*model.windows(id), 0, "isSelected").toBool());
    EXPECT_TRUE(value(model, 1, "isEntered").toBool());
    EXPECT_FALSE(value(model, 0, "isEntered").toBool());
    store().activateTarget(TargetSelection::goal(id), EnterWindowLayer::no);
    EXPECT_TRUE(value(model, 1, "isSelected").toBool());
    EXPECT_FALSE(value(model, 1, "isEntered").toBool());
    EXPECT_FALSE(value(*model.windows(id), 0, "isSelected").toBool());
    store().clearTargetSelection();
    EXPECT_FALSE(value(model, 1, "isSelected").toBool());
    EXPECT_FALSE(value(*model.windows(id), 0, "isSelected").toBool());
}

TEST_F(BoardColumns, Hidden_goals_have_no_column)
{
    makeGoal(QStringLiteral("Without todos"));
    const GoalID open = makeGoal(QStringLiteral("With a todo"));
    makeTodo(open);
    const BoardColumnModel model(store());
    store().setHidingGoalsWithoutOpenTodos(true);
    EXPECT_EQ(texts(model, "title"),
              (QStringList{QStringLiteral("Unsorted"), QStringLiteral("With a todo")}));
}

TEST_F(BoardColumns, A_new_picture_changes_the_card_of_its_window_alone)
{
    for (const WindowID id : {3U, 2U, 1U}) {
        desktop.addWindow(id, 100, QString::number(id));
        desktop.captureSizes.insert(id, {640, 480});
    }
    store().refresh();
    const BoardColumnModel model(store());
    WindowListModel* const cards = model.windows(std::nullopt);
    const auto capture = [&] {
        store().refreshPreviews(scheduler.now());
        scheduler.advance(std::chrono::milliseconds(0));
    };
    for (int i = 0; i < 3; ++i)
        capture();
    ModelLog log(*cards);
    const QVariant before = value(*cards, 1, "previewRevision");
    desktop.unchangedWindows = {3};
    capture();
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("change 0-0")});
    capture();
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("change 1-1")});
    EXPECT_NE(value(*cards, 1, "previewRevision"), before);
    capture();
    EXPECT_EQ(log.take(), QStringList());
}

TEST_F(BoardColumns, A_card_says_why_it_has_no_picture)
{
    desktop.addWindow(7, 100, QStringLiteral("Report"));
    store().refresh();
    const BoardColumnModel model(store());
    WindowListModel* const cards = model.windows(std::nullopt);
    EXPECT_EQ(value(*cards, 0, "previewRevision").toLongLong(), 0);
    EXPECT_EQ(value(*cards, 0, "previewMessage").toString(), QString());
    store().refreshPreviews(scheduler.now());
    scheduler.advance(std::chrono::milliseconds(0));
    EXPECT_EQ(value(*cards, 0, "previewRevision").toLongLong(), 0);
    EXPECT_EQ(value(*cards, 0, "previewMessage").toString(),
              QStringLiteral("This window cannot be captured yet"));
    store().setLanguage(AppLanguage::german);
    EXPECT_EQ(value(*cards, 0, "previewMessage").toString(),
              QStringLiteral("Dieses Fenster kann noch nicht aufgenommen werden"));
    desktop.captureSizes.insert(7, {640, 480});
    store().refreshPreviews(scheduler.now());
    scheduler.advance(std::chrono::milliseconds(0));
    EXPECT_EQ(value(*cards, 0, "previewMessage").toString(), QString());
    EXPECT_NE(value(*cards, 0, "previewRevision").toLongLong(), 0);
}

TEST_F(BoardColumns, Windows_can_be_moved_to_every_goal_and_last_to_the_unassigned_column)
{
    const GoalID hidden = makeGoal(QStringLiteral("Hidden"));
    store().setHidingGoalsWithoutOpenTodos(true);
    const MoveTargetModel model(store());
    EXPECT_EQ(texts(model, "title"),
              (QStringList{QStringLiteral("Hidden"), QStringLiteral("Unsorted")}));
    EXPECT_EQ(texts(model, "columnID"),
              (QStringList{hidden.text(), QStringLiteral("kelpa-unassigned")}));
}

TEST(ColumnText, Names_a_column_and_is_read_back)
{
    const GoalID id = GoalID::create();
    EXPECT_EQ(columnFromText(columnText(id)), ColumnID{id});
    EXPECT_EQ(columnFromText(columnText(std::nullopt)), ColumnID{std::nullopt});
    EXPECT_EQ(columnFromText(u""), std::nullopt);
    EXPECT_EQ(columnFromText(u"unassigned"), std::nullopt);
}

} // namespace
} // namespace kelpa::test
