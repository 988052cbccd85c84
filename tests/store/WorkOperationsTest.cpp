// Working on a goal and going back, on a desktop that does what it is asked.
#include "support/StoreFixture.h"

#include <QRegularExpression>

#include <chrono>
#include <utility>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

QString numberText(WindowID id)
{
    return QString::number(id);
}

class WorkOperations : public StoreFixture
{
protected:
    /// Windows 1 to `count`, each of a process of its own, 1 and 2 in the goal.
    void open(WindowID count)
    {
        for (WindowID id = count; id > 0; --id)
            desktop.addAccessibleWindow(id, processOf(id), numberText(id));
        goalID = makeGoal();
        store().refresh();
        store().assign(1, goalID);
        store().assign(2, goalID);
        takeRequests();
    }

    static ProcessID processOf(WindowID id) { return 1000 + static_cast<ProcessID>(id); }

    void setMinimized(WindowID id, bool isMinimized)
    {
        desktop.accessibilityWindows[processOf(id)]->front().isMinimized = isMinimized;
        if (isMinimized)
            desktop.onScreen.remove(id);
        else
            desktop.onScreen.insert(id);
    }

    /// What the desktop has been asked for since the last call, which it has done then.
    QStringList takeRequests()
    {
        scheduler.advance(0ms);
        QStringList requests;
        for (const QString& call : std::exchange(desktop.calls, {})) {
            const QString name = call.section(u' ', 1);
            if (call.startsWith(u"minimize ") || call.startsWith(u"unminimize "))
                setMinimized(name.toUInt(), call.startsWith(u"minimize"));
            if (call.startsWith(u"minimize ") || call.startsWith(u"unminimize ") ||
                call.startsWith(u"raise "))
                requests.append(call);
        }
        store().refresh();
        return requests;
    }

    static QStringList raisedThenMinimized()
    {
        return {QStringLiteral("unminimize 2"), QStringLiteral("raise 2"),
                QStringLiteral("unminimize 1"), QStringLiteral("raise 1"),
                QStringLiteral("minimize 3"),   QStringLiteral("minimize 4")};
    }

    GoalID goalID;
};

TEST_F(WorkOperations, The_goals_windows_come_forward_in_their_order_and_the_others_are_minimised)
{
    open(4);
    EXPECT_FALSE(store().canGoBack());
    takeSignals();
    takeWriteCount();
    store().workOn(goalID);
    EXPECT_TRUE(store().canGoBack());
    EXPECT_EQ(takeSignals().value(QStringLiteral("canGoBack")), 1);
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(goalID));
    EXPECT_EQ(takeRequests(), raisedThenMinimized());
    EXPECT_TRUE(listed(3).isMinimized && listed(4).isMinimized);
    EXPECT_EQ(takeWriteCount(), 0) << "it is nothing of the board's";
    EXPECT_FALSE(store().canRedo());
}

TEST_F(WorkOperations, Back_restores_what_was_changed_and_only_once)
{
    open(4);
    setMinimized(2, true);
    store().refresh();
    store().workOn(goalID);
    takeRequests();
    store().goBack();
    EXPECT_FALSE(store().canGoBack());
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("minimize 2"), QStringLiteral("unminimize 4"),
                           QStringLiteral("unminimize 3")}));
    EXPECT_FALSE(store().canGoBack());
    store().goBack();
    EXPECT_EQ(takeRequests(), QStringList());
}

TEST_F(WorkOperations, Who_goes_back_hears_when_all_of_it_has_been_requested)
{
    open(4);
    bool isSent = false;
    const auto note = [this, &isSent] {
        EXPECT_TRUE(desktop.calls.contains(QStringLiteral("unminimize 3")));
        isSent = true;
    };
    store().goBack(note);
    scheduler.advance(0ms);
    EXPECT_FALSE(isSent) << "there was nothing to go back to";
    store().workOn(goalID);
    takeRequests();
    store().goBack(note);
    EXPECT_FALSE(isSent);
    takeRequests();
    EXPECT_TRUE(isSent);
}

TEST_F(WorkOperations, Who_goes_back_hears_nothing_when_that_takes_long)
{
    open(4);
    int sent = 0;
    for (const auto delay : {2000ms, 2001ms}) {
        store().workOn(goalID);
        takeRequests();
        scheduler.holdBackgroundWork(true);
        store().goBack([&sent] { ++sent; });
        scheduler.advance(delay);
        EXPECT_EQ(sent, delay > 2000ms ? 1 : 0);
        scheduler.holdBackgroundWork(false);
        scheduler.runBackgroundWork();
        takeRequests();
        EXPECT_EQ(sent, 1);
    }
}

TEST_F(WorkOperations, Working_on_it_again_right_after_going_back_does_the_same_again)
{
    open(4);
    store().workOn(goalID);
    takeRequests();
    store().goBack();
    EXPECT_TRUE(listed(3).isMinimized) << "no pass has seen it restored";
    store().workOn(goalID);
    EXPECT_TRUE(store().canGoBack());
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("unminimize 4"), QStringLiteral("unminimize 3")} +
               raisedThenMinimized()));
    EXPECT_TRUE(listed(3).isMinimized && listed(4).isMinimized);
    EXPECT_TRUE(store().canGoBack());
}

TEST_F(WorkOperations, What_the_desktop_never_did_is_not_taken_back)
{
    open(4);
    store().workOn(goalID);
    scheduler.advance(0ms);
    desktop.calls.clear();
    setMinimized(3, true);
    for (int pass = 0; pass < 3; ++pass)
        store().refresh();
    EXPECT_TRUE(store().canGoBack());
    setMinimized(3, false);
    store().refresh();
    EXPECT_FALSE(store().canGoBack()) << "nothing became of minimising 4";
    store().goBack();
    EXPECT_EQ(takeRequests(), QStringList());
}

TEST_F(WorkOperations, A_late_desktop_has_until_the_requests_are_sent)
{
    open(4);
    scheduler.holdBackgroundWork(true);
    store().workOn(goalID);
    for (int pass = 0; pass < 9; ++pass)
        store().refresh();
    EXPECT_TRUE(store().canGoBack());
    scheduler.holdBackgroundWork(false);
    EXPECT_EQ(takeRequests(), raisedThenMinimized());
    EXPECT_TRUE(store().canGoBack());
}

TEST_F(WorkOperations, What_the_person_has_restored_meanwhile_stays)
{
    open(4);
    store().workOn(goalID);
    takeRequests();
    setMinimized(3, false);
    store().refresh();
    setMinimized(3, true);
    store().refresh();
    store().goBack();
    EXPECT_EQ(takeRequests(), QStringList{QStringLiteral("unminimize 4")});
    EXPECT_TRUE(listed(3).isMinimized);
}

TEST_F(WorkOperations, Back_is_offered_only_while_there_is_something_to_restore)
{
    open(3);
    store().workOn(goalID);
    takeRequests();
    EXPECT_TRUE(store().canGoBack());
    setMinimized(3, false);
    store().refresh();
    EXPECT_FALSE(store().canGoBack());

    store().workOn(goalID);
    takeRequests();
    EXPECT_TRUE(store().canGoBack());
    desktop.removeWindow(3);
    store().refresh();
    EXPECT_FALSE(store().canGoBack());
    store().goBack();
    EXPECT_EQ(takeRequests(), QStringList());
}

TEST_F(WorkOperations, Windows_that_vanish_meanwhile_are_passed_over)
{
    open(4);
    store().workOn(goalID);
    desktop.accessibilityWindows.remove(processOf(3));
    desktop.applications.remove(processOf(2));
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("unminimize 1"), QStringLiteral("raise 1"),
                           QStringLiteral("minimize 4")}));
}

TEST_F(WorkOperations, A_restart_between_them_leaves_nothing_to_go_back_to)
{
    open(4);
    store().workOn(goalID);
    takeRequests();
    restartedStore().refresh();
    EXPECT_EQ(goalOf(1), goalID);
    EXPECT_FALSE(store().canGoBack());
    store().goBack();
    EXPECT_EQ(takeRequests(), QStringList());
}

TEST_F(WorkOperations, A_desktop_that_minimises_nothing_is_asked_for_nothing)
{
    open(4);
    EXPECT_TRUE(store().canArrangeWindows());
    desktop.lack(DesktopAbility::minimizing);
    store().refresh();
    EXPECT_FALSE(store().canArrangeWindows());
    store().workOn(goalID);
    EXPECT_EQ(takeRequests(), QStringList());
    EXPECT_FALSE(store().canGoBack());

    desktop.lackNothing();
    desktop.isAccessibilityGranted = false;
    store().refresh();
    EXPECT_FALSE(store().canArrangeWindows());
}

TEST_F(WorkOperations, An_unknown_goal_and_one_without_windows_change_nothing)
{
    open(3);
    store().workOn(GoalID::create());
    store().workOn(makeGoal(QStringLiteral("empty")));
    EXPECT_EQ(takeRequests(), QStringList());
    EXPECT_FALSE(store().canGoBack());
}

TEST_F(WorkOperations, Five_hundred_windows_are_one_task_that_reads_each_process_once)
{
    constexpr WindowID count = 500;
    open(count);
    scheduler.holdBackgroundWork(true);
    store().workOn(goalID);
    store().goBack();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1) << "the second waits for the first";
    EXPECT_TRUE(desktop.calls.filter(QStringLiteral("imize ")).isEmpty())
        << "nothing is requested on the main thread";
    scheduler.holdBackgroundWork(false);
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls.filter(QStringLiteral("elements ")).size(), count + count - 2);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("elements 1500")), 2);
    const QStringList requests = takeRequests();
    EXPECT_EQ(requests.filter(QStringLiteral("unminimize ")).size(), 2 + count - 2);
    EXPECT_EQ(requests.filter(QRegularExpression(QStringLiteral("^minimize "))).size(), count - 2);
    EXPECT_FALSE(listed(count).isMinimized);
}

} // namespace
} // namespace kelpa::test
