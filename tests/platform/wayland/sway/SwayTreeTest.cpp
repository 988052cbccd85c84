#include "platform/wayland/sway/SwayTree.h"

#include "model/WindowItem.h"

#include <gtest/gtest.h>

#include <map>

namespace kelpa::test {
namespace {

using wayland::SwayWindow;
using wayland::windowsInTree;

QByteArray window(int id, const char* more = "")
{
    return R"({"id":)" + QByteArray::number(id) + R"(,"type":"con","shell":"xdg_shell","name":"w)" +
           QByteArray::number(id) + R"(","pid":7)" + more + "}";
}

QByteArray container(int id, const QByteArray& nodes, const QByteArray& focus,
                     const QByteArray& floating = {})
{
    return R"({"id":)" + QByteArray::number(id) + R"(,"nodes":[)" + nodes +
           R"(],"floating_nodes":[)" + floating + R"(],"focus":[)" + focus + "]}";
}

std::vector<std::int64_t> order(const QByteArray& tree)
{
    std::vector<std::int64_t> containers;
    for (const SwayWindow& each : windowsInTree(tree).value_or(std::vector<SwayWindow>()))
        containers.push_back(each.container);
    return containers;
}

TEST(SwayTree, A_window_is_read_with_all_that_sway_says_of_it)
{
    const QByteArray tree = R"({"id":1,"nodes":[
        {"id":5,"shell":"xdg_shell","name":"a – b","app_id":"foot","pid":4711,"visible":true,
         "focused":true,"rect":{"x":100,"y":20,"width":640,"height":480},
         "window_rect":{"x":2,"y":0,"width":636,"height":478},
         "foreign_toplevel_identifier":"00ff"},
        {"id":6,"shell":"xwayland","name":null,"app_id":null,"pid":12,"visible":false,
         "focused":false,"rect":{"x":0,"y":0,"width":300,"height":200},
         "window_rect":{"x":0,"y":0,"width":0,"height":0},
         "window_properties":{"class":"XTerm","instance":"xterm"}}]})";
    const auto windows = windowsInTree(tree);
    ASSERT_TRUE(windows);
    EXPECT_EQ(*windows, (std::vector<SwayWindow>{{.container = 5,
                                                  .title = QStringLiteral("a – b"),
                                                  .appID = QStringLiteral("foot"),
                                                  .wmClassInstance = {},
                                                  .wmClassName = {},
                                                  .process = 4711,
                                                  .bounds = {102, 20, 636, 478},
                                                  .isVisible = true,
                                                  .hasFocus = true,
                                                  .hiddenWorkspace = {},
                                                  .identifier = "00ff"},
                                                 {.container = 6,
                                                  .title = {},
                                                  .appID = {},
                                                  .wmClassInstance = QStringLiteral("xterm"),
                                                  .wmClassName = QStringLiteral("XTerm"),
                                                  .process = 12,
                                                  .bounds = {0, 0, 300, 200},
                                                  .isVisible = false,
                                                  .hasFocus = false,
                                                  .hiddenWorkspace = {},
                                                  .identifier = {}}}));
}

TEST(SwayTree, Windows_come_in_the_order_in_which_they_last_had_the_focus)
{
    // Two outputs; the second had the focus last. On the first, a floating window came before a
    // container, of whose two windows the lower one was focused.
    const QByteArray first = container(
        2,
        container(10, container(20, window(31) + ',' + window(32), "32,31"), "40,20", window(40)),
        "10");
    const QByteArray second = container(3, container(11, window(33), "33"), "11");
    EXPECT_EQ(order(container(1, first + ',' + second, "3,2")),
              (std::vector<std::int64_t>{33, 40, 32, 31}));
}

TEST(SwayTree, A_window_that_never_had_the_focus_comes_after_those_that_had)
{
    EXPECT_EQ(order(container(1, window(5) + ',' + window(6) + ',' + window(7), "6")),
              (std::vector<std::int64_t>{6, 5, 7}));
}

TEST(SwayTree, A_window_of_a_workspace_that_no_output_shows_names_it)
{
    const auto workspace = [](int id, const char* name, const QByteArray& nodes,
                              const QByteArray& floating = {}) {
        return R"({"id":)" + QByteArray::number(id) + R"(,"type":"workspace","name":")" + name +
               R"(","nodes":[)" + nodes + R"(],"floating_nodes":[)" + floating + "]}";
    };
    const auto output = [](int id, const QByteArray& shown, const QByteArray& workspaces) {
        return R"({"id":)" + QByteArray::number(id) + R"(,"type":"output",)" + shown +
               R"("nodes":[)" + workspaces + "]}";
    };
    const QByteArray tabs = R"({"id":9,"type":"con","nodes":[)" + window(22) + "]}";
    const QByteArray tree =
        R"({"id":1,"type":"root","nodes":[)" +
        output(2, R"("current_workspace":"1: web",)",
               workspace(10, "1: web", window(20)) + ',' +
                   workspace(11, "2", window(21) + ',' + tabs, window(23, R"(,"sticky":true)"))) +
        ',' + output(3, R"("current_workspace":"7",)", workspace(12, "7", window(24))) + ',' +
        output(4, "", workspace(13, "__i3_scratch", {}, window(25))) + "]}";
    std::map<std::int64_t, std::optional<QString>> workspaces;
    const auto windows = windowsInTree(tree);
    for (const SwayWindow& each : windows.value_or(std::vector<SwayWindow>()))
        workspaces.emplace(each.container, each.hiddenWorkspace);
    EXPECT_EQ(workspaces, (std::map<std::int64_t, std::optional<QString>>{{20, std::nullopt},
                                                                          {21, QStringLiteral("2")},
                                                                          {22, QStringLiteral("2")},
                                                                          {23, std::nullopt},
                                                                          {24, std::nullopt},
                                                                          {25, std::nullopt}}));
}

QByteArray workspaceWith(const char* name, const QByteArray& windows, const char* more = "")
{
    return R"({"id":9,"type":"workspace","name":")" + QByteArray(name) + R"(","nodes":[)" +
           windows + "]" + more + "}";
}

QByteArray outputOf(const QByteArray& workspaces)
{
    return R"({"id":1,"type":"root","nodes":[{"id":2,"type":"output","current_workspace":"1",)"
           R"("nodes":[)" +
           workspaces + "]}]}";
}

TEST(SwayTree, A_window_is_on_the_desktop_whose_number_its_workspace_begins_with)
{
    struct Row
    {
        const char* workspace;
        int number;
    };
    for (const Row& row :
         {Row{"1", 1}, Row{"10", 10}, Row{"3: mail", 3}, Row{"3mail", 3}, Row{"100", 100},
          Row{"101", unnumberedVirtualDesktop}, Row{"0", unnumberedVirtualDesktop},
          Row{"07", unnumberedVirtualDesktop}, Row{"mail", unnumberedVirtualDesktop},
          Row{"mail 3", unnumberedVirtualDesktop}, Row{"-3", unnumberedVirtualDesktop},
          Row{"٣", unnumberedVirtualDesktop}, Row{" 3", unnumberedVirtualDesktop},
          Row{"99999999999999999999", unnumberedVirtualDesktop},
          Row{"", unnumberedVirtualDesktop}}) {
        const auto tree = wayland::treeIn(outputOf(workspaceWith(row.workspace, window(20))));
        ASSERT_TRUE(tree);
        EXPECT_EQ(tree->windows.front().desktopNumber, row.number) << row.workspace;
    }
    const char* const marked = R"(,"sticky":true)";
    const auto sticky = windowsInTree(
        outputOf(workspaceWith("3", window(20, marked),
                               (R"(,"floating_nodes":[)" + window(21, marked) + ']').constData())));
    ASSERT_TRUE(sticky);
    ASSERT_EQ(sticky->size(), 2U);
    EXPECT_EQ(sticky->front().container, 21);
    EXPECT_EQ(sticky->front().desktopNumber, everyVirtualDesktop);
    EXPECT_EQ(sticky->front().hiddenWorkspace, std::nullopt);
    EXPECT_EQ(sticky->back().desktopNumber, 3) << "tiled";
    EXPECT_EQ(sticky->back().hiddenWorkspace, QStringLiteral("3"));
    const auto onScratchpad = windowsInTree(R"({"nodes":[{"type":"output","nodes":[)" +
                                            workspaceWith("3", window(20)) + "]}]}");
    ASSERT_TRUE(onScratchpad);
    EXPECT_EQ(onScratchpad->front().desktopNumber, std::nullopt);
}

TEST(SwayTree, Workspaces_stand_at_their_numbers_and_a_hundred_can_be_reached)
{
    const auto names = [](const QByteArray& workspaces) {
        const auto tree = wayland::treeIn(outputOf(workspaces));
        return tree ? tree->workspaces : QStringList();
    };
    EXPECT_EQ(names({}), QStringList(100));
    QStringList expected(100);
    expected[0] = QStringLiteral("1: web");
    expected[3] = QStringLiteral("4\"] kill; exec true");
    EXPECT_EQ(names(workspaceWith(R"(4\"] kill; exec true )", {}) + ',' +
                    workspaceWith("mail", {}) + ',' + workspaceWith("1: web", {}) + ',' +
                    workspaceWith("1: other", {}) + ',' + workspaceWith("2", {})),
              expected);
    expected = QStringList(100);
    expected[99] = QStringLiteral("100: last");
    EXPECT_EQ(names(workspaceWith("100: last", {}) + ',' + workspaceWith("101: none", {})),
              expected);
}

TEST(SwayTree, Above_ten_only_workspaces_that_are_there_are_offered)
{
    const auto tree = wayland::treeIn(outputOf(
        workspaceWith("99", {}) + ',' + workspaceWith("15: x", {}) + ',' + workspaceWith("2", {})));
    ASSERT_TRUE(tree);
    QList<int> unoffered;
    for (int number = 11; number <= 100; ++number) {
        if (number != 15 && number != 99)
            unoffered.append(number);
    }
    EXPECT_EQ(tree->unofferedWorkspaces, unoffered);
}

TEST(SwayTree, Of_workspaces_with_one_number_the_first_of_the_list_gives_the_name)
{
    // The other output, and on it the other workspace, had the focus last.
    const auto workspace = [](int id, const char* name) {
        return R"({"id":)" + QByteArray::number(id) + R"(,"type":"workspace","name":")" + name +
               R"("})";
    };
    const auto output = [](int id, const QByteArray& workspaces, const char* focus) {
        return R"({"id":)" + QByteArray::number(id) +
               R"(,"type":"output","current_workspace":"9","nodes":[)" + workspaces +
               R"(],"focus":[)" + focus + "]}";
    };
    const auto tree = wayland::treeIn(
        R"({"id":1,"type":"root","nodes":[)" +
        output(2, workspace(10, "1: web") + ',' + workspace(11, "1: other"), "11,10") + ',' +
        output(3, workspace(12, "1: last") + ',' + workspace(13, "2: here"), "12,13") +
        R"(],"focus":[3,2]})");
    ASSERT_TRUE(tree);
    EXPECT_EQ(tree->workspaces.mid(0, 3),
              (QStringList{QStringLiteral("1: web"), QStringLiteral("2: here"), QString()}));
}

TEST(SwayTree, A_process_that_cannot_be_one_is_absent)
{
    const QByteArray tree =
        R"({"nodes":[{"id":5,"shell":"x","pid":0},{"id":6,"shell":"x","pid":99999999999},)"
        R"({"id":7,"shell":"x","pid":"7"},{"id":8,"shell":"x"}]})";
    const auto windows = windowsInTree(tree);
    ASSERT_TRUE(windows);
    EXPECT_EQ(windows->size(), 4U);
    for (const SwayWindow& each : *windows)
        EXPECT_EQ(each.process, std::nullopt);
}

TEST(SwayTree, A_title_that_is_no_text_costs_no_other_window)
{
    const QByteArray tree = container(1,
                                      R"({"id":5,"shell":"xdg_shell","name":"a)" +
                                          QByteArray("\xff\xc3") + R"(b"},)" + window(6),
                                      "");
    const auto windows = windowsInTree(tree);
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 2U);
    EXPECT_EQ(windows->front().title, QStringLiteral("a\uFFFD\uFFFDb"));
}

TEST(SwayTree, What_is_no_tree_has_no_list)
{
    for (const char* const json : {"", "[]", "{}", "null", "{\"nodes\":", R"({"success":false})"})
        EXPECT_EQ(windowsInTree(json), std::nullopt) << json;
    EXPECT_EQ(order(R"({"nodes":[5,null,"x",[],{}],"focus":"y"})"), (std::vector<std::int64_t>{}));
}

TEST(SwayTree, Nesting_without_end_is_cut_off)
{
    QByteArray deep = window(9);
    for (int i = 0; i < 400; ++i)
        deep = container(100 + i, deep, "");
    EXPECT_EQ(order(container(1, window(5) + ',' + deep, "")), (std::vector<std::int64_t>{5}));
}

} // namespace
} // namespace kelpa::test
