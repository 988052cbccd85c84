#include "platform/gnome/GnomeWindowServer.h"

#include "model/WindowItem.h"
#include "platform/freedesktop/bus/PrivateBus.h"
#include "platform/gnome/FakeShell.h"
#include "platform/gnome/GnomeWindowActions.h"
#include "platform/gnome/ShellFollower.h"
#include "support/ListedTitles.h"
#include "support/MemoryNumbers.h"
#include "support/desktop/LoopScheduler.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <chrono>

namespace kelpa::gnome {
namespace {

using namespace std::chrono_literals;
using test::FakeShell;
using test::listedTitles;
using test::waitUntil;

class ById final : public ApplicationResolver
{
public:
    ResolvedApplication resolve(const ApplicationClues& clues) override
    {
        if (clues.kdeDesktopFile != QStringLiteral("foot.desktop"))
            return {};
        return {.desktopEntryID = QStringLiteral("foot"), .name = QStringLiteral("Foot")};
    }
};

const std::string terminal =
    "{'id': <uint64 5>, 'title': <'one'>, 'pid': <71>, 'app': <'foot.desktop'>, 'wmClass': "
    "<'foot'>, 'x': <10>, 'y': <20>, 'width': <640>, 'height': <480>, 'onScreen': <true>, 'kind': "
    "<'normal'>}";
const std::string onX11 =
    "{'id': <uint64 6>, 'title': <'two'>, 'pid': <72>, 'wmClass': <'what'>, 'width': <300>, "
    "'height': <200>, 'minimized': <true>, 'kind': <'normal'>, 'xwayland': <true>}";

class GnomeServerTest : public testing::Test
{
protected:
    GnomeServerTest() { shell.emplace(bus.address()); }

    void tell(const std::string& windows, std::uint64_t run = 7)
    {
        shell->behave({.run = run, .replies = {{"List", "([" + windows + "],)"}}});
        shell->showExtension();
    }

    std::unique_ptr<GnomeWindowServer> start()
    {
        return std::make_unique<GnomeWindowServer>(
            GnomeWindowServerNeeds{.follower = follower,
                                   .resolver = resolver,
                                   .documents = nullptr,
                                   .reservation = mark,
                                   .names = table,
                                   .highWaterMark = mark.mark,
                                   .takenNumbers = {}});
    }

    PrivateBus bus;
    std::optional<FakeShell> shell;
    test::LoopScheduler scheduler;
    ShellFollower follower{scheduler, bus.address().toStdString(), {.dataFolders = {}}, 300ms};
    ById resolver;
    test::MemoryReservation mark;
    test::MemoryNameTable table;
};

TEST_F(GnomeServerTest, A_pass_has_of_each_window_what_the_board_needs_and_each_once)
{
    tell(terminal + ", " + onX11);
    const auto server = start();
    const auto source = server->openDiscoverySource();
    const auto entries = source->windowList(WindowListScope::all);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 2U);
    EXPECT_EQ(entries->at(0).ownerName, QStringLiteral("Foot"));
    EXPECT_EQ(entries->at(0).bundleIdentifier, QStringLiteral("foot"));
    EXPECT_EQ(entries->at(0).ownerProcess, 71);
    EXPECT_EQ(entries->at(0).bounds, (Rect{10, 20, 640, 480}));
    EXPECT_EQ(entries->at(1).ownerName, QStringLiteral("what"));
    const auto onScreen = source->windowList(WindowListScope::onScreen);
    ASSERT_TRUE(onScreen);
    ASSERT_EQ(onScreen->size(), 1U);
    EXPECT_EQ(onScreen->front().number, entries->front().number);
    const auto described = source->accessibilityWindows(72);
    ASSERT_TRUE(described);
    ASSERT_EQ(described->size(), 1U);
    EXPECT_EQ(described->front().isMinimized, true);
    EXPECT_EQ(described->front().windowNumber, entries->at(1).number);
    EXPECT_FALSE(source->runningApplication(73));
}

TEST_F(GnomeServerTest, Its_numbers_outlive_Kelpa_and_no_other_run_of_the_Shell_gets_them)
{
    tell(terminal + ", " + onX11);
    auto server = start();
    const auto first = listedTitles(*server);
    ASSERT_TRUE(first);
    server = start();
    EXPECT_EQ(listedTitles(*server), first);
    // The next run counts its windows from the beginning.
    shell.reset();
    shell.emplace(bus.address());
    tell(terminal + ", " + onX11, 8);
    EXPECT_TRUE(waitUntil([&] {
        const auto second = listedTitles(*server);
        follower.client().refresh();
        return second && second->front().second != first->front().second;
    }));
}

TEST_F(GnomeServerTest, While_the_Shell_hangs_its_windows_stay)
{
    tell(terminal);
    const auto server = start();
    const auto first = listedTitles(*server);
    ASSERT_TRUE(first);
    shell->behave({.isHanging = true});
    EXPECT_EQ(listedTitles(*server), first);
}

TEST_F(GnomeServerTest, A_pass_has_the_workspaces_and_on_which_each_window_is)
{
    const auto tellWorkspaces = [this](std::uint32_t version, const std::string& workspaces) {
        shell->behave({.version = version,
                       .replies = {{"List", "([{'id': <uint64 5>, 'workspace': <1>}, "
                                            "{'id': <uint64 6>, 'workspace': <-1>}],)"},
                                   {"Workspaces", workspaces}}});
    };
    const QStringList names{QStringLiteral("Mail"), QString()};
    tellWorkspaces(3, "(['Mail', ''],)");
    shell->showExtension();
    const auto server = start();
    const auto source = server->openDiscoverySource();
    EXPECT_EQ(source->virtualDesktops(), names);
    EXPECT_EQ(source->desktopIDs(), DesktopIDs());
    const auto entries = source->windowList(WindowListScope::all);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 2U);
    EXPECT_EQ(entries->front().desktopNumber, 2);
    EXPECT_EQ(entries->back().desktopNumber, everyVirtualDesktop);
    tellWorkspaces(3, "(7,)");
    EXPECT_EQ(server->openDiscoverySource()->virtualDesktops(), names) << "no reply says otherwise";
    shell->behave({.isHanging = true});
    EXPECT_EQ(server->openDiscoverySource()->virtualDesktops(), names) << "while the Shell hangs";
}

TEST_F(GnomeServerTest, A_pass_has_the_ids_of_the_workspaces)
{
    const auto tellWorkspaces = [this](const std::string& workspaces) {
        shell->behave({.version = 4,
                       .replies = {{"ListWithWorkspaces",
                                    "([{'id': <uint64 5>, 'pid': <71>}], " + workspaces + ")"}}});
    };
    tellWorkspaces("[(uint64 21, 'Mail'), (uint64 22, '')]");
    shell->showExtension();
    const auto server = start();
    const auto source = server->openDiscoverySource();
    EXPECT_EQ(source->virtualDesktops(), (QStringList{QStringLiteral("Mail"), QString()}));
    EXPECT_EQ(source->desktopIDs(), (DesktopIDs{21, 22}));
    tellWorkspaces("[(uint64 22, '')]");
    EXPECT_EQ(server->openDiscoverySource()->desktopIDs(), DesktopIDs{22});
    GnomeWindowActions actions(*server, follower.client());
    const auto elements = actions.elements(71);
    ASSERT_TRUE(elements);
    ASSERT_EQ(elements->size(), 1U);
    // As it was listed two passes ago.
    elements->front()->requestVirtualDesktop({.number = 2, .id = 22});
    actions.showVirtualDesktop({.number = 2, .id = 22});
    EXPECT_EQ(shell->calls().mid(shell->calls().size() - 2),
              (QStringList{QStringLiteral("SendToWorkspace (uint64 5, uint64 22)"),
                           QStringLiteral("GoToWorkspace (uint64 22,)")}));
    shell->behave({.isHanging = true});
    EXPECT_EQ(server->openDiscoverySource()->desktopIDs(), DesktopIDs{22}) << "as last told";
}

TEST_F(GnomeServerTest, Without_the_extension_there_is_no_list_and_nothing_is_gone)
{
    shell->behave({.state = 2});
    const auto server = start();
    EXPECT_TRUE(server->isScreenCaptureTrusted()) << "until it is known";
    EXPECT_EQ(listedTitles(*server), std::nullopt);
    EXPECT_FALSE(server->isScreenCaptureTrusted());
    EXPECT_EQ(server->screenCaptureObstacle(), std::nullopt);
}

TEST_F(GnomeServerTest, Acts_on_the_windows_of_the_last_pass)
{
    tell(terminal + ", " + onX11);
    const auto server = start();
    ASSERT_TRUE(listedTitles(*server));
    GnomeWindowActions actions(*server, follower.client());
    const auto elements = actions.elements(72);
    ASSERT_TRUE(elements);
    ASSERT_EQ(elements->size(), 1U);
    elements->front()->requestMinimized(false);
    elements->front()->requestFocus();
    elements->front()->requestClose();
    elements->front()->requestVirtualDesktop({.number = 2});
    actions.showVirtualDesktop({.number = 3});
    const QStringList calls = shell->calls().mid(shell->calls().size() - 5);
    EXPECT_EQ(calls, (QStringList{QStringLiteral("Restore (uint64 6,)"),
                                  QStringLiteral("Activate (uint64 6, uint32 0)"),
                                  QStringLiteral("Close (uint64 6,)"),
                                  QStringLiteral("SendTo (uint64 6, uint32 2)"),
                                  QStringLiteral("ShowWorkspace (uint32 3,)")}));
}

} // namespace
} // namespace kelpa::gnome
