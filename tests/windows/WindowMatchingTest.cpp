// Matching the accessibility windows of a process with the windows of the list.
#include "support/CaseName.h"
#include "windows/WindowDiscoveryFixture.h"

namespace kelpa::test {
namespace {

using WindowMatchingTest = WindowDiscoveryTest;

TEST_F(WindowMatchingTest, Two_titles_that_contain_the_name_fall_back_to_the_frame)
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

TEST_F(WindowMatchingTest, A_window_that_neither_title_nor_frame_singles_out_is_dropped)
{
    WindowListEntry& entry = desktop.addWindow(1, 100, QStringLiteral("Report"));
    elementsOf(100).push_back(element(*entry.bounds, QStringLiteral("Report")));
    elementsOf(100).push_back(element(*entry.bounds, QStringLiteral("Report (copy)")));

    EXPECT_EQ(discoveredIDs(), nothing);
}

TEST_F(WindowMatchingTest, One_title_wins_over_frames)
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

TEST_F(WindowMatchingTest, An_element_without_title_can_match_by_frame_only)
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

TEST_P(WindowFrames, Match_within_eight_units_in_every_measure)
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

TEST_F(WindowMatchingTest, An_application_that_shows_no_windows_keeps_its_entries)
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

TEST_F(WindowMatchingTest, A_window_number_decides_the_match_against_title_and_frame)
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

TEST_F(WindowMatchingTest, Two_maximised_windows_with_one_title_are_both_listed_by_their_numbers)
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

TEST_F(WindowMatchingTest, An_element_that_is_another_window_by_its_number_never_matches)
{
    WindowListEntry& entry = desktop.addWindow(1, 100, QStringLiteral("Report"));
    AccessibilityWindow other = element(*entry.bounds, QStringLiteral("Report"));
    other.windowNumber = 2;
    elementsOf(100).push_back(other);

    EXPECT_EQ(discoveredIDs(), nothing);
}

} // namespace
} // namespace kelpa::test
