#include "platform/qt/ToolkitOwnWindow.h"

#include <gtest/gtest.h>

#include <QWindow>

namespace kelpa::test {
namespace {

TEST(ToolkitOwnWindow, Comes_back_from_being_minimised_in_the_state_that_it_had)
{
    QWindow window;
    window.setWindowStates(Qt::WindowMinimized | Qt::WindowMaximized);
    window.setVisible(true);
    ToolkitOwnWindow desktop;
    desktop.requestFront(window, {});
    EXPECT_EQ(window.windowStates(), Qt::WindowMaximized);
}

TEST(ToolkitOwnWindow, Nobody_tells_whether_it_is_covered)
{
    QWindow window;
    EXPECT_EQ(ToolkitOwnWindow().watchOcclusion(window, [](bool) { FAIL(); }), nullptr);
}

} // namespace
} // namespace kelpa::test
