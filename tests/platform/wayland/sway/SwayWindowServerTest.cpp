#include "platform/wayland/sway/SwayWindowServer.h"

#include "model/WindowItem.h"
#include "platform/wayland/sway/SwayCommands.h"
#include "platform/wayland/sway/SwayWindowActions.h"
#include "support/ListedTitles.h"
#include "support/ManualScheduler.h"
#include "support/MemoryNumbers.h"
#include "support/wayland/FakeSway.h"

#include <gtest/gtest.h>

#include <chrono>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class PlainResolver : public ApplicationResolver
{
public:
    ResolvedApplication resolve(const ApplicationClues& clues) override
    {
        if (clues.gtkApplicationID != QStringLiteral("foot"))
            return {};
        return {.desktopEntryID = QStringLiteral("foot"), .name = QStringLiteral("Foot")};
    }
};

QByteArray treeOf(const QByteArray& windows, const QByteArray& focus)
{
    return R"({"id":1,"nodes":[)" + windows + R"(],"focus":[)" + focus + "]}";
}

const QByteArray terminal =
    R"({"id":5,"shell":"xdg_shell","name":"one","app_id":"foot","pid":71,"visible":true,)"
    R"("rect":{"x":0,"y":0,"width":640,"height":480}})";
const QByteArray other =
    R"({"id":6,"shell":"xdg_shell","name":"two","app_id":"what","pid":72,"visible":false,)"
    R"("rect":{"x":0,"y":0,"width":300,"height":200}})";

class SwayServerTest : public testing::Test
{
protected:
    std::unique_ptr<wayland::SwayWindowServer> start() { return start(*sway); }

    std::unique_ptr<wayland::SwayWindowServer> start(const FakeSway& run,
                                                     std::chrono::milliseconds limit = 2s)
    {
        return std::make_unique<wayland::SwayWindowServer>(
            wayland::SwayWindowServerNeeds{.socketPath = run.path(),
                                           .resolver = resolver,
                                           .documents = nullptr,
                                           .reservation = marks,
                                           .names = names,
                                           .highWaterMark = marks.mark,
                                           .takenNumbers = {},
                                           .scheduler = scheduler,
                                           .replyLimit = limit});
    }

    ManualScheduler scheduler;
    PlainResolver resolver;
    MemoryReservation marks;
    MemoryNameTable names;
    std::optional<FakeSway> sway{std::in_place};
};

TEST_F(SwayServerTest, A_pass_tells_of_each_window_what_the_board_needs)
{
    sway->setTree(treeOf(terminal + ',' + other, "5,6"));
    const auto server = start();
    const auto source = server->openDiscoverySource();
    const auto entries = source->windowList(WindowListScope::all);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 2U);
    EXPECT_EQ(entries->at(0).ownerName, QStringLiteral("Foot"));
    EXPECT_EQ(entries->at(0).bundleIdentifier, QStringLiteral("foot"));
    EXPECT_EQ(entries->at(0).ownerProcess, 71);
    EXPECT_EQ(entries->at(0).bounds, (Rect{0, 0, 640, 480}));
    // Without an installed application, by what the window says.
    EXPECT_EQ(entries->at(1).ownerName, QStringLiteral("what"));
    EXPECT_EQ(entries->at(1).bundleIdentifier, std::nullopt);
    const auto onScreen = source->windowList(WindowListScope::onScreen);
    ASSERT_TRUE(onScreen);
    ASSERT_EQ(onScreen->size(), 1U);
    EXPECT_EQ(onScreen->front().number, entries->front().number);
    const auto described = source->accessibilityWindows(72);
    ASSERT_TRUE(described);
    ASSERT_EQ(described->size(), 1U);
    EXPECT_EQ(described->front().windowNumber, entries->at(1).number);
    EXPECT_EQ(described->front().isMinimized, false);
    EXPECT_EQ(source->runningApplication(73).has_value(), false);
}

TEST_F(SwayServerTest, Its_numbers_outlive_kelpa_and_no_other_run_of_sway_gets_them)
{
    sway->setTree(treeOf(terminal + ',' + other, "5,6"));
    auto server = start();
    const auto first = listedTitles(*server);
    ASSERT_TRUE(first);
    server = start();
    EXPECT_EQ(listedTitles(*server), first);

    FakeSway anotherRun;
    anotherRun.setTree(treeOf(terminal, "5"));
    server = start(anotherRun);
    const auto next = listedTitles(*server);
    ASSERT_TRUE(next);
    ASSERT_EQ(next->size(), 1U);
    EXPECT_NE(next->front().second, first->at(0).second);
    EXPECT_NE(next->front().second, first->at(1).second);
}

TEST_F(SwayServerTest, While_sway_hangs_the_windows_stay)
{
    sway->setTree(treeOf(terminal, "5"));
    const auto server = start(*sway, 500ms);
    auto first = listedTitles(*server);
    while (!first)
        first = listedTitles(*server);
    sway->setHanging(true);
    // More than there is room for in its queue of connections.
    for (int pass = 0; pass < 6; ++pass) {
        EXPECT_EQ(listedTitles(*server), first) << pass;
        EXPECT_TRUE(server->isScreenCaptureTrusted()) << pass;
    }
    sway->setTree(treeOf(other, "6"));
    sway->setHanging(false);
    auto next = listedTitles(*server);
    while (next == first)
        next = listedTitles(*server);
    ASSERT_TRUE(next);
    ASSERT_EQ(next->size(), 1U);
    EXPECT_EQ(next->front().first, QStringLiteral("two"));
}

TEST_F(SwayServerTest, Without_sway_there_is_no_list)
{
    sway->setTree(treeOf(terminal, "5"));
    const auto server = start();
    ASSERT_TRUE(listedTitles(*server));
    sway.reset();
    // The first request finds the connection closed.
    listedTitles(*server);
    EXPECT_EQ(listedTitles(*server), std::nullopt);
    EXPECT_FALSE(server->isScreenCaptureTrusted());
}

TEST_F(SwayServerTest, An_action_is_on_the_window_of_the_element_alone)
{
    sway->setTree(treeOf(terminal + ',' + other, "5,6"));
    const auto server = start();
    const auto numbers = listedTitles(*server);
    ASSERT_TRUE(numbers);
    wayland::SwayCommands commands(sway->path());
    wayland::SwayWindowActions actions(*server, commands);
    const auto elements = actions.elements(72);
    ASSERT_TRUE(elements);
    ASSERT_EQ(elements->size(), 1U);
    EXPECT_EQ(elements->front()->attributes().windowNumber, numbers->at(1).second);
    elements->front()->requestFocus();
    elements->front()->requestRaise();
    elements->front()->requestClose();
    elements->front()->requestVirtualDesktop({.number = 3});
    actions.showVirtualDesktop({.number = 4});
    commands.closeAll(71);
    EXPECT_TRUE(commands.focusLatest(71));
    EXPECT_FALSE(commands.focusLatest(73));
    const QByteArray sent =
        "[con_id=6] move --no-auto-back-and-forth container to workspace number 3";
    const QByteArray shown = "workspace --no-auto-back-and-forth number 4";
    EXPECT_EQ(sway->commands(), (QList<QByteArray>{"[con_id=6] focus", "[con_id=6] kill", sent,
                                                   shown, "[con_id=5] kill", "[con_id=5] focus"}));
}

TEST_F(SwayServerTest, A_pass_has_the_workspaces_and_on_which_each_window_is)
{
    sway->setTree(R"({"id":1,"nodes":[{"id":2,"type":"output","current_workspace":"2: mail",)"
                  R"("nodes":[{"id":3,"type":"workspace","name":"2: mail","nodes":[)" +
                  terminal + R"(]},{"id":4,"type":"workspace","name":"web","nodes":[)" + other +
                  "]}]}]}");
    const auto server = start(*sway, 300ms);
    const auto source = server->openDiscoverySource();
    QStringList names(100);
    names[1] = QStringLiteral("2: mail");
    EXPECT_EQ(source->virtualDesktops(), names);
    EXPECT_EQ(source->unofferedDesktops().size(), 90);
    const auto entries = source->windowList(WindowListScope::all);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 2U);
    for (const WindowListEntry& each : *entries)
        EXPECT_EQ(each.desktopNumber,
                  each.name == QStringLiteral("one") ? 2 : unnumberedVirtualDesktop);
    sway->setHanging(true);
    EXPECT_EQ(server->openDiscoverySource()->virtualDesktops(), names) << "while sway hangs";
}

} // namespace
} // namespace kelpa::test
