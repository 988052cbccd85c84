#include "windows/WindowDiscovery.h"

#include "support/CaseName.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace kelpa::test {
namespace {

class WindowDiscoveryTest : public testing::Test
{
protected:
    QList<WindowItem> discover()
    {
        const auto source = desktop.openDiscoverySource();
        return WindowDiscovery::visibleWindows(*source, FakeDesktop::ownProcess);
    }

    QList<WindowID> discoveredIDs()
    {
        QList<WindowID> ids;
        for (const WindowItem& window : discover())
            ids.append(window.id);
        return ids;
    }

    /// The accessibility windows that the fake shows of a process.
    std::vector<AccessibilityWindow>& elementsOf(ProcessID process)
    {
        auto& elements = desktop.accessibilityWindows[process];
        if (!elements)
            elements.emplace();
        return *elements;
    }

    static AccessibilityWindow element(const Rect& frame, const std::optional<QString>& title)
    {
        AccessibilityWindow window;
        window.position = Point{frame.x, frame.y};
        window.size = Size{frame.width, frame.height};
        window.title = title;
        return window;
    }

    FakeDesktop desktop;
};

const QList<WindowID> nothing;

TEST_F(WindowDiscoveryTest, An_item_is_filled_from_the_list_the_application_and_the_match)
{
    WindowListEntry& entry = desktop.addWindow(7, 100, QStringLiteral("notes.txt"));
    entry.bounds = Rect{10, 20, 640, 480};
    AccessibilityWindow match = element({12, 18, 640, 480}, QStringLiteral("notes.txt - Editor"));
    match.document = QStringLiteral("file:///home/a/notes.txt");
    elementsOf(100).push_back(match);

    const QList<WindowItem> windows = discover();

    ASSERT_EQ(windows.size(), 1);
    WindowItem expected;
    expected.id = 7;
    expected.ownerName = QStringLiteral("App 100");
    expected.bundleIdentifier = QStringLiteral("org.example.App100");
    expected.title = QStringLiteral("notes.txt");
    expected.processIdentifier = 100;
    expected.bounds = {10, 20, 640, 480};
    expected.isOnScreen = true;
    expected.isMinimized = false;
    expected.accessibilityDocument = QStringLiteral("file:///home/a/notes.txt");
    EXPECT_EQ(windows.first(), expected);
}

TEST_F(WindowDiscoveryTest, The_order_is_that_of_the_list_also_when_entries_are_skipped)
{
    desktop.addWindow(3, 100, QStringLiteral("back"));
    desktop.addWindow(9, 101, QStringLiteral("skipped")).layer = 3;
    desktop.addWindow(1, 102, QStringLiteral("middle"));
    desktop.addWindow(2, 100, QStringLiteral("front"));

    EXPECT_EQ(discoveredIDs(), (QList<WindowID>{2, 1, 3}));
}

TEST_F(WindowDiscoveryTest, Nothing_is_found_when_the_list_cannot_be_had)
{
    desktop.addWindow(1, 100, QStringLiteral("a"));
    desktop.windowList = std::nullopt;

    EXPECT_EQ(discoveredIDs(), nothing);
}

TEST_F(WindowDiscoveryTest, Without_an_on_screen_list_no_window_counts_as_on_screen)
{
    desktop.addWindow(1, 100, QStringLiteral("a"));
    desktop.isOnScreenListAvailable = false;

    const QList<WindowItem> windows = discover();

    ASSERT_EQ(windows.size(), 1);
    EXPECT_FALSE(windows.first().isOnScreen);
}

struct SizeCase
{
    const char* name;
    double width;
    double height;
    bool isListed;
};

class WindowSizes : public WindowDiscoveryTest, public testing::WithParamInterface<SizeCase>
{};

TEST_P(WindowSizes, Decide_whether_a_window_is_listed)
{
    desktop.addWindow(1, 100, QStringLiteral("a")).bounds =
        Rect{0, 0, GetParam().width, GetParam().height};

    EXPECT_EQ(discover().size(), GetParam().isListed ? 1 : 0);
}

const double nan = std::numeric_limits<double>::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(WindowDiscovery, WindowSizes,
                         testing::Values(SizeCase{"exactly_80_by_50", 80, 50, true},
                                         SizeCase{"too_narrow", 79.9, 200, false},
                                         SizeCase{"too_low", 200, 49.9, false},
                                         SizeCase{"width_not_a_number", nan, 200, false},
                                         SizeCase{"height_not_a_number", 200, nan, false},
                                         SizeCase{"negative", -200, -200, false}),
                         caseName);

struct EntryCase
{
    const char* name;
    void (*change)(WindowListEntry&);
    bool isListed;
};

class WindowEntries : public WindowDiscoveryTest, public testing::WithParamInterface<EntryCase>
{};

TEST_P(WindowEntries, Decide_whether_a_window_is_listed)
{
    GetParam().change(desktop.addWindow(1, 100, QStringLiteral("a")));

    EXPECT_EQ(discover().size(), GetParam().isListed ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    WindowDiscovery, WindowEntries,
    testing::Values(
        EntryCase{"without_number", [](WindowListEntry& e) { e.number.reset(); }, false},
        EntryCase{"without_owner_process", [](WindowListEntry& e) { e.ownerProcess.reset(); },
                  false},
        EntryCase{"without_owner_name", [](WindowListEntry& e) { e.ownerName.reset(); }, false},
        EntryCase{"without_bounds", [](WindowListEntry& e) { e.bounds.reset(); }, false},
        EntryCase{"of_this_very_process",
                  [](WindowListEntry& e) { e.ownerProcess = FakeDesktop::ownProcess; }, false},
        EntryCase{"of_a_process_that_is_gone", [](WindowListEntry& e) { e.ownerProcess = 999; },
                  false},
        EntryCase{"without_layer", [](WindowListEntry& e) { e.layer.reset(); }, true},
        EntryCase{"on_layer_3", [](WindowListEntry& e) { e.layer = 3; }, false},
        EntryCase{"below_layer_0", [](WindowListEntry& e) { e.layer = -1; }, false},
        EntryCase{"without_alpha", [](WindowListEntry& e) { e.alpha.reset(); }, true},
        EntryCase{"with_alpha_0", [](WindowListEntry& e) { e.alpha = 0; }, false},
        EntryCase{"with_alpha_that_is_no_number", [](WindowListEntry& e) { e.alpha = nan; }, false},
        EntryCase{"hardly_visible", [](WindowListEntry& e) { e.alpha = 0.01; }, true},
        EntryCase{"without_name", [](WindowListEntry& e) { e.name.reset(); }, true}),
    caseName);

TEST_F(WindowDiscoveryTest, This_process_is_left_out_whatever_its_windows_size)
{
    desktop.addWindow(1, FakeDesktop::ownProcess, QStringLiteral("Kelpa")).bounds =
        Rect{0, 0, 4000, 3000};

    EXPECT_EQ(discoveredIDs(), nothing);
}

TEST_F(WindowDiscoveryTest, Only_regular_applications_are_listed)
{
    desktop.addWindow(1, 100, QStringLiteral("regular"));
    desktop.addWindow(2, 101, QStringLiteral("accessory"));
    desktop.addWindow(3, 102, QStringLiteral("background"));
    desktop.applications[101].activationPolicy = ActivationPolicy::accessory;
    desktop.applications[102].activationPolicy = ActivationPolicy::prohibited;

    EXPECT_EQ(discoveredIDs(), QList<WindowID>{1});
}

TEST_F(WindowDiscoveryTest, A_window_without_name_has_an_empty_title_also_when_it_is_matched)
{
    WindowListEntry& entry = desktop.addWindow(1, 100, {});
    entry.name.reset();
    elementsOf(100).push_back(element(*entry.bounds, QStringLiteral("Accessible title")));

    const QList<WindowItem> windows = discover();

    ASSERT_EQ(windows.size(), 1);
    EXPECT_EQ(windows.first().title, QString());
}

TEST_F(WindowDiscoveryTest, An_application_without_identifier_is_listed_without_one)
{
    desktop.addWindow(1, 100, QStringLiteral("a"));
    desktop.applications[100].bundleIdentifier.reset();

    const QList<WindowItem> windows = discover();

    ASSERT_EQ(windows.size(), 1);
    EXPECT_EQ(windows.first().bundleIdentifier, std::nullopt);
}

TEST_F(WindowDiscoveryTest, A_minimised_window_is_listed_as_off_screen_and_minimised)
{
    desktop.addAccessibleWindow(1, 100, QStringLiteral("a"));
    desktop.onScreen.remove(1);
    elementsOf(100).front().isMinimized = true;

    const QList<WindowItem> windows = discover();

    ASSERT_EQ(windows.size(), 1);
    EXPECT_FALSE(windows.first().isOnScreen);
    EXPECT_TRUE(windows.first().isMinimized);
}

TEST_F(WindowDiscoveryTest, An_unreadable_minimised_state_counts_as_not_minimised)
{
    desktop.addAccessibleWindow(1, 100, QStringLiteral("a"));
    elementsOf(100).front().isMinimized.reset();

    ASSERT_EQ(discover().size(), 1);
    EXPECT_FALSE(discover().first().isMinimized);
}

TEST_F(WindowDiscoveryTest, Without_permission_windows_are_kept_without_what_only_it_gives)
{
    desktop.addAccessibleWindow(1, 100, QStringLiteral("a"));
    elementsOf(100).front().isMinimized = true;
    elementsOf(100).front().document = QStringLiteral("file:///a");
    desktop.isAccessibilityGranted = false;

    const QList<WindowItem> windows = discover();

    ASSERT_EQ(windows.size(), 1);
    EXPECT_FALSE(windows.first().isMinimized);
    EXPECT_EQ(windows.first().accessibilityDocument, std::nullopt);
    EXPECT_FALSE(desktop.calls.contains(QStringLiteral("accessibilityWindows 100")));
}

TEST_F(WindowDiscoveryTest, Each_process_is_asked_once_also_when_it_shows_nothing)
{
    desktop.addWindow(1, 100, QStringLiteral("a"));
    desktop.addWindow(2, 100, QStringLiteral("b"));
    desktop.addAccessibleWindow(3, 101, QStringLiteral("c"));
    desktop.addAccessibleWindow(4, 101, QStringLiteral("d"));
    desktop.accessibilityWindows[102] = std::nullopt;
    desktop.addWindow(5, 102, QStringLiteral("e"));
    desktop.addWindow(6, 102, QStringLiteral("f"));

    EXPECT_EQ(discover().size(), 6);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("accessibilityWindows 100")), 1);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("accessibilityWindows 101")), 1);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("accessibilityWindows 102")), 1);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("windowList all")), 1);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("windowList onScreen")), 1);
}

TEST_F(WindowDiscoveryTest, The_next_pass_asks_again)
{
    desktop.addAccessibleWindow(1, 100, QStringLiteral("a"));
    discover();
    elementsOf(100).front().isMinimized = true;

    EXPECT_TRUE(discover().first().isMinimized);
}

TEST_F(WindowDiscoveryTest, Two_titles_that_contain_the_name_fall_back_to_the_frame)
{
    WindowListEntry& entry = desktop.addWindow(1, 100, QStringLiteral("Report"));
    entry.bounds = Rect{100, 100, 500, 400};
    AccessibilityWindow right = element({100, 100, 500, 400}, QStringLiteral("Report"));
    right.document = QStringLiteral("file:///right");
    elementsOf(100).push_back(element({700, 100, 500, 400}, QStringLiteral("Report (copy)")));
    elementsOf(100).push_back(right);

    const QList<WindowItem> windows = discover();

    ASSERT_EQ(windows.size(), 1);
    EXPECT_EQ(windows.first().accessibilityDocument, QStringLiteral("file:///right"));
}

TEST_F(WindowDiscoveryTest, A_window_that_neither_title_nor_frame_singles_out_is_dropped)
{
    WindowListEntry& entry = desktop.addWindow(1, 100, QStringLiteral("Report"));
    elementsOf(100).push_back(element(*entry.bounds, QStringLiteral("Report")));
    elementsOf(100).push_back(element(*entry.bounds, QStringLiteral("Report (copy)")));

    EXPECT_EQ(discoveredIDs(), nothing);
}

TEST_F(WindowDiscoveryTest, One_title_wins_over_frames)
{
    WindowListEntry& entry = desktop.addWindow(1, 100, QStringLiteral("Report"));
    AccessibilityWindow titled = element({2000, 2000, 300, 300}, QStringLiteral("My Report.odt"));
    titled.document = QStringLiteral("file:///by-title");
    elementsOf(100).push_back(element(*entry.bounds, QStringLiteral("Other")));
    elementsOf(100).push_back(titled);

    const QList<WindowItem> windows = discover();

    ASSERT_EQ(windows.size(), 1);
    EXPECT_EQ(windows.first().accessibilityDocument, QStringLiteral("file:///by-title"));
}

struct TitleCase
{
    const char* name;
    const char16_t* listTitle;
    const char16_t* accessibilityTitle;
    bool matches;
};

class WindowTitles : public WindowDiscoveryTest, public testing::WithParamInterface<TitleCase>
{};

TEST_P(WindowTitles, Match_or_do_not)
{
    desktop.addWindow(1, 100, QString::fromUtf16(GetParam().listTitle));
    // Elsewhere, so that only the title can match.
    elementsOf(100).push_back(
        element({5000, 5000, 300, 300}, QString::fromUtf16(GetParam().accessibilityTitle)));

    EXPECT_EQ(discover().size(), GetParam().matches ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    WindowDiscovery, WindowTitles,
    testing::Values(TitleCase{"equal", u"Inbox", u"Inbox", true},
                    TitleCase{"begins_with", u"Inbox", u"Inbox (3)", true},
                    TitleCase{"contains", u"Inbox", u"Mail: Inbox (3)", true},
                    TitleCase{"the_other_way_round", u"Mail: Inbox", u"Inbox", false},
                    TitleCase{"white_space_around", u" Inbox\n", u"\tInbox ", true},
                    TitleCase{"case_differs", u"inbox", u"Inbox", false},
                    TitleCase{"only_spaces_in_the_list", u"   ", u"Inbox", false},
                    TitleCase{"only_spaces_in_both", u"   ", u"   ", false},
                    TitleCase{"only_spaces_on_the_accessibility_side", u"Inbox", u"   ", false}),
    caseName);

TEST_F(WindowDiscoveryTest, An_element_without_title_can_match_by_frame_only)
{
    WindowListEntry& entry = desktop.addWindow(1, 100, QStringLiteral("Inbox"));
    elementsOf(100).push_back(element(*entry.bounds, std::nullopt));

    EXPECT_EQ(discoveredIDs(), QList<WindowID>{1});
}

struct FrameCase
{
    const char* name;
    Rect frame;
    bool matches;
};

class WindowFrames : public WindowDiscoveryTest, public testing::WithParamInterface<FrameCase>
{};

TEST_P(WindowFrames, Match_within_eight_points_in_every_measure)
{
    desktop.addWindow(1, 100, {}).bounds = Rect{100, 100, 500, 400};
    elementsOf(100).push_back(element(GetParam().frame, QStringLiteral("x")));

    EXPECT_EQ(discover().size(), GetParam().matches ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(WindowDiscovery, WindowFrames,
                         testing::Values(FrameCase{"equal", {100, 100, 500, 400}, true},
                                         FrameCase{"eight_off_in_all", {108, 92, 508, 392}, true},
                                         FrameCase{"x_too_far", {108.1, 100, 500, 400}, false},
                                         FrameCase{"y_too_far", {100, 91.9, 500, 400}, false},
                                         FrameCase{"too_wide", {100, 100, 508.1, 400}, false},
                                         FrameCase{"too_low", {100, 100, 500, 391.9}, false}),
                         caseName);

TEST_F(WindowDiscoveryTest, An_application_that_shows_no_windows_keeps_its_entries)
{
    desktop.addWindow(1, 100, QStringLiteral("a"));
    desktop.accessibilityWindows[100] = std::vector<AccessibilityWindow>();
    desktop.addWindow(2, 101, QStringLiteral("b"));
    desktop.accessibilityWindows[101] = std::nullopt;

    EXPECT_EQ(discoveredIDs(), (QList<WindowID>{2, 1}));
}

struct ElementCase
{
    const char* name;
    void (*change)(AccessibilityWindow&);
};

class UnusableElements : public WindowDiscoveryTest, public testing::WithParamInterface<ElementCase>
{};

TEST_P(UnusableElements, Are_passed_over_so_that_the_application_counts_as_showing_none)
{
    desktop.addAccessibleWindow(1, 100, QStringLiteral("a"));
    AccessibilityWindow& onlyElement = elementsOf(100).front();
    onlyElement.isMinimized = true;
    GetParam().change(onlyElement);

    const QList<WindowItem> windows = discover();

    ASSERT_EQ(windows.size(), 1);
    EXPECT_FALSE(windows.first().isMinimized);
}

INSTANTIATE_TEST_SUITE_P(
    WindowDiscovery, UnusableElements,
    testing::Values(ElementCase{"without_position",
                                [](AccessibilityWindow& e) { e.position.reset(); }},
                    ElementCase{"without_size", [](AccessibilityWindow& e) { e.size.reset(); }},
                    ElementCase{"too_narrow",
                                [](AccessibilityWindow& e) {
                                    e.size = Size{79.9, 300};
                                }},
                    ElementCase{"too_low",
                                [](AccessibilityWindow& e) {
                                    e.size = Size{300, 49.9};
                                }},
                    ElementCase{"not_a_number",
                                [](AccessibilityWindow& e) {
                                    e.size = Size{nan, 300};
                                }}),
    caseName);

TEST_F(WindowDiscoveryTest, A_window_number_decides_the_match_against_title_and_frame)
{
    WindowListEntry& entry = desktop.addWindow(1, 100, QStringLiteral("Report"));
    AccessibilityWindow same = element({4000, 4000, 90, 60}, QStringLiteral("Other"));
    same.windowNumber = 1;
    same.document = QStringLiteral("file:///same");
    AccessibilityWindow alike = element(*entry.bounds, QStringLiteral("Report"));
    alike.windowNumber = 2;
    elementsOf(100).push_back(alike);
    elementsOf(100).push_back(same);

    const QList<WindowItem> windows = discover();

    ASSERT_EQ(windows.size(), 1);
    EXPECT_EQ(windows.first().accessibilityDocument, QStringLiteral("file:///same"));
}

TEST_F(WindowDiscoveryTest, Two_maximised_windows_with_one_title_are_both_listed_by_their_numbers)
{
    for (const WindowID id : {1U, 2U}) {
        WindowListEntry& entry = desktop.addWindow(id, 100, QStringLiteral("Same"));
        entry.bounds = Rect{0, 0, 1920, 1080};
        AccessibilityWindow match = element(*entry.bounds, QStringLiteral("Same"));
        match.windowNumber = id;
        match.isMinimized = id == 2;
        elementsOf(100).push_back(match);
    }

    const QList<WindowItem> windows = discover();

    ASSERT_EQ(windows.size(), 2);
    EXPECT_EQ(windows[0].id, 2U);
    EXPECT_TRUE(windows[0].isMinimized);
    EXPECT_EQ(windows[1].id, 1U);
    EXPECT_FALSE(windows[1].isMinimized);
}

TEST_F(WindowDiscoveryTest, An_element_that_is_another_window_by_its_number_never_matches)
{
    WindowListEntry& entry = desktop.addWindow(1, 100, QStringLiteral("Report"));
    AccessibilityWindow other = element(*entry.bounds, QStringLiteral("Report"));
    other.windowNumber = 2;
    elementsOf(100).push_back(other);

    EXPECT_EQ(discoveredIDs(), nothing);
}

TEST_F(WindowDiscoveryTest, A_window_that_vanishes_within_the_pass_is_off_screen_and_unmatched)
{
    desktop.addWindow(1, 100, QStringLiteral("a"));
    desktop.inTheMiddleOfAPass = [this] { desktop.removeWindow(1); };

    const QList<WindowItem> windows = discover();

    ASSERT_EQ(windows.size(), 1);
    EXPECT_FALSE(windows.first().isOnScreen);
}

TEST_F(WindowDiscoveryTest, An_application_that_quits_within_the_pass_loses_its_windows)
{
    desktop.addWindow(1, 100, QStringLiteral("a"));
    desktop.addWindow(2, 101, QStringLiteral("b"));
    desktop.inTheMiddleOfAPass = [this] { desktop.applications.remove(100); };

    EXPECT_EQ(discoveredIDs(), QList<WindowID>{2});
}

} // namespace
} // namespace kelpa::test
