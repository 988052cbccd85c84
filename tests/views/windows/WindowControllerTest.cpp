// The windows of the board as QML sees them.
#include "views/windows/WindowController.h"

#include "support/TwoGoalsFixture.h"
#include "views/models/ColumnID.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class Windows : public TwoGoalsFixture
{
protected:
    WindowController windows{store()};
    const QString unassigned = columnText(std::nullopt);
};

TEST_F(Windows, The_menu_moves_a_window)
{
    windows.moveWindow(7, second.text());
    EXPECT_EQ(goalOfWindow(), second);
    windows.moveWindow(7, QStringLiteral("no column"));
    EXPECT_EQ(goalOfWindow(), second);
    windows.moveWindow(7, unassigned);
    EXPECT_EQ(goalOfWindow(), std::nullopt);
}

TEST_F(Windows, A_window_is_brought_forward_and_selected)
{
    windows.focusWindow(7);
    scheduler.advance(0ms);
    EXPECT_EQ(store().boardNavigation().selectedWindowID, WindowID{7});
    EXPECT_TRUE(desktop.calls.contains(QStringLiteral("raise Report")));
}

TEST_F(Windows, A_window_that_has_gone_is_neither_brought_forward_nor_closed)
{
    desktop.calls.clear();
    windows.focusWindow(8);
    windows.closeWindowProcess(8);
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls, QStringList());
    EXPECT_EQ(store().boardNavigation().selectedWindowID, std::nullopt);
}

TEST_F(Windows, Closing_a_window_asks_its_process_to_quit)
{
    windows.closeWindowProcess(7);
    scheduler.advance(0ms);
    EXPECT_TRUE(desktop.calls.contains(QStringLiteral("quit 100")));
}

TEST_F(Windows, A_goal_is_made_for_a_window)
{
    windows.createGoalForWindow(QStringLiteral("Third"), 7);
    ASSERT_TRUE(goalOfWindow());
    EXPECT_EQ(goal(*goalOfWindow()).title, QStringLiteral("Third"));
}

TEST_F(Windows, A_preview_is_shared_with_the_store)
{
    EXPECT_TRUE(windows.preview(7).isNull());
    desktop.captureSizes.insert(7, {640, 480});
    store().refreshPreviews(scheduler.now());
    scheduler.advance(0ms);
    EXPECT_EQ(windows.preview(7).cacheKey(), store().previews().value(7).image.cacheKey());
    EXPECT_EQ(windows.preview(7).size(), QSize(128, 72));
}

} // namespace
} // namespace kelpa::test
