#include "support/CaseName.h"
#include "windows/WindowDiscoveryFixture.h"

#include <QMap>

namespace kelpa::test {
namespace {

TEST_F(WindowDiscoveryTest, An_item_is_filled_from_the_list_the_application_and_the_match)
{
    WindowListEntry& entry = desktop.addWindow(7, 100, QStringLiteral("notes.txt"));
    entry.bounds = Rect{10, 20, 640, 480};
    entry.iconRevision = 3;
    entry.role = QStringLiteral("main");
    entry.instance = QStringLiteral("notes");
    entry.windowClass = QStringLiteral("Notes");
    entry.sessionID = QStringLiteral("10a1");
    entry.virtualDesktop = QStringLiteral("Web");
    entry.isAwaitingAnswer = true;
    entry.dialogOf = 9;
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
    expected.iconRevision = 3;
    expected.role = QStringLiteral("main");
    expected.instance = QStringLiteral("notes");
    expected.windowClass = QStringLiteral("Notes");
    expected.sessionID = QStringLiteral("10a1");
    expected.virtualDesktop = QStringLiteral("Web");
    expected.isAwaitingAnswer = true;
    expected.dialogOf = 9;
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

TEST_F(WindowDiscoveryTest, A_window_that_is_listed_twice_is_found_once_where_it_came_first)
{
    desktop.addWindow(1, 100, QStringLiteral("late"));
    desktop.addWindow(2, 100, QStringLiteral("other"));
    desktop.addWindow(1, 100, QStringLiteral("early"));

    EXPECT_EQ(discoveredIDs(), (QList<WindowID>{1, 2}));
    EXPECT_EQ(discover().first().title, QStringLiteral("early"));
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

TEST_F(WindowDiscoveryTest, The_application_that_a_window_names_comes_before_that_of_its_process)
{
    desktop.addWindow(1, 100, QStringLiteral("Slides")).bundleIdentifier =
        QStringLiteral("org.example.Impress");
    desktop.addWindow(2, 100, QStringLiteral("Letter")).bundleIdentifier =
        QStringLiteral("org.example.Writer");
    desktop.addWindow(3, 100, QStringLiteral("Options"));

    QMap<QString, std::optional<QString>> applications;
    for (const WindowItem& window : discover())
        applications.insert(window.title, window.bundleIdentifier);

    EXPECT_EQ(applications.value(QStringLiteral("Slides")), QStringLiteral("org.example.Impress"));
    EXPECT_EQ(applications.value(QStringLiteral("Letter")), QStringLiteral("org.example.Writer"));
    EXPECT_EQ(applications.value(QStringLiteral("Options")), QStringLiteral("org.example.App100"));
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
