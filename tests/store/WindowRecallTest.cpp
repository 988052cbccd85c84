// Windows of an earlier login, or of an application that was closed, find their goals again.

#include "store/WindowRecall.h"
#include "model/WindowMemoryJson.h"
#include "store/board/BoardPersistence.h"
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

const QString report = QStringLiteral("Report");
const QString letter = QStringLiteral("Letter");
constexpr ProcessID editor = 100;

class WindowRecalls : public StoreFixture
{
protected:
    /// Makes the goals and puts the two windows into them.
    void work()
    {
        store().setLanguage(AppLanguage::english);
        store().setAutoSortingGoals(false);
        taxes = makeGoal(QStringLiteral("Taxes"));
        garden = makeGoal(QStringLiteral("Garden"));
        open(1, report);
        open(2, letter);
        store().assign(1, taxes);
        store().assign(2, garden);
    }

    void open(WindowID id, const QString& title)
    {
        desktop.addAccessibleWindow(id, editor, title);
        store().refresh();
    }

    void close(WindowID id)
    {
        desktop.removeWindow(id);
        store().refresh();
    }

    void rename(WindowID id, const QString& title)
    {
        for (WindowListEntry& entry : *desktop.windowList) {
            if (entry.number == id)
                entry.name = title;
        }
        store().refresh();
    }

    /// Ends Kelpa and the login, and begins new ones.
    void logInAgain()
    {
        store().finishSaving();
        desktop.removeWindow(1);
        desktop.removeWindow(2);
        restartedStore();
        store().refresh();
    }

    void waitForBurst() { scheduler.advance(WindowRecall::burstTime); }

    std::optional<RememberedWindows> stored() const
    {
        return decodeRememberedWindows(settings.document(windowMemoryKey));
    }

    QStringList storedTitles() const
    {
        QStringList titles;
        for (const RememberedWindow& each : stored().value_or(RememberedWindows()).windows)
            titles.append(each.traits.title);
        return titles;
    }

    GoalID taxes;
    GoalID garden;
};

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

TEST_F(WindowRecalls, An_application_that_is_closed_and_opened_again_counts_as_well)
{
    work();
    close(1);
    open(3, report);
    waitForBurst();
    EXPECT_EQ(goalOf(3), taxes);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("1 window is back in its goal"));
    EXPECT_FALSE(store().assignments().contains(QStringLiteral("1")));
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

    open(4, QStringLiteral("Loading"));
    waitForBurst();
    ASSERT_EQ(store().recallOffers(4).size(), 1);
    store().declineRecall(4);
    EXPECT_TRUE(store().recallOffers(4).isEmpty());
    rename(4, QStringLiteral("Opening"));
    waitForBurst();
    EXPECT_TRUE(store().recallOffers(4).isEmpty());
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

TEST_F(WindowRecalls,
       What_is_taken_out_or_deleted_with_its_goal_is_forgotten_and_undo_brings_it_back)
{
    work();
    store().assign(1, std::nullopt);
    EXPECT_EQ(storedTitles(), QStringList{letter});
    store().undo();
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
    store().deleteGoal(garden);
    EXPECT_EQ(storedTitles(), QStringList{report});
    store().undo();
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
    close(1);
    store().forgetWindows({1});
    EXPECT_EQ(storedTitles(), QStringList{letter});
    EXPECT_EQ(store().toastMessage(), QStringLiteral("1 window is forgotten"));
    store().undo();
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
    store().forgetWindows({2});
    EXPECT_EQ(goalOf(2), garden) << "is there";
}

TEST_F(WindowRecalls, It_is_saved_with_the_board_and_a_title_that_changes_all_the_time_seldom)
{
    work();
    ASSERT_TRUE(stored());
    takeWriteCount();
    for (int i = 0; i < 500; ++i) {
        rename(1, QStringLiteral("Page %1").arg(i));
        scheduler.advance(20ms);
    }
    EXPECT_EQ(takeWriteCount(), 0);
    scheduler.advance(WindowRecall::storingDelay);
    EXPECT_EQ(takeWriteCount(), 1);
    EXPECT_EQ(storedTitles(), (QStringList{QStringLiteral("Page 499"), letter}));
    for (int i = 0; i < 500; ++i) {
        rename(1, QStringLiteral("(%1) Page 499").arg(i));
        scheduler.advance(100ms);
    }
    EXPECT_EQ(takeWriteCount(), 0);
    makeGoal();
    EXPECT_EQ(takeWriteCount(), 1);
}

TEST_F(WindowRecalls, Nothing_is_encoded_for_a_change_that_concerns_no_window)
{
    work();
    const QByteArray before = settings.document(windowMemoryKey);
    settings.changedEntryCount = 0;
    makeTodo(taxes);
    EXPECT_EQ(settings.changedEntryCount, 1);
    EXPECT_EQ(settings.document(windowMemoryKey), before);
}

TEST_F(WindowRecalls, The_end_of_the_program_stores_what_has_waited)
{
    work();
    rename(1, QStringLiteral("Minutes"));
    open(9, QStringLiteral("Other"));
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
    store().finishSaving();
    EXPECT_EQ(storedTitles(), (QStringList{QStringLiteral("Minutes"), letter}));
    EXPECT_EQ(stored()->newestWindow, 9U);
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

TEST_F(WindowRecalls, Switched_off_everything_is_forgotten_and_nothing_remembered)
{
    work();
    EXPECT_TRUE(store().isRememberingWindows());
    store().setRememberingWindows(false);
    EXPECT_EQ(storedTitles(), QStringList());
    close(1);
    store().assign(2, taxes);
    logInAgain();
    EXPECT_FALSE(store().isRememberingWindows());
    open(11, letter);
    open(12, report);
    waitForBurst();
    EXPECT_EQ(goalOf(11), std::nullopt);
    EXPECT_EQ(storedTitles(), QStringList());

    store().setRememberingWindows(true);
    store().assign(11, taxes);
    EXPECT_EQ(storedTitles(), QStringList{letter});
}

TEST_F(WindowRecalls, Switching_it_off_can_be_undone_and_done_again)
{
    work();
    close(1);
    open(3, QStringLiteral("Loading"));
    waitForBurst();
    ASSERT_EQ(store().recallOffers(3).size(), 1);
    takeWriteCount();
    store().setRememberingWindows(false);
    EXPECT_EQ(takeWriteCount(), 1);
    EXPECT_EQ(store().toastMessage(),
              QStringLiteral("All windows are forgotten and no longer remembered"));
    EXPECT_TRUE(store().toastOffersUndo());
    EXPECT_TRUE(store().absentWindows(taxes).isEmpty());
    EXPECT_TRUE(store().recallOffers(3).isEmpty());

    store().undo();
    EXPECT_TRUE(store().isRememberingWindows());
    EXPECT_EQ(settings.values.value(rememberingWindowsKey), SettingsValue(true));
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
    EXPECT_EQ(store().absentWindows(taxes).size(), 1);
    EXPECT_EQ(store().recallOffers(3).size(), 1);
    open(4, report);
    waitForBurst();
    EXPECT_EQ(goalOf(4), taxes);

    store().undo();
    store().redo();
    store().undo();
    EXPECT_TRUE(store().isRememberingWindows());
}

TEST_F(WindowRecalls, Switched_off_and_on_again_it_begins_with_the_windows_that_are_there)
{
    work();
    close(1);
    store().setRememberingWindows(false);
    store().setRememberingWindows(true);
    EXPECT_EQ(storedTitles(), QStringList{letter});
    EXPECT_TRUE(store().absentWindows(taxes).isEmpty());
    open(3, report);
    waitForBurst();
    EXPECT_EQ(goalOf(3), std::nullopt);
}

TEST_F(WindowRecalls, A_window_is_opened_again_and_takes_its_place_whatever_its_title)
{
    work();
    logInAgain();
    desktop.calls.clear();
    store().reopen(taxes, {1});
    store().reopen(taxes, {1});
    store().reopen(taxes, {2});
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls.filter(QStringLiteral("reopen")),
              QStringList{QStringLiteral("reopen org.example.App100")});
    desktop.addAccessibleWindow(11, editor, QStringLiteral("Loading"));
    desktop.startupIDs.insert(11, "launch 1");
    scheduler.advance(1s);
    EXPECT_EQ(goalOf(11), taxes);
    EXPECT_TRUE(store().absentWindows(taxes).isEmpty());
    EXPECT_EQ(store().absentWindows(garden).size(), 1);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
}

TEST_F(WindowRecalls, Windows_that_may_not_be_read_any_more_are_not_gone)
{
    work();
    desktop.isScreenCaptureGranted = false;
    store().refresh();
    ASSERT_TRUE(store().windows().isEmpty());
    EXPECT_TRUE(store().absentWindows(taxes).isEmpty());
    makeTodo(taxes);
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
    desktop.isScreenCaptureGranted = true;
    store().refresh();
    EXPECT_EQ(goalOf(1), taxes);
    EXPECT_TRUE(store().absentWindows(taxes).isEmpty());
}

TEST_F(WindowRecalls, Of_two_alike_windows_opening_one_again_leaves_the_other)
{
    work();
    open(3, report);
    store().assign(3, taxes);
    close(1);
    close(3);
    ASSERT_EQ(store().absentWindows(taxes).size(), 2);
    store().reopen(taxes, {1});
    scheduler.advance(0ms);
    desktop.addAccessibleWindow(11, editor, report);
    desktop.startupIDs.insert(11, "launch 1");
    scheduler.advance(500ms);
    EXPECT_EQ(goalOf(11), taxes);
    ASSERT_EQ(store().absentWindows(taxes).size(), 1);
    EXPECT_EQ(store().absentWindows(taxes).first().windowID, 3U);
}

TEST_F(WindowRecalls, What_is_gone_is_told_when_a_window_is_opened_again)
{
    work();
    const QString document = QStringLiteral("file:///home/me/Report%20%E2%80%AE1.odt");
    for (AccessibilityWindow& window : *desktop.accessibilityWindows[editor]) {
        if (window.title == report)
            window.document = document;
    }
    store().refresh();
    close(1);
    desktop.goneDocuments = {document};
    store().reopen(taxes, {1});
    scheduler.advance(0ms);
    ASSERT_TRUE(store().toastMessage());
    EXPECT_TRUE(store().toastMessage()->contains(QStringLiteral("is gone; its application")))
        << qPrintable(*store().toastMessage());
    EXPECT_FALSE(store().toastOffersUndo());
    scheduler.advance(10s);
    desktop.canLaunch = false;
    store().reopen(taxes, {1});
    scheduler.advance(0ms);
    ASSERT_TRUE(store().toastMessage());
    EXPECT_TRUE(store().toastMessage()->endsWith(QStringLiteral("is no longer installed")));
    EXPECT_EQ(store().absentWindows(taxes).size(), 1);
    // The goal may go while its window opens.
    desktop.canLaunch = true;
    store().reopen(taxes, {1});
    scheduler.advance(0ms);
    store().deleteGoal(taxes);
    desktop.addAccessibleWindow(11, editor, report);
    desktop.startupIDs.insert(11, "launch 2");
    scheduler.advance(1s);
    EXPECT_EQ(goalOf(11), std::nullopt);
}

TEST_F(WindowRecalls, What_may_be_shown_is_reported_once_for_each_change)
{
    work();
    int changes = 0;
    QObject::connect(&store(), &WindowStore::windowMemoryChanged, &store(), [&] { ++changes; });
    store().refresh();
    makeTodo(taxes);
    EXPECT_EQ(changes, 0);
    close(1);
    EXPECT_EQ(changes, 1);
    open(3, QStringLiteral("Loading"));
    waitForBurst();
    EXPECT_EQ(changes, 2);
    store().declineRecall(3);
    EXPECT_EQ(changes, 3);
    store().forgetWindows({1});
    EXPECT_EQ(changes, 4);
}

TEST_F(WindowRecalls, A_memory_that_does_not_decode_is_set_aside_and_begins_anew)
{
    settings.values.insert(windowMemoryKey, QByteArray("{\"version\":2}"));
    work();
    EXPECT_EQ(settings.document(windowMemoryKey + QStringLiteral(".aside")), "{\"version\":2}");
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
}

TEST_F(WindowRecalls, Until_the_board_is_loaded_no_memory_is_written)
{
    settings.values.insert(windowMemoryKey, QByteArray("kept"));
    settings.isUnreadable = true;
    makeGoal();
    open(1, report);
    store().assign(1, store().goals().first().id);
    settings.isUnreadable = false;
    EXPECT_EQ(settings.values.value(windowMemoryKey), SettingsValue(QByteArray("kept")));
}

} // namespace
} // namespace kelpa::test
