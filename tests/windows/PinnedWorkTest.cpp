// Working on a goal that is pinned to a virtual desktop.
#include "windows/WorkContext.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

class PinnedWork : public testing::Test
{
protected:
    /// On desktop 1, which is the present one, unless another is given.
    static WindowItem window(WindowID id, std::optional<GoalID> goalID, int desktop = 1)
    {
        WindowItem item;
        item.id = id;
        item.goalID = goalID;
        item.desktopNumber = desktop;
        const bool isHere = desktop == 1 || desktop == everyVirtualDesktop;
        item.isOnScreen = isHere;
        if (!isHere)
            item.virtualDesktop = QString::number(desktop);
        return item;
    }

    static QList<WindowID> ids(const QList<WindowItem>& windows)
    {
        QList<WindowID> all;
        for (const WindowItem& each : windows)
            all.append(each.id);
        return all;
    }

    const GoalID goalID = GoalID::create();
    const NumberedDesktop third{.number = 3, .id = 13};
};

TEST_F(PinnedWork, Happens_on_the_desktop_of_the_pin_and_leaves_windows_elsewhere)
{
    const WindowArrangement arrangement = arrangementFor(
        goalID,
        {window(1, goalID), window(2, goalID, 3), window(3, std::nullopt), window(4, goalID, 3),
         window(5, std::nullopt, 3), window(6, std::nullopt, 2)},
        third);
    EXPECT_EQ(arrangement.desktop, third);
    EXPECT_EQ(ids(arrangement.raised), (QList<WindowID>{2, 4}));
    EXPECT_EQ(ids(arrangement.minimized), (QList<WindowID>{5}));
}

TEST_F(PinnedWork, Windows_on_all_desktops_are_there_as_well)
{
    const WindowArrangement arrangement = arrangementFor(
        goalID,
        {window(1, goalID, everyVirtualDesktop), window(2, std::nullopt, everyVirtualDesktop)},
        third);
    EXPECT_EQ(ids(arrangement.raised), (QList<WindowID>{1}));
    EXPECT_EQ(ids(arrangement.minimized), (QList<WindowID>{2}));
}

TEST_F(PinnedWork, On_the_present_desktop_only_what_shows_is_in_the_way)
{
    WindowItem hidden = window(3, std::nullopt);
    hidden.isOnScreen = false;
    const WindowArrangement arrangement = arrangementFor(
        goalID, {window(1, goalID), window(2, std::nullopt), hidden}, NumberedDesktop{.number = 1});
    EXPECT_EQ(ids(arrangement.raised), (QList<WindowID>{1}));
    EXPECT_EQ(ids(arrangement.minimized), (QList<WindowID>{2}));
}

TEST_F(PinnedWork, Without_a_window_of_the_goal_there_it_only_goes_there)
{
    for (const QList<WindowItem>& windows :
         {QList<WindowItem>{window(1, std::nullopt, 3)},
          QList<WindowItem>{window(1, std::nullopt, 3), window(2, goalID)}}) {
        const WindowArrangement arrangement = arrangementFor(goalID, windows, third);
        EXPECT_EQ(arrangement, (WindowArrangement{.desktop = third}));
        EXPECT_FALSE(arrangement.isEmpty());
    }
    EXPECT_TRUE(arrangementFor(goalID, {window(1, std::nullopt)}).isEmpty());
}

TEST_F(PinnedWork, Without_a_pin_no_desktop_is_shown_by_itself)
{
    const WindowArrangement arrangement =
        arrangementFor(goalID, {window(1, goalID, 3), window(2, std::nullopt, 3)});
    EXPECT_EQ(arrangement.desktop, std::nullopt);
    EXPECT_EQ(ids(arrangement.raised), (QList<WindowID>{1}));
    EXPECT_EQ(ids(arrangement.minimized), (QList<WindowID>{2}));
}

} // namespace
} // namespace kelpa
