#include "platform/x11/discovery/ClientWindow.h"

#include "model/WindowItem.h"
#include "platform/PointScale.h"
#include "support/CaseName.h"

#include <gtest/gtest.h>

using namespace kelpa;
using namespace kelpa::x11;

namespace {

ClientWindow ofKind(WindowKind kind)
{
    ClientWindow window;
    window.kind = kind;
    return window;
}

ClientWindow shown()
{
    ClientWindow window;
    window.isViewable = true;
    window.desktop = 1;
    return window;
}

const DesktopContext secondDesktop{1, true};

} // namespace

TEST(WindowLayer, Normal_windows_and_dialogs_are_on_layer_0)
{
    EXPECT_EQ(layer(ofKind(WindowKind::normal)), 0);
    EXPECT_EQ(layer(ofKind(WindowKind::dialog)), 0);
    EXPECT_EQ(layer(ofKind(WindowKind::unspecified)), 0);
}

TEST(WindowLayer, Other_kinds_are_on_other_layers)
{
    EXPECT_EQ(layer(ofKind(WindowKind::auxiliary)), 3);
    EXPECT_EQ(layer(ofKind(WindowKind::dock)), 20);
    EXPECT_EQ(layer(ofKind(WindowKind::passing)), 101);
    EXPECT_EQ(layer(ofKind(WindowKind::desktop)), -1);
}

TEST(WindowLayer, An_override_redirect_window_is_not_on_layer_0)
{
    ClientWindow window = ofKind(WindowKind::normal);
    window.isOverrideRedirect = true;
    EXPECT_EQ(layer(window), 101);
}

TEST(WindowLayer, A_window_off_the_task_list_is_not_on_layer_0)
{
    ClientWindow window = ofKind(WindowKind::normal);
    window.isOffTaskList = true;
    EXPECT_EQ(layer(window), 1);
    window.kind = WindowKind::dock;
    EXPECT_EQ(layer(window), 20);
}

TEST(WindowVisibility, A_viewable_window_of_the_current_desktop_is_on_screen)
{
    EXPECT_TRUE(isOnScreen(shown(), secondDesktop));
}

TEST(WindowVisibility, A_window_of_another_desktop_is_not_on_screen)
{
    EXPECT_FALSE(isOnScreen(shown(), {0, true}));
}

TEST(WindowVisibility, A_sticky_window_is_on_every_desktop)
{
    ClientWindow window = shown();
    window.desktop = 0xFFFFFFFF;
    EXPECT_TRUE(isOnScreen(window, {7, true}));
}

TEST(WindowVisibility, Without_desktops_only_the_rest_counts)
{
    ClientWindow window = shown();
    EXPECT_TRUE(isOnScreen(window, {std::nullopt, true}));
    window.desktop.reset();
    EXPECT_TRUE(isOnScreen(window, secondDesktop));
}

TEST(WindowVisibility, A_hidden_window_is_minimized_although_it_is_still_mapped)
{
    ClientWindow window = shown();
    window.isHidden = true;
    EXPECT_TRUE(isMinimized(window, secondDesktop));
    EXPECT_FALSE(isOnScreen(window, secondDesktop));
}

TEST(WindowVisibility, An_unmapped_window_is_neither_on_screen_nor_minimized)
{
    ClientWindow window = shown();
    window.isViewable = false;
    EXPECT_FALSE(isOnScreen(window, secondDesktop));
    EXPECT_FALSE(isMinimized(window, secondDesktop));
}

TEST(WindowVisibility, Iconic_means_minimized_only_under_a_manager_without_the_hidden_state)
{
    ClientWindow window = shown();
    window.isIconic = true;
    EXPECT_FALSE(isMinimized(window, {1, true}));
    EXPECT_TRUE(isMinimized(window, {1, false}));
}

TEST(VirtualDesktop, A_window_of_another_desktop_names_it_or_says_its_number)
{
    ClientWindow window = shown();
    window.desktop = 2;
    DesktopContext context{0, true};
    EXPECT_EQ(virtualDesktop(window, context), QStringLiteral("3"));
    context.desktopNames = {QStringLiteral("Mail"), QStringLiteral("Web"),
                            QStringLiteral(" Music "), QStringLiteral(" ")};
    EXPECT_EQ(virtualDesktop(window, context), QStringLiteral("Music"));
    window.desktop = 3;
    EXPECT_EQ(virtualDesktop(window, context), QStringLiteral("4"));
    // As a client writes that takes the number for a signed one.
    window.desktop = 0xFFFFFFFE;
    EXPECT_EQ(virtualDesktop(window, context), QStringLiteral("4294967295"));
}

TEST(VirtualDesktop, It_is_absent_on_the_present_desktop_on_all_of_them_and_without_any)
{
    ClientWindow window = shown();
    EXPECT_EQ(virtualDesktop(window, {1, true}), std::nullopt);
    EXPECT_EQ(virtualDesktop(window, {std::nullopt, true}), std::nullopt);
    window.desktop = everyDesktop;
    EXPECT_EQ(virtualDesktop(window, {0, true}), std::nullopt);
    window.desktop.reset();
    EXPECT_EQ(virtualDesktop(window, {0, true}), std::nullopt);
}

TEST(VirtualDesktop, Its_number_is_known_where_the_window_manager_has_desktops)
{
    ClientWindow window = shown();
    DesktopContext context{0, true};
    window.desktop = 2;
    EXPECT_EQ(desktopNumber(window, context), std::nullopt);
    context.desktopCount = 4;
    EXPECT_EQ(desktopNumber(window, context), 3);
    window.desktop = everyDesktop;
    EXPECT_EQ(desktopNumber(window, context), everyVirtualDesktop);
    window.desktop = 0xFFFFFFFE;
    EXPECT_EQ(desktopNumber(window, context), std::nullopt);
    window.desktop.reset();
    EXPECT_EQ(desktopNumber(window, context), std::nullopt);
}

TEST(VirtualDesktop, There_are_as_many_as_the_window_manager_says_but_not_beyond_a_hundred)
{
    DesktopContext context{0, true};
    context.desktopNames = {QStringLiteral(" Mail "), QString(), QStringLiteral("Web")};
    EXPECT_EQ(virtualDesktops(context), QStringList());
    context.desktopCount = 2;
    EXPECT_EQ(virtualDesktops(context), (QStringList{QStringLiteral("Mail"), QString()}));
    context.desktopCount = 0xFFFFFFFF;
    EXPECT_EQ(virtualDesktops(context).size(), 100);
}

namespace {

struct AnswerCase
{
    const char* name;
    std::vector<ClientWindow> windows;
    std::set<std::uint32_t> awaiting;
};

class AwaitedAnswers : public testing::TestWithParam<AnswerCase>
{};

ClientWindow plain(std::uint32_t id)
{
    ClientWindow window = shown();
    window.window = id;
    return window;
}
ClientWindow belonging(std::uint32_t id, std::uint32_t owner, WindowKind kind)
{
    ClientWindow window = plain(id);
    window.owner = owner;
    window.kind = kind;
    return window;
}
ClientWindow dialogOf(std::uint32_t id, std::uint32_t owner)
{
    return belonging(id, owner, WindowKind::dialog);
}
ClientWindow modal(ClientWindow window)
{
    window.isModal = true;
    return window;
}
ClientWindow offTaskList(ClientWindow window)
{
    window.isOffTaskList = true;
    return window;
}
ClientWindow unmanaged(ClientWindow window)
{
    window.isOverrideRedirect = true;
    return window;
}
ClientWindow ofProcess(ClientWindow window, ProcessID process)
{
    window.process = process;
    return window;
}

} // namespace

TEST_P(AwaitedAnswers, Mark_the_window_that_the_dialog_belongs_to)
{
    EXPECT_EQ(windowsAwaitingAnswer(GetParam().windows), GetParam().awaiting);
}

INSTANTIATE_TEST_SUITE_P(
    ClientWindow, AwaitedAnswers,
    testing::Values(
        AnswerCase{"none", {plain(1), plain(2)}, {}},
        AnswerCase{"a_dialog", {dialogOf(2, 1), plain(1), plain(3)}, {1}},
        AnswerCase{"off_the_task_list", {offTaskList(dialogOf(2, 1)), plain(1)}, {1}},
        AnswerCase{"modal_without_a_type",
                   {modal(belonging(2, 1, WindowKind::unspecified)), plain(1)},
                   {1}},
        AnswerCase{"an_ordinary_window_that_belongs_to_another",
                   {belonging(2, 1, WindowKind::normal), plain(1)},
                   {}},
        AnswerCase{"a_palette", {modal(belonging(2, 1, WindowKind::auxiliary)), plain(1)}, {}},
        AnswerCase{"a_menu", {unmanaged(dialogOf(2, 1)), plain(1)}, {}},
        AnswerCase{"a_dialog_of_a_dialog", {dialogOf(3, 2), dialogOf(2, 1), plain(1)}, {1, 2}},
        AnswerCase{"a_dialog_of_a_palette",
                   {dialogOf(3, 2), belonging(2, 1, WindowKind::auxiliary), plain(1)},
                   {1}},
        AnswerCase{"of_another_client_as_from_a_portal",
                   {ofProcess(dialogOf(2, 1), 70), ofProcess(plain(1), 71)},
                   {1}},
        AnswerCase{"without_an_owner", {modal(plain(2)), plain(1)}, {}},
        AnswerCase{"of_a_window_that_is_gone", {dialogOf(2, 9), plain(1)}, {}},
        AnswerCase{"of_itself", {dialogOf(1, 1), plain(2)}, {}},
        AnswerCase{"of_itself_through_another",
                   {offTaskList(dialogOf(1, 2)), offTaskList(dialogOf(2, 1)), plain(3)},
                   {}},
        AnswerCase{"of_one_another", {dialogOf(1, 2), dialogOf(2, 1)}, {1, 2}}),
    test::caseName);

namespace {

struct BoundsCase
{
    const char* name;
    double pixelsPerPoint;
    Rect bounds;
};

class WindowBounds : public testing::TestWithParam<BoundsCase>
{};

} // namespace

TEST_P(WindowBounds, Are_the_frame_in_points)
{
    ClientWindow window;
    window.frame = {30, -60, 150, 75};
    DesktopContext context;
    context.pixelsPerPoint = GetParam().pixelsPerPoint;
    EXPECT_EQ(bounds(window, context), GetParam().bounds);
}

INSTANTIATE_TEST_SUITE_P(ClientWindow, WindowBounds,
                         testing::Values(BoundsCase{"at_1x", 1, {30, -60, 150, 75}},
                                         BoundsCase{"at_1_5x", 1.5, {20, -40, 100, 50}},
                                         BoundsCase{"at_2x", 2, {15, -30, 75, 37.5}}),
                         test::caseName);

TEST(PointScale, Is_one_pixel_a_point_until_it_is_known_and_ignores_what_is_no_scale)
{
    PointScale scale;
    EXPECT_EQ(scale.pixelsPerPoint(), 1);
    scale.setPixelsPerPoint(1.5);
    scale.setPixelsPerPoint(0);
    EXPECT_EQ(scale.pixelsPerPoint(), 1.5);
}
