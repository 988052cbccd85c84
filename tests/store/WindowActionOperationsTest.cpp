#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using State = BoardNavigationState;

class WindowActionOperations : public StoreFixture
{
protected:
    QStringList raised() const { return desktop.calls.filter(QStringLiteral("raise ")); }

    int passes() const
    {
        return static_cast<int>(desktop.calls.count(QStringLiteral("openDiscoverySource")));
    }
};

TEST_F(WindowActionOperations, Focus_selects_the_window_and_brings_it_forward)
{
    const GoalID a = makeGoal();
    desktop.addAccessibleWindow(1, 100, QStringLiteral("one"));
    desktop.addAccessibleWindow(2, 101, QStringLiteral("two"));
    store().refresh();
    store().assign(1, a);

    store().focus(listed(1));
    EXPECT_EQ(store().boardNavigation(), State::inside(TargetSelection::goal(a), 1));
    store().focus(listed(2));
    EXPECT_EQ(store().boardNavigation(), State::inside(TargetSelection::unassigned(), 2));

    scheduler.advance(0ms);
    EXPECT_EQ(raised(), (QStringList{QStringLiteral("raise one"), QStringLiteral("raise two")}));
}

TEST_F(WindowActionOperations, Focus_of_a_window_that_the_search_found_ends_the_search)
{
    desktop.addAccessibleWindow(1, 100, QStringLiteral("letter"));
    desktop.addAccessibleWindow(2, 101, QStringLiteral("report"));
    store().refresh();
    store().setSearchText(QStringLiteral("letter"));

    store().focus(listed(2));
    EXPECT_EQ(store().searchText(), QStringLiteral("letter")) << "it was not found by it";
    store().focus(listed(1));
    EXPECT_EQ(store().searchText(), QString());
    EXPECT_EQ(store().boardNavigation(), State::inside(TargetSelection::unassigned(), 1));
    EXPECT_EQ(store().filteredWindows().size(), 2);

    store().setSearchText(QStringLiteral("letter"));
    desktop.isAccessibilityGranted = false;
    store().refresh();
    store().focus(listed(1));
    EXPECT_EQ(store().searchText(), QStringLiteral("letter")) << "nothing came forward";
}

TEST_F(WindowActionOperations, Focus_without_permission_only_selects)
{
    desktop.isAccessibilityGranted = false;
    desktop.addAccessibleWindow(1, 100, QStringLiteral("one"));
    store().refresh();
    desktop.calls.clear();

    store().focus(listed(1));
    scheduler.advance(0ms);

    EXPECT_EQ(store().boardNavigation(), State::inside(TargetSelection::unassigned(), 1));
    EXPECT_TRUE(desktop.calls.isEmpty());
}

TEST_F(WindowActionOperations, Focus_of_an_ambiguous_window_only_selects)
{
    desktop.addAccessibleWindow(1, 100, QStringLiteral("one"));
    store().refresh();
    const auto twice = desktop.accessibilityWindows[100]->front();
    desktop.accessibilityWindows[100]->push_back(twice);

    store().focus(listed(1));
    scheduler.advance(0ms);

    EXPECT_EQ(store().boardNavigation().selectedWindowID, 1U);
    EXPECT_TRUE(raised().isEmpty());
    EXPECT_TRUE(desktop.calls.filter(QStringLiteral("activate")).isEmpty());
}

TEST_F(WindowActionOperations, Focus_of_a_window_whose_application_has_quit_only_selects)
{
    desktop.addAccessibleWindow(1, 100, QStringLiteral("one"));
    store().refresh();
    desktop.applications.remove(100);

    store().focus(listed(1));
    scheduler.advance(0ms);

    EXPECT_EQ(store().boardNavigation().selectedWindowID, 1U);
    EXPECT_TRUE(raised().isEmpty());
}

TEST_F(WindowActionOperations, Focus_again_publishes_nothing)
{
    desktop.addAccessibleWindow(1, 100, QStringLiteral("one"));
    store().refresh();
    store().focus(listed(1));
    takeSignals();
    store().focus(listed(1));
    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_EQ(takeWriteCount(), 0);
}

TEST_F(WindowActionOperations, Windows_come_forward_one_after_the_other_also_when_asked_at_once)
{
    for (const WindowID id : {1U, 2U, 3U})
        desktop.addAccessibleWindow(id, 100 + static_cast<ProcessID>(id), QString::number(id));
    store().refresh();
    scheduler.holdBackgroundWork(true);
    store().focus(listed(3));
    store().focus(listed(1));
    store().focus(listed(2));
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);

    scheduler.holdBackgroundWork(false);
    scheduler.advance(0ms);
    EXPECT_EQ(raised(), (QStringList{QStringLiteral("raise 3"), QStringLiteral("raise 1"),
                                     QStringLiteral("raise 2")}));
}

TEST_F(WindowActionOperations, Space_enters_a_target_and_then_brings_its_window_forward)
{
    const GoalID a = makeGoal();
    desktop.addAccessibleWindow(1, 100, QStringLiteral("one"));
    store().refresh();
    store().assign(1, a);

    store().activateSelection();
    EXPECT_EQ(store().boardNavigation(), State::inside(TargetSelection::goal(a), 1));
    EXPECT_TRUE(raised().isEmpty());
    takeSignals();

    store().activateSelection();
    scheduler.advance(0ms);
    EXPECT_EQ(raised(), QStringList{QStringLiteral("raise one")});
    EXPECT_TRUE(takeSignals().isEmpty());
}

TEST_F(WindowActionOperations, Space_with_nothing_to_enter_or_to_open_does_nothing)
{
    store().activateSelection();
    EXPECT_EQ(store().boardNavigation(), State::idle());

    makeGoal();
    takeSignals();
    store().activateSelection();
    EXPECT_TRUE(takeSignals().isEmpty());

    desktop.addAccessibleWindow(1, 100, QStringLiteral("one"));
    store().refresh();
    store().activateTarget(TargetSelection::unassigned(), EnterWindowLayer::yes);
    store().setSearchText(QStringLiteral("something else"));
    store().activateSelection();
    scheduler.advance(0ms);
    EXPECT_TRUE(raised().isEmpty());
}

TEST_F(WindowActionOperations, All_windows_of_a_goal_come_forward_in_order_whatever_is_searched)
{
    const GoalID a = makeGoal();
    const GoalID b = makeGoal();
    for (const WindowID id : {1U, 2U, 3U})
        desktop.addAccessibleWindow(id, 100, QString::number(id));
    store().refresh();
    ASSERT_TRUE(store().assign({1, 3}, a));
    store().assign(2, b);
    store().setSearchText(QStringLiteral("nothing"));
    store().activateTarget(TargetSelection::goal(b), EnterWindowLayer::no);

    store().showAllWindows(a);
    scheduler.advance(0ms);

    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::goal(a)));
    EXPECT_EQ(raised(), (QStringList{QStringLiteral("raise 3"), QStringLiteral("raise 1")}));
    EXPECT_EQ(desktop.calls.count(QStringLiteral("elements 100")), 1);
}

TEST_F(WindowActionOperations, Showing_the_windows_of_an_unknown_goal_does_nothing)
{
    desktop.addAccessibleWindow(1, 100, {});
    store().refresh();
    takeSignals();
    store().showAllWindows(GoalID::create());
    scheduler.advance(0ms);
    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_TRUE(raised().isEmpty());
}

TEST_F(WindowActionOperations, Closing_asks_the_application_and_runs_a_pass_a_little_later)
{
    desktop.addWindow(1, 100, {});
    store().refresh();
    const int before = passes();

    store().closeProcess(listed(1));
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("quit 100")), 1);
    desktop.removeWindow(1);
    scheduler.advance(399ms);
    EXPECT_EQ(passes(), before);
    scheduler.advance(1ms);
    EXPECT_EQ(passes(), before + 1);
    EXPECT_TRUE(store().windows().isEmpty());
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(WindowActionOperations, Showing_all_windows_without_permission_only_selects_the_goal)
{
    const GoalID a = makeGoal();
    makeGoal();
    desktop.isAccessibilityGranted = false;
    desktop.addAccessibleWindow(1, 100, QStringLiteral("one"));
    store().refresh();
    store().assign(1, a);
    desktop.calls.clear();

    store().showAllWindows(a);
    scheduler.advance(0ms);

    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::goal(a)));
    EXPECT_TRUE(desktop.calls.isEmpty()) << desktop.calls.join(u' ').toStdString();
}

TEST_F(WindowActionOperations, Closing_without_permission_asks_the_application_all_the_same)
{
    desktop.isAccessibilityGranted = false;
    desktop.addWindow(1, 100, {});
    store().refresh();
    ASSERT_FALSE(store().isAccessibilityTrusted());

    store().closeProcess(listed(1));
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("quit 100")), 1);
    desktop.removeWindow(1);
    scheduler.advance(400ms);
    EXPECT_TRUE(store().windows().isEmpty());
}

TEST_F(WindowActionOperations, Closing_a_window_of_an_application_that_has_quit_asks_nobody)
{
    desktop.addWindow(1, 100, {});
    store().refresh();
    const WindowItem item = listed(1);
    desktop.applications.remove(100);
    store().closeProcess(item);
    scheduler.advance(1s);
    EXPECT_FALSE(desktop.calls.contains(QStringLiteral("quit 100")));
}

TEST_F(WindowActionOperations, Closing_a_window_of_this_program_does_nothing)
{
    WindowItem own;
    own.processIdentifier = FakeDesktop::ownProcess;
    store().closeProcess(own);
    scheduler.advance(1s);
    EXPECT_TRUE(desktop.calls.isEmpty());
}

} // namespace
} // namespace kelpa::test
