#include "windows/WorkContext.h"

#include "support/BoardBuilders.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace kelpa::test {
namespace {

const GoalID workGoal = GoalID::create();
const GoalID otherGoal = GoalID::create();

struct ListedWindow
{
    WindowID id = 0;
    std::optional<GoalID> goal{};
    bool isMinimized = false;
    const char16_t* desktop = u"";
    std::optional<WindowID> dialogOf{};
    bool isAwaitingAnswer = false;
    bool isHidden = false;
};

WindowItem listedAs(const ListedWindow& row)
{
    WindowItem item = window(row.id);
    item.goalID = row.goal;
    item.isMinimized = row.isMinimized;
    if (*row.desktop != u'\0')
        item.virtualDesktop = QString::fromUtf16(row.desktop);
    item.dialogOf = row.dialogOf;
    item.isAwaitingAnswer = row.isAwaitingAnswer;
    item.isOnScreen = !row.isMinimized && !item.virtualDesktop && !row.isHidden;
    item.bounds = {10, 20, 640, 480};
    return item;
}

QList<WindowItem> listedAs(const std::vector<ListedWindow>& rows)
{
    QList<WindowItem> windows;
    for (const ListedWindow& row : rows)
        windows.append(listedAs(row));
    return windows;
}

std::vector<WindowID> numbersOf(const QList<WindowItem>& windows)
{
    std::vector<WindowID> all;
    for (const WindowItem& each : windows)
        all.push_back(each.id);
    return all;
}

using WindowNumbers = std::vector<WindowID>;

TEST(WorkContext, The_goals_windows_come_forward_and_those_in_the_way_are_minimised)
{
    struct Case
    {
        const char* name;
        std::vector<ListedWindow> windows;
        WindowNumbers raised;
        WindowNumbers minimized;
    };
    const std::vector<Case> cases{
        {"others, with and without a goal, in the order of the stack",
         {{1}, {2, workGoal}, {3, otherGoal}, {4, workGoal}, {5}},
         {2, 4},
         {1, 3, 5}},
        {"a goal without a window changes nothing", {{1}, {3, otherGoal}}, {}, {}},
        {"what is minimised already stays so; the goal's is restored",
         {{1, {}, true}, {2, workGoal, true}},
         {2},
         {}},
        {"another desktop is not in the way, nor what it has of the goal",
         {{1, {}, false, u"Two"}, {2, workGoal}, {3, workGoal, false, u"Two"}, {4}},
         {2},
         {4}},
        {"a goal that is elsewhere is worked on there",
         {{1}, {2, workGoal, false, u"Two"}, {3, {}, false, u"Two"}, {4, {}, false, u"Three"}},
         {2},
         {3}},
        {"of several other desktops, that of the topmost window",
         {{1},
          {2, workGoal, false, u"Two"},
          {3, workGoal, false, u"Three"},
          {4, {}, false, u"Three"}},
         {2},
         {}},
        {"the dialog of a goal's window stays",
         {{1, {}, false, u"", 2}, {2, workGoal}, {3}},
         {2},
         {3}},
        {"the dialog of another window goes with that",
         {{1, {}, false, u"", 3}, {2, workGoal}, {3, {}, false, u"", {}, true}},
         {2},
         {3}},
        {"a dialog whose window is not listed is a window",
         {{1, {}, false, u"", 99}, {2, workGoal}},
         {2},
         {1}},
        {"the window whose dialog's dialog was put into the goal stays",
         {{1, workGoal, false, u"", 2}, {2, {}, false, u"", 3}, {3}, {4}},
         {1},
         {4}},
        {"dialogs in a circle", {{1, workGoal, false, u"", 2}, {2, {}, false, u"", 1}}, {1}, {}},
        {"a window that waits for an answer is in the way as well",
         {{1, {}, false, u"", {}, true}, {2, workGoal}},
         {2},
         {1}},
        {"what does not show is not in the way",
         {{1, {}, false, u"", {}, false, true}, {2, workGoal}},
         {2},
         {}},
    };
    for (const Case& each : cases) {
        const WindowArrangement arrangement = arrangementFor(workGoal, listedAs(each.windows));
        EXPECT_EQ(numbersOf(arrangement.raised), each.raised) << each.name;
        EXPECT_EQ(numbersOf(arrangement.minimized), each.minimized) << each.name;
        EXPECT_TRUE(arrangement.restored.isEmpty()) << each.name;
    }
}

/// Windows 1 and 2 are in the way, 3 and 4 those of the goal, of which 4 is minimised.
class WorkContextBack : public testing::Test
{
protected:
    WorkContextBack() { work(workGoal); }

    void work(GoalID goal) { context.note(arrangementFor(goal, context.asRequested(windows))); }

    WindowItem& at(WindowID id) { return windows[indexOf(windows, id)]; }
    void set(WindowID id, bool isMinimized)
    {
        at(id).isMinimized = isMinimized;
        at(id).isOnScreen = !isMinimized;
    }
    void observe() { context.observe(windows, WorkContext::Requests::sent); }
    /// The desktop has done what was requested.
    void carryOut()
    {
        windows = context.asRequested(windows);
        observe();
    }

    WindowNumbers restored() const { return numbersOf(context.wayBack(windows).restored); }
    WindowNumbers minimized() const { return numbersOf(context.wayBack(windows).minimized); }

    QList<WindowItem> windows = listedAs({{1}, {2, otherGoal}, {3, workGoal}, {4, workGoal, true}});
    WorkContext context;
};

TEST_F(WorkContextBack, Each_window_gets_the_state_that_it_had)
{
    carryOut();
    EXPECT_TRUE(at(1).isMinimized && at(2).isMinimized && !at(4).isMinimized);
    EXPECT_EQ(restored(), (WindowNumbers{1, 2}));
    EXPECT_EQ(minimized(), (WindowNumbers{4}));
}

TEST_F(WorkContextBack, The_way_back_is_there_before_the_desktop_has_done_anything)
{
    observe();
    EXPECT_EQ(restored(), (WindowNumbers{1, 2}));
    EXPECT_EQ(minimized(), (WindowNumbers{4}));
}

TEST_F(WorkContextBack, What_the_person_has_restored_or_minimised_stays)
{
    carryOut();
    set(1, false);
    set(4, true);
    observe();
    EXPECT_EQ(restored(), (WindowNumbers{2}));
    EXPECT_EQ(minimized(), WindowNumbers());
    // Also when it is in the state again that Kelpa gave it: that is the person's now.
    set(1, true);
    set(4, false);
    observe();
    EXPECT_EQ(restored(), (WindowNumbers{2}));
    EXPECT_EQ(minimized(), WindowNumbers());
}

TEST_F(WorkContextBack, What_the_person_has_moved_or_resized_stays)
{
    carryOut();
    at(4).bounds.x += 8;
    observe();
    EXPECT_EQ(minimized(), (WindowNumbers{4})) << "within the tolerance of frames";
    at(4).bounds.width += 100;
    observe();
    EXPECT_EQ(minimized(), WindowNumbers());
}

TEST_F(WorkContextBack, What_is_gone_is_left_out_and_may_come_back)
{
    carryOut();
    const WindowItem gone = windows.takeFirst();
    observe();
    EXPECT_EQ(restored(), (WindowNumbers{2}));
    windows.prepend(gone);
    observe();
    EXPECT_EQ(restored(), (WindowNumbers{1, 2}));
}

TEST_F(WorkContextBack, Another_goal_keeps_the_way_back_to_the_beginning)
{
    carryOut();
    work(otherGoal);
    // 2 is shown again, as it was; 3 is in the way now, and so is 4, which was minimised.
    EXPECT_EQ(restored(), (WindowNumbers{1, 3}));
    EXPECT_EQ(minimized(), WindowNumbers());
    carryOut();
    EXPECT_TRUE(at(1).isMinimized && !at(2).isMinimized && at(3).isMinimized && at(4).isMinimized);
    EXPECT_EQ(restored(), (WindowNumbers{1, 3}));
}

TEST_F(WorkContextBack, Another_goal_at_once_counts_with_what_is_requested_already)
{
    work(otherGoal);
    EXPECT_EQ(restored(), (WindowNumbers{1, 3}));
    EXPECT_EQ(minimized(), WindowNumbers());
}

TEST_F(WorkContextBack, Going_back_leaves_nothing_to_go_back_to)
{
    const WindowArrangement late = context.goBack(windows);
    EXPECT_EQ(numbersOf(late.restored), (WindowNumbers{1, 2}));
    EXPECT_EQ(numbersOf(late.minimized), (WindowNumbers{4}));
    EXPECT_TRUE(context.wayBack(windows).isEmpty());
    EXPECT_TRUE(context.goBack(windows).isEmpty());
}

TEST_F(WorkContextBack, After_going_back_the_windows_are_as_they_were_before_the_list_says_so)
{
    carryOut();
    context.goBack(windows);
    EXPECT_TRUE(at(1).isMinimized) << "the list is late";
    work(workGoal);
    EXPECT_EQ(restored(), (WindowNumbers{1, 2}));
    EXPECT_EQ(minimized(), (WindowNumbers{4}));
}

TEST_F(WorkContextBack, What_the_desktop_does_not_do_is_forgotten)
{
    set(1, true);
    for (int pass = 0; pass < 2; ++pass) {
        observe();
        EXPECT_EQ(restored(), (WindowNumbers{1, 2})) << pass;
    }
    observe();
    EXPECT_EQ(restored(), (WindowNumbers{1}));
    EXPECT_EQ(minimized(), WindowNumbers());
    EXPECT_FALSE(context.asRequested(windows).at(1).isMinimized);
}

TEST_F(WorkContextBack, Passes_while_the_desktop_is_asked_do_not_count)
{
    for (int pass = 0; pass < 9; ++pass)
        context.observe(windows, WorkContext::Requests::underWay);
    EXPECT_EQ(restored(), (WindowNumbers{1, 2}));
    EXPECT_EQ(minimized(), (WindowNumbers{4}));
}

TEST_F(WorkContextBack, The_same_goal_again_changes_nothing)
{
    carryOut();
    work(workGoal);
    EXPECT_EQ(restored(), (WindowNumbers{1, 2}));
    EXPECT_EQ(minimized(), (WindowNumbers{4}));
}

} // namespace
} // namespace kelpa::test
