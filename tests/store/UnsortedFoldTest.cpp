// Many windows of "Unsorted" are folded, and unfolded by whoever goes on to them.
#include "store/board/BoardPersistence.h"
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

class UnsortedFolding : public StoreFixture
{
protected:
    UnsortedFolding()
    {
        for (WindowID id = 1; id <= 12; ++id) {
            WindowListEntry& entry =
                desktop.addAccessibleWindow(id, 1000, QStringLiteral("Window %1").arg(id));
            // A place of its own distinguishes it from the others.
            entry.bounds->x = 100.0 * id;
            desktop.accessibilityWindows[1000]->back().position->x = entry.bounds->x;
        }
        store().refresh();
    }

    void enter() { store().activateTarget(TargetSelection::unassigned(), EnterWindowLayer::yes); }
    void goDown() { store().moveWindowSelection(NavigationDirection::down); }
};

TEST_F(UnsortedFolding, Two_rows_of_many_show)
{
    ASSERT_EQ(store().windows(std::nullopt).size(), 12);
    EXPECT_EQ(store().shownUnsortedCount(), 4);
    store().setUnsortedFold(UnsortedFold::unfolded);
    EXPECT_EQ(store().shownUnsortedCount(), 12);
}

TEST_F(UnsortedFolding, What_a_person_unfolded_stays_so)
{
    store().setUnsortedFold(UnsortedFold::unfolded);
    EXPECT_EQ(settings.value(unsortedUnfoldedKey), SettingsValue(true));
    EXPECT_EQ(restartedStore().unsortedFold(), UnsortedFold::unfolded);
    store().setUnsortedFold(UnsortedFold::folded);
    EXPECT_EQ(restartedStore().unsortedFold(), UnsortedFold::folded);
    EXPECT_FALSE(store().canUndo()) << "it is no change of the board";
}

TEST_F(UnsortedFolding, A_stored_value_that_is_no_Boolean_counts_as_absent)
{
    settings.values.insert(unsortedUnfoldedKey, QStringLiteral("yes"));
    EXPECT_EQ(restartedStore().unsortedFold(), UnsortedFold::folded);
}

TEST_F(UnsortedFolding, An_arrow_beyond_the_second_row_unfolds)
{
    enter();
    goDown();
    EXPECT_EQ(store().shownUnsortedCount(), 4);
    EXPECT_EQ(store().unsortedFold(), UnsortedFold::folded);
    goDown();
    EXPECT_EQ(store().selectedWindowIndex(), 4);
    EXPECT_EQ(store().shownUnsortedCount(), 12);
    store().clearTargetSelection();
    EXPECT_EQ(store().shownUnsortedCount(), 12);
    EXPECT_EQ(settings.value(unsortedUnfoldedKey), SettingsValue(true));
}

TEST_F(UnsortedFolding, A_search_finds_what_is_folded_and_leaves_the_fold_as_it_is)
{
    store().setSearchText(QStringLiteral("window"));
    EXPECT_EQ(store().shownUnsortedCount(), 12);
    enter();
    goDown();
    goDown();
    EXPECT_EQ(store().unsortedFold(), UnsortedFold::folded);
    // The selected window goes on showing after the search.
    store().setSearchText(QString());
    EXPECT_EQ(store().shownUnsortedCount(), 12);
    store().returnToTargetSelection();
    EXPECT_EQ(store().shownUnsortedCount(), 4);
}

TEST_F(UnsortedFolding, Folding_leaves_a_window_that_is_folded_away)
{
    enter();
    goDown();
    goDown();
    store().setUnsortedFold(UnsortedFold::folded);
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::on(TargetSelection::unassigned()));
    EXPECT_EQ(store().shownUnsortedCount(), 4);
}

} // namespace
} // namespace kelpa::test
