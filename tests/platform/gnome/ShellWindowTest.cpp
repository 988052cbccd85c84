#include "platform/gnome/ShellWindow.h"

#include "model/WindowItem.h"
#include "platform/freedesktop/bus/GlibPointers.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace kelpa::gnome {
namespace {

std::vector<ShellWindow> read(const std::string& text)
{
    const GlibPointer<GVariant> list(
        g_variant_parse(G_VARIANT_TYPE("aa{sv}"), text.c_str(), nullptr, nullptr, nullptr));
    if (!list)
        throw std::runtime_error("no list: " + text);
    return windowsIn(list.get());
}

TEST(ShellWindow, Has_what_the_extension_lists)
{
    const auto windows =
        read("[{'id': <uint64 5>, 'title': <'one'>, 'pid': <71>, 'app': <'foot.desktop'>,"
             " 'wmClass': <'foot'>, 'x': <-3>, 'y': <20>, 'width': <640>, 'height': <480>,"
             " 'workspace': <0>, 'onScreen': <true>, 'minimized': <false>, 'kind': <'normal'>,"
             " 'skipTaskbar': <false>, 'xwayland': <true>, 'role': <'main'>,"
             " 'transientFor': <uint64 0>, 'attention': <false>, 'otherWorkspace': <'Mail'>}]");
    ASSERT_EQ(windows.size(), 1U);
    EXPECT_EQ(windows.front(), (ShellWindow{.id = 5,
                                            .title = QStringLiteral("one"),
                                            .process = 71,
                                            .application = QStringLiteral("foot.desktop"),
                                            .windowClass = QStringLiteral("foot"),
                                            .role = QStringLiteral("main"),
                                            .frame = {-3, 20, 640, 480},
                                            .kind = ShellWindowKind::normal,
                                            .isOnScreen = true,
                                            .isMinimized = false,
                                            .isOffTaskList = false,
                                            .virtualDesktop = QStringLiteral("Mail"),
                                            .desktopNumber = 1}));
}

TEST(ShellWindow, A_window_is_on_a_workspace_of_a_number_or_on_all)
{
    const auto number = [](const std::string& workspace) {
        return read("[{'id': <uint64 5>, 'workspace': <" + workspace + ">}]").front().desktopNumber;
    };
    EXPECT_EQ(number("-1"), everyVirtualDesktop);
    EXPECT_EQ(number("0"), 1);
    EXPECT_EQ(number("99"), 100);
    for (const char* const none : {"-2", "100", "2147483647", "uint32 1", "'1'", "1.0", "[1]"})
        EXPECT_EQ(number(none), std::nullopt) << none;
}

TEST(ShellWindow, Workspaces_have_names_in_their_order)
{
    const auto names = [](const std::string& text) {
        const GlibPointer<GVariant> list(
            g_variant_parse(G_VARIANT_TYPE_STRING_ARRAY, text.c_str(), nullptr, nullptr, nullptr));
        if (!list)
            throw std::runtime_error("no list: " + text);
        const ShellWorkspaces workspaces = workspacesIn(list.get());
        EXPECT_EQ(workspaces.ids, DesktopIDs());
        return workspaces.names;
    };
    EXPECT_EQ(names("[' Mail ', '', ' ']"),
              (QStringList{QStringLiteral("Mail"), QString(), QString()}));
    EXPECT_EQ(names("['" + std::string(20000, 'x') + "']").front().size(), 4096);
    std::string many = "[''";
    for (int index = 0; index < 200; ++index)
        many += ", 'Mail'";
    EXPECT_EQ(names(many + ']').size(), 100);
}

TEST(ShellWindow, Workspaces_have_ids_where_all_are_different)
{
    const auto ids = [](const std::string& text) {
        const GlibPointer<GVariant> list(
            g_variant_parse(G_VARIANT_TYPE("a(ts)"), text.c_str(), nullptr, nullptr, nullptr));
        if (!list)
            throw std::runtime_error("no list: " + text);
        const ShellWorkspaces workspaces = workspacesIn(list.get());
        EXPECT_EQ(workspaces.names.size(), std::min<gsize>(g_variant_n_children(list.get()), 100));
        return workspaces.ids;
    };
    EXPECT_EQ(ids("[(7, ' Mail '), (5, ''), (18446744073709551615, '')]"),
              (DesktopIDs{7, 5, 18446744073709551615U}));
    EXPECT_TRUE(ids("[]").isEmpty());
    EXPECT_TRUE(ids("[(7, ''), (0, ''), (5, '')]").isEmpty());
    EXPECT_TRUE(ids("[(7, ''), (5, ''), (7, '')]").isEmpty());
    std::string many = "[(1, '')";
    for (int id = 2; id <= 200; ++id)
        many += ", (" + std::to_string(id) + ", 'Mail')";
    EXPECT_EQ(ids(many + ']').size(), 100);
}

TEST(ShellWindow, A_member_of_another_type_counts_as_not_known)
{
    const auto windows = read("[{'id': <uint64 5>, 'title': <7>, 'pid': <'x'>, 'width': <1.5>,"
                              " 'onScreen': <'yes'>, 'kind': <true>}]");
    ASSERT_EQ(windows.size(), 1U);
    EXPECT_EQ(windows.front(), (ShellWindow{.id = 5, .kind = ShellWindowKind::other}));
}

TEST(ShellWindow, A_dialog_marks_the_window_that_it_belongs_to)
{
    struct Row
    {
        const char* name;
        std::string dialog;
        bool isAwaiting;
    };
    for (const Row& each :
         {Row{"a dialog", "'kind': <'dialog'>, 'xwayland': <true>, 'transientFor': <uint64 1>",
              true},
          Row{"of no stated kind, on Wayland", "'kind': <'normal'>, 'transientFor': <uint64 1>",
              true},
          Row{"no dialog, on X11",
              "'kind': <'normal'>, 'xwayland': <true>, 'transientFor': <uint64 1>", false},
          Row{"a palette", "'kind': <'utility'>, 'transientFor': <uint64 1>", false},
          Row{"of nobody", "'kind': <'dialog'>", false},
          Row{"of itself", "'kind': <'dialog'>, 'transientFor': <uint64 2>", false}}) {
        const auto windows = read("[{'id': <uint64 2>, " + each.dialog +
                                  "}, {'id': <uint64 1>, 'kind': <'normal'>}]");
        ASSERT_EQ(windows.size(), 2U) << each.name;
        EXPECT_FALSE(windows.front().isAwaitingAnswer) << each.name;
        EXPECT_EQ(windows.back().isAwaitingAnswer, each.isAwaiting) << each.name;
        EXPECT_EQ(windows.front().dialogOf,
                  each.isAwaiting ? std::optional<std::uint64_t>(1) : std::nullopt)
            << each.name;
        EXPECT_EQ(windows.back().dialogOf, std::nullopt) << each.name;
    }
}

TEST(ShellWindow, Without_an_id_or_with_one_that_came_before_it_is_dropped)
{
    const auto windows = read("[{'title': <'none'>}, {'id': <-1>}, {'id': <uint64 5>, 'title': "
                              "<'first'>}, {'id': <uint64 5>, 'title': <'second'>}]");
    ASSERT_EQ(windows.size(), 1U);
    EXPECT_EQ(windows.front().title, QStringLiteral("first"));
}

TEST(ShellWindow, Its_texts_and_places_have_bounds)
{
    const std::string title(20000, 'x');
    std::string astral;
    for (int count = 0; count < 3000; ++count)
        astral += "\xF0\x9F\x98\x80";
    const auto windows = read("[{'id': <uint64 1>, 'title': <'" + title + "'>, 'role': <'x" +
                              astral + "'>, 'pid': <-4>, 'x': <2147483647>, 'width': <-5>}]");
    ASSERT_EQ(windows.size(), 1U);
    EXPECT_EQ(windows.front().title.size(), 4096);
    EXPECT_EQ(windows.front().role.size(), 4095) << "no half of a character";
    EXPECT_EQ(windows.front().process, std::nullopt);
    EXPECT_EQ(windows.front().frame, (Rect{1 << 20, 0, 0, 0}));
}

TEST(ShellWindow, No_list_has_more_windows_than_can_be_known_by_name)
{
    std::string list = "[";
    for (int id = 1; id <= 5000; ++id)
        list += (id == 1 ? "{'id': <uint64 " : ", {'id': <uint64 ") + std::to_string(id) + ">}";
    EXPECT_EQ(read(list + "]").size(), 4096U);
}

TEST(ShellWindow, Is_on_the_layer_of_its_kind)
{
    EXPECT_EQ(layerOf({.kind = ShellWindowKind::normal}), 0);
    EXPECT_EQ(layerOf({.kind = ShellWindowKind::dialog}), 0);
    EXPECT_NE(layerOf({.kind = ShellWindowKind::normal, .isOffTaskList = true}), 0);
    EXPECT_NE(layerOf({.kind = ShellWindowKind::utility}), 0);
    EXPECT_NE(layerOf({.kind = ShellWindowKind::other}), 0);
}

} // namespace
} // namespace kelpa::gnome
