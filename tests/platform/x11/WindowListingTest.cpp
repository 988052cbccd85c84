#include "platform/x11/WindowListingFixture.h"

namespace kelpa::test {
namespace {

TEST_F(WindowListing, An_empty_desktop_has_an_empty_list)
{
    const auto list = server->openDiscoverySource()->windowList(WindowListScope::all);
    ASSERT_TRUE(list.has_value());
    EXPECT_TRUE(list->empty());
}

TEST_F(WindowListing, A_window_is_listed_with_all_that_is_known_of_it)
{
    openListed(client, {120, 140, 500, 350, "Letter", "Editor"});
    const auto found = entry("Letter");
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->ownerName, QStringLiteral("Editor"));
    EXPECT_EQ(found->ownerProcess, ownProcess);
    EXPECT_EQ(found->bounds->width, 500);
    EXPECT_EQ(found->bounds->height, 350);
    EXPECT_EQ(found->layer, 0);
    EXPECT_EQ(found->alpha, 1.0);
    EXPECT_EQ(found->number, 1U);
    EXPECT_TRUE(isOnScreen("Letter"));
}

TEST_F(WindowListing, Bounds_are_those_of_the_client_area_on_the_root)
{
    const xcb_window_t window = openListed(client, {120, 140, 500, 350, "Letter", {}});
    // openbox puts its title bar inside the place that was asked for or outside of it, by gravity.
    const auto cookie = xcb_translate_coordinates(client.connection(), window, client.root(), 0, 0);
    const std::unique_ptr<xcb_translate_coordinates_reply_t, x11::XcbFree> place(
        xcb_translate_coordinates_reply(client.connection(), cookie, nullptr));
    ASSERT_TRUE(place);
    EXPECT_EQ(entry("Letter")->bounds, (Rect{static_cast<double>(place->dst_x),
                                             static_cast<double>(place->dst_y), 500, 350}));
    EXPECT_GT(place->dst_y, 140);
}

TEST_F(WindowListing, The_shadow_that_a_client_draws_itself_is_not_part_of_its_bounds)
{
    const xcb_window_t window = openListed(client, {120, 140, 500, 350, "Letter", {}});
    const Rect before = *entry("Letter")->bounds;
    client.setCardinals(window, "_GTK_FRAME_EXTENTS", {26, 24, 20, 30});
    EXPECT_EQ(entry("Letter")->bounds, (Rect{before.x + 26, before.y + 20, 450, 300}));
}

TEST_F(WindowListing, Windows_of_several_programs_are_listed_front_to_back)
{
    openListed(client, {50, 50, 300, 200, "first", "One"});
    const Program xterm(xServer.display(), QStringLiteral("xterm"),
                        {QStringLiteral("-T"), QStringLiteral("a terminal"), QStringLiteral("-e"),
                         QStringLiteral("cat")});
    ASSERT_TRUE(waitUntil([&] { return entry("a terminal").has_value(); }));
    TestClient other(xServer.display());
    openListed(other, {90, 90, 300, 200, "third", "Three"});

    const std::vector<WindowListEntry> list = runDiscoveryPass(*server);
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list.at(0).name, QStringLiteral("third"));
    EXPECT_EQ(list.at(1).name, QStringLiteral("a terminal"));
    EXPECT_EQ(list.at(2).name, QStringLiteral("first"));
    EXPECT_EQ(list.at(1).ownerName, QStringLiteral("XTerm"));
    EXPECT_EQ(list.at(1).ownerProcess, static_cast<ProcessID>(xterm.processID()));
}

TEST_F(WindowListing, The_process_is_the_one_at_the_other_end_whatever_the_window_claims)
{
    const xcb_window_t window = client.create({100, 100, 300, 200, "liar", {}});
    client.setCardinals(window, "_NET_WM_PID", {1});
    client.map(window);
    ASSERT_TRUE(waitUntil([&] { return client.isListed(window); }));
    EXPECT_EQ(entry("liar")->ownerProcess, ownProcess);
}

TEST_F(WindowListing, A_minimized_window_is_listed_as_minimized_and_not_on_screen)
{
    const xcb_window_t window = openListed(client, {100, 100, 300, 200, "small", {}});
    client.minimize(window);
    ASSERT_TRUE(waitUntil([&] { return !isOnScreen("small"); }));
    const auto found = entry("small");
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(element(ownProcess, *found->number)->isMinimized, true);
}

TEST_F(WindowListing, A_window_of_another_desktop_is_listed_but_neither_on_screen_nor_minimized)
{
    const xcb_window_t window = openListed(client, {100, 100, 300, 200, "elsewhere", {}});
    client.sendToDesktop(window, 1);
    ASSERT_TRUE(waitUntil([&] { return !isOnScreen("elsewhere"); }));
    const auto found = entry("elsewhere");
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(element(ownProcess, *found->number)->isMinimized, false);
    client.request(client.root(), "_NET_CURRENT_DESKTOP", {1, 0, 0, 0, 0});
    EXPECT_TRUE(waitUntil([&] { return isOnScreen("elsewhere"); }));
}

TEST_F(WindowListing, A_sticky_window_is_on_screen_on_every_desktop)
{
    const xcb_window_t window = openListed(client, {100, 100, 300, 200, "sticky", {}});
    client.sendToDesktop(window, 0xFFFFFFFF);
    ASSERT_TRUE(waitUntil([&] { return client.word(window, "_NET_WM_DESKTOP") == 0xFFFFFFFF; }));
    client.request(client.root(), "_NET_CURRENT_DESKTOP", {2, 0, 0, 0, 0});
    ASSERT_TRUE(
        waitUntil([&] { return client.word(client.root(), "_NET_CURRENT_DESKTOP") == 2U; }));
    EXPECT_TRUE(isOnScreen("sticky"));
}

TEST_F(WindowListing, A_window_of_another_desktop_names_it_as_the_window_manager_does)
{
    const xcb_window_t window = openListed(client, {100, 100, 300, 200, "elsewhere", {}});
    client.setText(client.root(), "_NET_DESKTOP_NAMES", QByteArray("Mail\0Web\0", 9));
    EXPECT_EQ(entry("elsewhere")->virtualDesktop, std::nullopt);
    client.sendToDesktop(window, 1);
    ASSERT_TRUE(waitUntil([&] { return !isOnScreen("elsewhere"); }));
    EXPECT_EQ(entry("elsewhere")->virtualDesktop, QStringLiteral("Web"));
    client.request(client.root(), "_NET_CURRENT_DESKTOP", {1, 0, 0, 0, 0});
    EXPECT_TRUE(waitUntil([&] { return !entry("elsewhere")->virtualDesktop.has_value(); }));
}

TEST_F(WindowListing, A_window_with_a_dialog_waits_for_an_answer_until_that_closes)
{
    const xcb_window_t window = openListed(client, {100, 100, 300, 200, "letter", {}});
    openListed(client, {100, 100, 300, 200, "other", {}});
    const xcb_window_t dialog = client.create({150, 150, 200, 100, "save?", {}});
    client.setWindows(dialog, "WM_TRANSIENT_FOR", {window});
    client.setAtoms(dialog, "_NET_WM_STATE", {"_NET_WM_STATE_MODAL"});
    client.map(dialog);
    ASSERT_TRUE(waitUntil([&] { return client.isListed(dialog); }));
    EXPECT_TRUE(entry("letter")->isAwaitingAnswer);
    EXPECT_FALSE(entry("other")->isAwaitingAnswer);
    EXPECT_FALSE(entry("save?")->isAwaitingAnswer);
    ASSERT_TRUE(entry("letter")->number.has_value());
    EXPECT_EQ(entry("save?")->dialogOf, entry("letter")->number);
    EXPECT_EQ(entry("letter")->dialogOf, std::nullopt);
    client.destroy(dialog);
    EXPECT_TRUE(waitUntil([&] { return !entry("letter")->isAwaitingAnswer; }));
}

TEST_F(WindowListing, Two_maximized_windows_with_one_title_are_both_listed)
{
    const xcb_window_t first = openListed(client, {100, 100, 300, 200, "same", "Editor"});
    const xcb_window_t second = openListed(client, {100, 100, 300, 200, "same", "Editor"});
    client.maximize(first);
    client.maximize(second);
    const auto areMaximized = [&] {
        const std::vector<WindowListEntry> list = runDiscoveryPass(*server);
        return list.size() == 2 && list.at(0).bounds->width > 1200 &&
               list.at(0).bounds == list.at(1).bounds;
    };
    ASSERT_TRUE(waitUntil(areMaximized));
    const std::vector<WindowListEntry> list = runDiscoveryPass(*server);
    EXPECT_EQ(list.at(0).name, list.at(1).name);
    EXPECT_NE(list.at(0).number, list.at(1).number);
    EXPECT_TRUE(element(ownProcess, *list.at(0).number).has_value());
    EXPECT_TRUE(element(ownProcess, *list.at(1).number).has_value());
}

TEST_F(WindowListing, Docks_desktops_and_palettes_are_on_other_layers)
{
    const auto openOfType = [&](const char* title, const char* type) {
        const xcb_window_t window = client.create({100, 100, 300, 200, title, {}});
        client.setAtoms(window, "_NET_WM_WINDOW_TYPE", {type});
        client.map(window);
        EXPECT_TRUE(waitUntil([&] { return client.isListed(window); }));
    };
    openOfType("dock", "_NET_WM_WINDOW_TYPE_DOCK");
    openOfType("desktop", "_NET_WM_WINDOW_TYPE_DESKTOP");
    openOfType("palette", "_NET_WM_WINDOW_TYPE_UTILITY");
    openOfType("dialog", "_NET_WM_WINDOW_TYPE_DIALOG");
    EXPECT_EQ(entry("dock")->layer, 20);
    EXPECT_EQ(entry("desktop")->layer, -1);
    EXPECT_EQ(entry("palette")->layer, 3);
    EXPECT_EQ(entry("dialog")->layer, 0);
}

TEST_F(WindowListing, The_first_known_type_of_several_counts)
{
    const xcb_window_t window = client.create({100, 100, 300, 200, "several", {}});
    client.setAtoms(
        window, "_NET_WM_WINDOW_TYPE",
        {"_SOMEONES_OWN_TYPE", "_NET_WM_WINDOW_TYPE_DIALOG", "_NET_WM_WINDOW_TYPE_DOCK"});
    client.map(window);
    ASSERT_TRUE(waitUntil([&] { return client.isListed(window); }));
    EXPECT_EQ(entry("several")->layer, 0);
}

TEST_F(WindowListing, An_override_redirect_window_is_not_listed)
{
    TestWindow menu{100, 100, 300, 200, "menu", {}};
    menu.isOverrideRedirect = true;
    client.open(menu);
    openListed(client, {100, 100, 300, 200, "ordinary", {}});
    EXPECT_FALSE(entry("menu").has_value());
    EXPECT_TRUE(entry("ordinary").has_value());
}

TEST_F(WindowListing, A_window_that_is_kept_off_the_task_list_makes_its_process_an_accessory)
{
    const xcb_window_t window = client.create({100, 100, 300, 200, "applet", {}});
    client.setAtoms(window, "_NET_WM_STATE", {"_NET_WM_STATE_SKIP_TASKBAR"});
    client.map(window);
    ASSERT_TRUE(waitUntil([&] { return client.isListed(window); }));
    EXPECT_NE(entry("applet")->layer, 0);
    const auto policy = [&] {
        return server->openDiscoverySource()->runningApplication(ownProcess)->activationPolicy;
    };
    EXPECT_EQ(policy(), ActivationPolicy::accessory);
    openListed(client, {100, 100, 300, 200, "ordinary", {}});
    EXPECT_EQ(policy(), ActivationPolicy::regular);
}

TEST_F(WindowListing, The_opacity_of_a_window_is_its_alpha)
{
    const xcb_window_t window = openListed(client, {100, 100, 300, 200, "glass", {}});
    client.setCardinals(window, "_NET_WM_WINDOW_OPACITY", {0});
    EXPECT_EQ(entry("glass")->alpha, 0.0);
    client.setCardinals(window, "_NET_WM_WINDOW_OPACITY", {0xFFFFFFFF});
    EXPECT_EQ(entry("glass")->alpha, 1.0);
}

TEST_F(WindowListing, Hostile_titles_are_listed_made_harmless)
{
    openListed(client, {100, 100, 300, 200, QByteArray(1 << 20, 'x'), {}});
    openListed(client, {100, 100, 300, 200, "bad\xFF\xFEutf", {}});
    openListed(client, {100, 100, 300, 200, QByteArray("nul\0led", 7), {}});
    openListed(client, {100, 100, 300, 200, "a\xE2\x80\xAEgnp.exe", {}});
    const std::vector<WindowListEntry> list = runDiscoveryPass(*server);
    ASSERT_EQ(list.size(), 4U);
    EXPECT_EQ(list.at(0).name, QStringLiteral("agnp.exe"));
    EXPECT_EQ(list.at(1).name, QStringLiteral("nulled"));
    EXPECT_EQ(list.at(2).name, QStringLiteral(u"bad\uFFFD\uFFFDutf"));
    EXPECT_EQ(list.at(3).name, QString(4096, QLatin1Char('x')));
}

TEST_F(WindowListing, A_title_of_the_wrong_type_gives_way_to_the_older_property)
{
    const xcb_window_t window = openListed(client, {});
    client.setProperty(window, "WM_NAME", XCB_ATOM_STRING, 8, "caf\xE9");
    client.setCardinals(window, "_NET_WM_NAME", {1, 2, 3});
    EXPECT_EQ(runDiscoveryPass(*server).front().name, QStringLiteral(u"caf\u00E9"));
    client.setText(window, "_NET_WM_NAME", "");
    EXPECT_EQ(runDiscoveryPass(*server).front().name, QStringLiteral(""));
}

TEST_F(WindowListing, Properties_of_the_wrong_shape_are_as_if_they_were_not_there)
{
    const xcb_window_t window = openListed(client, {100, 100, 300, 200, "odd", {}});
    client.setText(window, "_NET_WM_WINDOW_TYPE", "not atoms");
    client.setText(window, "_NET_WM_WINDOW_OPACITY", "0000");
    client.setProperty(window, "_NET_WM_WINDOW_OPACITY", XCB_ATOM_CARDINAL, 16, "00");
    client.setText(window, "_GTK_FRAME_EXTENTS", "0123456789abcdef");
    client.setCardinals(window, "WM_CLASS", {1, 2, 3});
    client.setText(window, "_KELPA_WINDOW_NUMBER", "1234");
    const auto found = entry("odd");
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->layer, 0);
    EXPECT_EQ(found->alpha, 1.0);
    EXPECT_EQ(found->bounds->width, 300);
    EXPECT_EQ(found->number, 1U);
}

TEST_F(WindowListing, A_discovery_pass_takes_as_many_round_trips_for_forty_windows_as_for_one)
{
    openListed(client, {100, 100, 300, 200, "one", {}});
    const auto cost = [&] {
        const std::uint64_t before = server->traffic().roundTrips;
        EXPECT_FALSE(runDiscoveryPass(*server).empty());
        return server->traffic().roundTrips - before;
    };
    runDiscoveryPass(*server);
    EXPECT_EQ(cost(), 2U);
    for (int count = 0; count < 40; ++count) {
        client.open({100, 100, 300, 200, "more", {}});
    }
    ASSERT_TRUE(waitUntil([&] { return runDiscoveryPass(*server).size() == 41; }));
    EXPECT_EQ(cost(), 2U);
    // One more when there are new windows, until the server has their numbers.
    const xcb_window_t last = client.open({100, 100, 300, 200, "last", {}});
    ASSERT_TRUE(waitUntil([&] { return client.isListed(last); }));
    EXPECT_EQ(cost(), 3U);
    EXPECT_EQ(cost(), 2U);
}

} // namespace
} // namespace kelpa::test
