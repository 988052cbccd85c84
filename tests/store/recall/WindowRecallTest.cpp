// Windows of an earlier login, or of an application that was closed, find their goals again.

#include "platform/x11/discovery/EventCoalescer.h"
#include "store/recall/WindowRecallFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

TEST_F(WindowRecalls, After_a_new_login_certain_windows_go_back_in_one_step_that_can_be_undone)
{
    work();
    logInAgain();
    open(11, letter);
    open(12, report);
    EXPECT_EQ(goalOf(11), std::nullopt);
    takeWriteCount();
    waitForBurst();
    EXPECT_EQ(goalOf(11), garden);
    EXPECT_EQ(goalOf(12), taxes);
    EXPECT_EQ(takeWriteCount(), 1);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("2 windows are back in their goals"));
    EXPECT_TRUE(store().toastOffersUndo());

    store().undo();
    EXPECT_EQ(goalOf(11), std::nullopt);
    EXPECT_EQ(goalOf(12), std::nullopt);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
    scheduler.advance(10min);
    store().refresh();
    waitForBurst();
    EXPECT_EQ(goalOf(11), std::nullopt) << "a person said no";
    EXPECT_EQ(store().absentWindows(taxes).size(), 1);
    store().redo();
    EXPECT_EQ(goalOf(11), garden);
    EXPECT_EQ(store().absentWindows(taxes).size(), 0);
}

TEST_F(WindowRecalls, The_title_may_come_late_but_not_after_two_minutes)
{
    work();
    logInAgain();
    open(11, QStringLiteral("Loading"));
    open(12, QStringLiteral("Untitled"));
    scheduler.advance(60s);
    rename(11, report);
    waitForBurst();
    EXPECT_EQ(goalOf(11), taxes);
    scheduler.advance(60s);
    rename(12, letter);
    waitForBurst();
    EXPECT_EQ(goalOf(12), std::nullopt);
}

// With the longest time that the X server's events wait for each other.
static_assert(WindowRecall::burstTime + x11::EventCoalescer::longestAppearanceInterval <= 2s);

TEST_F(WindowRecalls, After_its_title_a_window_waits_for_one_burst)
{
    work();
    logInAgain();
    open(11, QStringLiteral("Loading"));
    waitForBurst();
    rename(11, report);
    scheduler.advance(WindowRecall::burstTime - 1ms);
    EXPECT_EQ(goalOf(11), std::nullopt);
    scheduler.advance(1ms);
    EXPECT_EQ(goalOf(11), taxes);
}

TEST_F(WindowRecalls, What_is_not_certain_is_offered_and_can_be_accepted_or_declined)
{
    work();
    close(1);
    open(3, QStringLiteral("Loading"));
    waitForBurst();
    ASSERT_EQ(store().recallOffers(3), (QList<RecalledWindow>{{3, 1, taxes}}));
    EXPECT_EQ(goalOf(3), std::nullopt);
    store().acceptRecall(3, 2);
    EXPECT_EQ(goalOf(3), std::nullopt) << "was not offered";
    store().acceptRecall(3, 1);
    EXPECT_EQ(goalOf(3), taxes);
    EXPECT_TRUE(store().recallOffers(3).isEmpty());
    store().undo();
    EXPECT_EQ(goalOf(3), std::nullopt);
    EXPECT_EQ(store().recallOffers(3), (QList<RecalledWindow>{{3, 1, taxes}}));
    store().redo();
    EXPECT_EQ(goalOf(3), taxes);
    EXPECT_TRUE(store().recallOffers(3).isEmpty());
    store().undo();
    close(3);

    open(4, QStringLiteral("Loading"));
    waitForBurst();
    ASSERT_EQ(store().recallOffers(4).size(), 1);
    store().declineRecall(4);
    EXPECT_TRUE(store().recallOffers(4).isEmpty());
    rename(4, QStringLiteral("Opening"));
    waitForBurst();
    EXPECT_TRUE(store().recallOffers(4).isEmpty());
}

TEST_F(WindowRecalls, A_declined_offer_is_back_after_undo_and_declined_again_after_redo)
{
    work();
    close(1);
    open(3, QStringLiteral("Loading"));
    waitForBurst();
    const QList<RecalledWindow> offers{{3, 1, taxes}};
    ASSERT_EQ(store().recallOffers(3), offers);
    store().setSearchText(letter);
    const QStringList storedBefore = storedTitles();
    const auto assignmentsBefore = store().assignments();
    store().declineRecall(3);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("The window stays where it is"));
    EXPECT_TRUE(store().toastOffersUndo());
    store().declineRecall(3);
    makeTodo(taxes);
    store().undo();
    EXPECT_TRUE(store().recallOffers(3).isEmpty()) << "that was the todo";
    store().undo();
    EXPECT_EQ(store().recallOffers(3), offers);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
    EXPECT_TRUE(store().boardNavigation().target.isUnassigned());
    EXPECT_EQ(store().searchText(), QString()) << "the search hides the card";
    EXPECT_EQ(goalOf(3), std::nullopt);
    rename(3, report);
    waitForBurst();
    EXPECT_EQ(goalOf(3), std::nullopt) << "a person decides now";
    store().redo();
    EXPECT_TRUE(store().recallOffers(3).isEmpty());
    store().undo();
    store().acceptRecall(3, 1);
    EXPECT_EQ(goalOf(3), taxes);
    EXPECT_EQ(store().absentWindows(taxes).size(), 0);
    store().undo();
    EXPECT_EQ(storedTitles(), storedBefore);
    EXPECT_EQ(decodeAssignments(settings.document(assignmentsKey)), assignmentsBefore);
}

TEST_F(WindowRecalls, Undo_of_a_declined_offer_whose_window_has_closed_leads_nowhere)
{
    work();
    close(1);
    open(3, QStringLiteral("Loading"));
    waitForBurst();
    store().declineRecall(3);
    close(3);
    int restorations = 0;
    QObject::connect(&store(), &WindowStore::restorationIDChanged, &store(),
                     [&restorations] { ++restorations; });
    const auto navigation = store().boardNavigation();
    store().undo();
    EXPECT_EQ(restorations, 0);
    EXPECT_EQ(store().boardNavigation(), navigation);
}

TEST_F(WindowRecalls, A_window_that_was_placed_elsewhere_is_offered_its_goal_again_only_by_undo)
{
    work();
    close(1);
    open(3, QStringLiteral("Loading"));
    waitForBurst();
    store().assign(3, garden);
    store().assign(3, std::nullopt);
    EXPECT_TRUE(store().recallOffers(3).isEmpty());
    store().undo();
    store().undo();
    EXPECT_EQ(store().recallOffers(3).size(), 1);
    store().createGoal(QStringLiteral("Other"), 3);
    store().undo();
    EXPECT_EQ(store().recallOffers(3).size(), 1);
    EXPECT_TRUE(store().assign({2, 3}, taxes));
    store().undo();
    EXPECT_EQ(store().recallOffers(3).size(), 1);
}

TEST_F(WindowRecalls, An_offer_goes_with_its_window_and_waits_for_undo)
{
    work();
    close(1);
    open(3, QStringLiteral("Loading"));
    waitForBurst();
    ASSERT_EQ(store().recallOffers(3).size(), 1);
    store().forgetWindows({1});
    EXPECT_TRUE(store().recallOffers(3).isEmpty());
    store().undo();
    EXPECT_EQ(store().recallOffers(3).size(), 1);
    store().deleteGoal(taxes);
    EXPECT_TRUE(store().recallOffers(3).isEmpty());
    store().undo();
    EXPECT_EQ(store().recallOffers(3).size(), 1);
    const qsizetype count = store().windows().size();
    close(3);
    open(3, QStringLiteral("Loading"));
    ASSERT_EQ(store().windows().size(), count);
    EXPECT_TRUE(store().recallOffers(3).isEmpty());
}

TEST_F(WindowRecalls, A_look_alike_that_was_in_no_goal_makes_it_uncertain)
{
    work();
    open(3, report);
    logInAgain();
    close(3);
    open(11, report);
    waitForBurst();
    EXPECT_EQ(goalOf(11), std::nullopt);
    EXPECT_EQ(store().recallOffers(11), (QList<RecalledWindow>{{11, 1, taxes}}));
}

TEST_F(WindowRecalls, A_window_that_a_person_places_meanwhile_stays_there)
{
    work();
    logInAgain();
    open(11, report);
    store().assign(11, garden);
    waitForBurst();
    EXPECT_EQ(goalOf(11), garden);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
}

TEST_F(WindowRecalls, What_changes_while_windows_are_matched_is_matched_again)
{
    work();
    logInAgain();
    scheduler.holdBackgroundWork(true);
    desktop.addAccessibleWindow(11, editor, report);
    store().refresh();
    scheduler.runBackgroundWork();
    waitForBurst();
    store().deleteGoal(taxes);
    scheduler.runBackgroundWork();
    EXPECT_EQ(goalOf(11), std::nullopt);
    scheduler.holdBackgroundWork(false);
    waitForBurst();
    EXPECT_EQ(goalOf(11), std::nullopt);
}

TEST_F(WindowRecalls, Put_back_by_hand_a_window_takes_the_place_of_the_remembered_one)
{
    work();
    logInAgain();
    EXPECT_EQ(store().absentWindows(taxes).size(), 1);
    open(11, report);
    store().assign(11, taxes);
    EXPECT_EQ(store().absentWindows(taxes).size(), 0);
    store().undo();
    EXPECT_EQ(store().absentWindows(taxes).size(), 1);
}

TEST_F(WindowRecalls, Windows_that_were_there_when_kelpa_started_anew_are_not_new)
{
    work();
    open(3, QStringLiteral("Other"));
    close(1);
    store().finishSaving();
    restartedStore();
    store().refresh();
    rename(3, report);
    waitForBurst();
    EXPECT_EQ(goalOf(3), std::nullopt);
    EXPECT_EQ(goalOf(2), garden);
}

} // namespace
} // namespace kelpa::test
