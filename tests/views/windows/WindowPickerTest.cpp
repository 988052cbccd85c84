// The sheet that moves windows into a goal, over a store.
#include "views/windows/WindowPicker.h"

#include "support/StoreFixture.h"
#include "views/models/ColumnID.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace kelpa::test {
namespace {

class Picking : public StoreFixture
{
protected:
    Picking()
    {
        desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
        desktop.addAccessibleWindow(8, 101, QStringLiteral("Letter"));
        store().setLanguage(AppLanguage::english);
        store().setAutoSortingGoals(false);
        store().refresh();
        goalID = makeGoal(QStringLiteral("Proposal"));
        other = makeGoal(QStringLiteral("Taxes"));
        picker = std::make_unique<WindowPicker>(store());
        tester = std::make_unique<QAbstractItemModelTester>(
            picker->rows(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    }

    QStringList locations()
    {
        QStringList result;
        for (const PickerRow& row : picker->rows()->rows())
            result.append(row.presentation.title + QStringLiteral(": ") + row.location);
        return result;
    }

    void removeWindow(WindowID id, ProcessID process)
    {
        desktop.removeWindow(id);
        desktop.accessibilityWindows[process]->clear();
        store().refresh();
    }

    GoalID goalID;
    GoalID other;
    std::unique_ptr<WindowPicker> picker;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

TEST_F(Picking, It_opens_for_a_goal)
{
    picker->open(goalID.text());
    EXPECT_TRUE(picker->isOpen());
    EXPECT_EQ(picker->goalTitle(), QStringLiteral("Proposal"));
    EXPECT_EQ(picker->chosenCount(), 0);
    EXPECT_EQ(picker->rowCount(), 2);
}

TEST_F(Picking, It_does_not_open_for_what_is_no_goal)
{
    picker->open(columnText(std::nullopt));
    picker->open(GoalID::create().text());
    picker->open(QStringLiteral("nothing"));
    EXPECT_FALSE(picker->isOpen());
}

TEST_F(Picking, It_tells_where_each_window_is)
{
    store().assign(7, goalID);
    picker->open(goalID.text());
    EXPECT_EQ(locations(), (QStringList{QStringLiteral("Letter: Current: Unsorted"),
                                        QStringLiteral("Report: Already in this goal")}));
    store().assign(8, other);
    EXPECT_EQ(locations().front(), QStringLiteral("Letter: Current: Taxes"));
    store().setLanguage(AppLanguage::german);
    EXPECT_EQ(locations().front(), QStringLiteral("Letter: Aktuell: Taxes"));
}

TEST_F(Picking, It_lists_windows_that_the_search_of_the_board_leaves_out)
{
    store().setSearchText(QStringLiteral("Letter"));
    picker->open(goalID.text());
    EXPECT_EQ(picker->rowCount(), 2);
}

TEST_F(Picking, A_window_without_a_title_is_called_a_window)
{
    desktop.addAccessibleWindow(9, 102, {});
    store().refresh();
    picker->open(goalID.text());
    EXPECT_EQ(picker->rows()->rows().back().presentation.title, QStringLiteral("Window"));
}

TEST_F(Picking, Confirming_moves_the_chosen_windows_and_closes)
{
    store().assign(8, other);
    picker->open(goalID.text());
    picker->toggle(7);
    picker->toggle(8);
    EXPECT_EQ(picker->chosenCount(), 2);
    picker->confirm();
    EXPECT_FALSE(picker->isOpen());
    EXPECT_EQ(store().windows(goalID).size(), 2);
    EXPECT_TRUE(store().windows(other).isEmpty());
}

TEST_F(Picking, While_it_fades_away_it_shows_what_was_confirmed)
{
    picker->open(goalID.text());
    picker->toggle(8);
    const QStringList shown = locations();
    QSignalSpy selectionChanges(picker.get(), &WindowPicker::selectionChanged);
    picker->confirm();
    ASSERT_FALSE(picker->isOpen());
    EXPECT_EQ(locations(), shown);
    EXPECT_EQ(picker->chosenCount(), 1);
    EXPECT_EQ(selectionChanges.count(), 0);
}

TEST_F(Picking, Confirming_nothing_does_nothing)
{
    picker->open(goalID.text());
    picker->confirm();
    EXPECT_TRUE(picker->isOpen());
    EXPECT_FALSE(picker->isRefused());
}

TEST_F(Picking, A_window_that_is_in_the_goal_cannot_be_chosen)
{
    store().assign(7, goalID);
    picker->open(goalID.text());
    picker->toggle(7);
    EXPECT_EQ(picker->chosenCount(), 0);
}

TEST_F(Picking, When_every_chosen_window_has_gone_it_stays_open_and_says_so)
{
    picker->open(goalID.text());
    picker->toggle(7);
    QSignalSpy changes(picker.get(), &WindowPicker::selectionChanged);
    removeWindow(7, 100);
    EXPECT_EQ(picker->chosenCount(), 0);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_TRUE(picker->canConfirm()) << "or nobody would be told";
    picker->confirm();
    EXPECT_FALSE(picker->canConfirm());
    EXPECT_TRUE(picker->isOpen());
    EXPECT_TRUE(picker->isRefused());
    EXPECT_EQ(picker->chosenCount(), 0);
    picker->toggle(8);
    EXPECT_FALSE(picker->isRefused());
}

TEST_F(Picking, A_chosen_window_that_has_gone_drops_out)
{
    picker->open(goalID.text());
    picker->toggle(7);
    picker->toggle(8);
    removeWindow(7, 100);
    EXPECT_EQ(picker->chosenCount(), 1);
    picker->confirm();
    EXPECT_FALSE(picker->isOpen());
    EXPECT_EQ(store().windows(goalID).size(), 1);
}

TEST_F(Picking, A_window_keeps_being_chosen_while_the_search_hides_it)
{
    picker->open(goalID.text());
    picker->toggle(7);
    picker->setSearchText(QStringLiteral("letter"));
    EXPECT_EQ(picker->rowCount(), 1);
    EXPECT_EQ(picker->chosenCount(), 1);
    picker->confirm();
    EXPECT_EQ(store().windows(goalID).size(), 1);
}

TEST_F(Picking, Each_sheet_starts_anew)
{
    picker->open(goalID.text());
    picker->toggle(7);
    picker->setSearchText(QStringLiteral("rep"));
    picker->close();
    picker->open(goalID.text());
    EXPECT_EQ(picker->chosenCount(), 0);
    EXPECT_EQ(picker->searchText(), QString());
    EXPECT_EQ(picker->rowCount(), 2);
    EXPECT_FALSE(picker->rows()->rows().front().isChosen);
}

TEST_F(Picking, A_second_request_for_the_same_goal_is_the_same_sheet)
{
    picker->open(goalID.text());
    picker->toggle(7);
    QSignalSpy requests(picker.get(), &WindowPicker::requestChanged);
    picker->open(goalID.text());
    EXPECT_EQ(requests.size(), 0);
    EXPECT_EQ(picker->chosenCount(), 1);
    picker->open(other.text());
    EXPECT_EQ(requests.size(), 1);
    EXPECT_EQ(picker->chosenCount(), 0);
    EXPECT_EQ(picker->goalTitle(), QStringLiteral("Taxes"));
}

TEST_F(Picking, It_closes_when_its_goal_is_deleted)
{
    picker->open(goalID.text());
    store().deleteGoal(goalID);
    EXPECT_FALSE(picker->isOpen());
}

TEST_F(Picking, It_follows_the_windows_of_the_desktop_and_the_title_of_its_goal)
{
    picker->open(goalID.text());
    desktop.addAccessibleWindow(9, 102, QStringLiteral("Plan"));
    store().refresh();
    EXPECT_EQ(picker->rowCount(), 3);
    store().renameGoal(goalID, QStringLiteral("Offer"));
    EXPECT_EQ(picker->goalTitle(), QStringLiteral("Offer"));
}

TEST_F(Picking, A_row_stays_where_it_is_while_titles_change)
{
    desktop.addAccessibleWindow(9, 101, QStringLiteral("Attic"));
    store().refresh();
    picker->open(goalID.text());
    const auto ids = [this] {
        QList<WindowID> result;
        for (const PickerRow& row : picker->rows()->rows())
            result.append(row.key());
        return result;
    };
    EXPECT_EQ(ids(), (QList<WindowID>{7, 9, 8}));

    desktop.windowList->front().name = QStringLiteral("Zoo");
    desktop.accessibilityWindows[101]->back().title = QStringLiteral("Zoo");
    store().refresh();
    EXPECT_EQ(picker->rows()->rows().at(1).presentation.title, QStringLiteral("Zoo"));
    EXPECT_EQ(ids(), (QList<WindowID>{7, 9, 8})) << "nothing jumps under the pointer";
    picker->toggle(8);
    EXPECT_EQ(ids(), (QList<WindowID>{7, 9, 8}));

    picker->setSearchText(QStringLiteral("o"));
    picker->setSearchText(QString());
    EXPECT_EQ(ids(), (QList<WindowID>{7, 8, 9}));
}

} // namespace
} // namespace kelpa::test
