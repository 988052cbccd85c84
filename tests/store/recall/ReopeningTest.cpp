// The windows that a goal had: what is shown of them, and opening them again.

#include "store/recall/WindowRecallFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

using ReopenedWindows = WindowRecalls;

TEST_F(ReopenedWindows, An_application_that_is_closed_and_opened_again_counts_as_well)
{
    work();
    close(1);
    open(3, report);
    waitForBurst();
    EXPECT_EQ(goalOf(3), taxes);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("1 window is back in its goal"));
    EXPECT_FALSE(store().assignments().contains(QStringLiteral("1")));
}

TEST_F(ReopenedWindows, A_window_is_opened_again_and_takes_its_place_whatever_its_title)
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

TEST_F(ReopenedWindows, Windows_that_may_not_be_read_any_more_are_not_gone)
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

TEST_F(ReopenedWindows, Of_two_alike_windows_opening_one_again_leaves_the_other)
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

TEST_F(ReopenedWindows, What_is_gone_is_told_when_a_window_is_opened_again)
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

TEST_F(ReopenedWindows, What_may_be_shown_is_reported_once_for_each_change)
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

TEST_F(ReopenedWindows, A_window_that_was_closed_just_now_is_not_one_from_last_time)
{
    work();
    logInAgain();
    EXPECT_TRUE(store().areFromLastTime(taxes));
    EXPECT_TRUE(store().areFromLastTime(garden));
    open(11, report);
    waitForBurst();
    close(11);
    ASSERT_EQ(store().absentWindows(taxes).size(), 1);
    EXPECT_FALSE(store().areFromLastTime(taxes));
    EXPECT_TRUE(store().areFromLastTime(garden));
    store().finishSaving();
    restartedStore();
    store().refresh();
    ASSERT_EQ(store().absentWindows(taxes).size(), 1);
    EXPECT_TRUE(store().areFromLastTime(taxes));
}

TEST_F(ReopenedWindows, An_application_that_shows_no_new_window_for_it_is_named)
{
    const QString text = QStringLiteral(u"\u201CApp 100\u201D has not opened a new window");
    work();
    close(1);
    store().reopen(taxes, {1});
    scheduler.advance(0ms);
    // A tab of the window that is there.
    rename(2, report);
    scheduler.advance(4900ms);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
    scheduler.advance(100ms);
    EXPECT_EQ(store().toastMessage(), text);
    EXPECT_FALSE(store().toastOffersUndo());
    EXPECT_EQ(store().absentWindows(taxes).size(), 1);
    // It may be tried again, and given up meanwhile.
    scheduler.advance(10s);
    store().reopen(taxes, {1});
    scheduler.advance(0ms);
    store().forgetWindows({1});
    scheduler.advance(5s);
    EXPECT_NE(store().toastMessage(), text);
}

} // namespace
} // namespace kelpa::test
