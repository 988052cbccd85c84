#include "platform/wayland/wlr/WlrSnapshot.h"

#include "platform/ApplicationResolver.h"
#include "windows/WindowDiscovery.h"

#include <gtest/gtest.h>

#include <limits>

namespace kelpa::test {
namespace {

using wayland::NumberedToplevel;
using wayland::processOf;
using wayland::WlrSnapshot;

class EditorResolver : public ApplicationResolver
{
public:
    ResolvedApplication resolve(const ApplicationClues& clues) override
    {
        if (clues.gtkApplicationID != QStringLiteral("org.editor"))
            return {};
        return {.desktopEntryID = QStringLiteral("org.editor"), .name = QStringLiteral("Editor")};
    }
};

NumberedToplevel numbered(WindowID number, const QString& appID, bool isMinimized = false)
{
    NumberedToplevel window;
    window.number = number;
    window.window.id = number + 100;
    window.window.title = QStringLiteral("title");
    window.window.appID = appID;
    window.window.isMinimized = isMinimized;
    return window;
}

TEST(WlrSnapshot, Its_windows_are_on_the_board_and_kelpas_own_is_not)
{
    EditorResolver resolver;
    WlrSnapshot source(
        {numbered(7, QStringLiteral("org.editor")), numbered(8, QStringLiteral("kelpa")),
         numbered(9, QStringLiteral("other"), true), numbered(10, QStringLiteral("org.kelpa"))},
        {QStringLiteral("org.kelpa"), QStringLiteral("kelpa")}, resolver);
    const QList<WindowItem> windows = WindowDiscovery::visibleWindows(source, 4711);
    ASSERT_EQ(windows.size(), 2);
    EXPECT_EQ(windows.at(0).id, 7U);
    EXPECT_EQ(windows.at(0).ownerName, QStringLiteral("Editor"));
    EXPECT_EQ(windows.at(0).bundleIdentifier, QStringLiteral("org.editor"));
    EXPECT_EQ(windows.at(0).windowClass, QStringLiteral("org.editor"));
    EXPECT_TRUE(windows.at(0).isOnScreen);
    EXPECT_FALSE(windows.at(0).isMinimized);
    EXPECT_EQ(windows.at(1).id, 9U);
    EXPECT_EQ(windows.at(1).ownerName, QStringLiteral("other"));
    EXPECT_FALSE(windows.at(1).isOnScreen);
    EXPECT_TRUE(windows.at(1).isMinimized);
}

TEST(WlrSnapshot, No_two_windows_share_what_stands_for_their_process)
{
    EXPECT_EQ(processOf(numbered(7, {})), -7);
    EXPECT_EQ(processOf(numbered(0x7FFF'FFFF, {})), -std::numeric_limits<ProcessID>::max());
    EXPECT_EQ(processOf(numbered(0x8000'0000, {})), std::nullopt);
    EXPECT_EQ(processOf(NumberedToplevel{}), std::nullopt);
}

TEST(WlrSnapshot, Without_a_list_there_is_none)
{
    WlrSnapshot source;
    EXPECT_EQ(source.windowList(WindowListScope::all).has_value(), false);
    EXPECT_EQ(source.windowList(WindowListScope::onScreen).has_value(), false);
    EXPECT_FALSE(source.isAccessibilityTrusted());
}

} // namespace
} // namespace kelpa::test
