// How the parts of the desktop follow a Shell that changes under them, on the main thread.
#include "platform/gnome/GnomeAbilities.h"
#include "platform/gnome/GnomeGlobalKeys.h"
#include "platform/gnome/GnomeOwnWindow.h"
#include "platform/gnome/ShellFollower.h"

#include "platform/freedesktop/bus/PrivateBus.h"
#include "platform/gnome/FakeShell.h"
#include "shell/CommandDoubleTapRecognizer.h"
#include "support/desktop/LoopScheduler.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <chrono>

namespace kelpa::gnome {
namespace {

using namespace std::chrono_literals;
using test::FakeShell;
using test::waitUntil;

class GnomeSessionTest : public testing::Test
{
protected:
    GnomeSessionTest() : watch(abilities.watchAbilities([this] { ++changes; })) {}

    std::optional<AbilityGap> gap() const
    {
        const auto shortfall = abilities.abilities().shortfall(DesktopAbility::windows);
        return shortfall ? std::optional(shortfall->gap) : std::nullopt;
    }
    bool comesTo(std::optional<AbilityGap> wanted)
    {
        return waitUntil([this, wanted] {
            return follower.standing().condition != ShellCondition::unknown && gap() == wanted;
        });
    }

    PrivateBus bus;
    test::LoopScheduler scheduler;
    int changes = 0;
    ShellFollower follower{scheduler, bus.address().toStdString(), {.dataFolders = {}}, 300ms};
    GnomeAbilities abilities{follower};
    std::unique_ptr<Subscription> watch;
};

TEST_F(GnomeSessionTest, Follows_the_extension_that_is_switched_off_and_on)
{
    EXPECT_EQ(gap(), std::nullopt) << "given until the Shell has been asked";
    FakeShell shell(bus.address());
    shell.showExtension();
    ASSERT_TRUE(comesTo(std::nullopt));
    shell.behave({.state = 2});
    shell.hideExtension();
    ASSERT_TRUE(comesTo(AbilityGap::shellExtensionOff));
    EXPECT_TRUE(abilities.canRequestAbilities());
    EXPECT_GT(changes, 0);
    abilities.requestAbilities();
    ASSERT_TRUE(comesTo(std::nullopt));
    EXPECT_FALSE(abilities.canRequestAbilities());
}

TEST_F(GnomeSessionTest, Follows_a_Shell_that_restarts_into_its_next_run)
{
    std::optional<FakeShell> shell(std::in_place, bus.address());
    shell->showExtension();
    ASSERT_TRUE(comesTo(std::nullopt));
    EXPECT_EQ(follower.standing().run, 7U);
    shell.reset();
    ASSERT_TRUE(comesTo(AbilityGap::compositor));
    shell.emplace(bus.address());
    shell->behave({.run = 8});
    shell->showExtension();
    ASSERT_TRUE(comesTo(std::nullopt));
    EXPECT_EQ(follower.standing().run, 8U);
}

TEST_F(GnomeSessionTest, Asks_again_where_it_is_refused_or_not_answered)
{
    FakeShell shell(bus.address());
    shell.behave({.errors = {{"Attach", "org.kelpa.Windows1.Error.AccessDenied"}}});
    shell.showExtension();
    ASSERT_TRUE(comesTo(AbilityGap::shellExtensionDenies));
    shell.behave({.isHanging = true});
    ASSERT_TRUE(comesTo(AbilityGap::compositor));
    shell.behave({});
    EXPECT_TRUE(comesTo(std::nullopt));
}

TEST_F(GnomeSessionTest, Never_waits_for_a_Shell_that_hangs)
{
    ShellFollower patient(scheduler, bus.address().toStdString(), {.dataFolders = {}}, 60s);
    std::optional<FakeShell> shell(std::in_place, bus.address());
    shell->behave({.isHanging = true});
    shell->showExtension();
    const auto watching = patient.watch({});
    // The call is under way, and the main thread goes on.
    ASSERT_TRUE(waitUntil([&shell] { return !shell->calls().isEmpty(); }));
    patient.switchOn();
    EXPECT_EQ(patient.standing().condition, ShellCondition::unknown);
    // One that ends is not waited for.
    shell.reset();
    EXPECT_TRUE(
        waitUntil([&patient] { return patient.standing().condition == ShellCondition::silent; }));
}

TEST_F(GnomeSessionTest, Its_double_tap_is_one_for_the_board)
{
    FakeShell shell(bus.address());
    shell.showExtension();
    GnomeGlobalKeys keys(follower, scheduler);
    CommandDoubleTapRecognizer recognizer;
    int doubleTaps = 0;
    bool isAvailable = false;
    const auto listening =
        keys.watchKeys({.keyPressed = [&] { recognizer.handleKeyDown(); },
                        .modifiersChanged =
                            [&](const GlobalModifierChange& change) {
                                doubleTaps += recognizer.handleFlagsChanged(
                                                  {.commandIsDown = change.commandIsDown,
                                                   .hasOtherModifiers = change.hasOtherModifiers,
                                                   .timestamp = change.timestamp})
                                                  ? 1
                                                  : 0;
                            },
                        .availabilityChanged = [&](bool isThere) { isAvailable = isThere; }});
    ASSERT_TRUE(waitUntil([&] { return isAvailable; }));
    for (int count = 1; count <= 3; ++count) {
        shell.send("DoubleTap");
        ASSERT_TRUE(waitUntil([&] { return doubleTaps >= count; }));
        EXPECT_EQ(doubleTaps, count);
    }
    shell.hideExtension();
    EXPECT_TRUE(waitUntil([&] { return !isAvailable; }));
}

TEST_F(GnomeSessionTest, Says_where_the_Shell_has_no_key_to_tap)
{
    FakeShell shell(bus.address());
    shell.behave({.replies = {{"Attach", "(uint64 7, {'doubleTap': <false>})"}}});
    shell.showExtension();
    ASSERT_TRUE(
        waitUntil([this] { return follower.standing().condition == ShellCondition::ready; }));
    EXPECT_EQ(gap(), std::nullopt);
    EXPECT_FALSE(abilities.abilities().has(DesktopAbility::globalKeys));
    // The person gives the overview a key, and takes it away again.
    GnomeGlobalKeys keys(follower, scheduler);
    bool isAvailable = false;
    const auto listening = keys.watchKeys(
        {.keyPressed = {}, .modifiersChanged = {}, .availabilityChanged = [&](bool isThere) {
             isAvailable = isThere;
         }});
    for (const bool isThere : {true, false}) {
        const int before = changes;
        shell.behave({.replies = {{"Attach", isThere ? "(uint64 7, {'doubleTap': <true>})"
                                                     : "(uint64 7, {'doubleTap': <false>})"}}});
        shell.send("AbilitiesChanged");
        EXPECT_TRUE(waitUntil([&] { return isAvailable == isThere; }));
        EXPECT_EQ(abilities.abilities().has(DesktopAbility::globalKeys), isThere);
        EXPECT_GT(changes, before);
    }
}

} // namespace
} // namespace kelpa::gnome
