#include "platform/x11/DisplayFacts.h"

#include "platform/x11/DisplayAbilities.h"
#include "support/ManualScheduler.h"
#include "support/desktop/X11Desktop.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using x11::DisplayFacts;

constexpr DisplayFacts complete{.hasWindowManager = true,
                                .hasVirtualDesktops = true,
                                .hasComposite = true,
                                .hasRawKeys = true,
                                .isXwayland = false};

AbilityShortfall missing(AbilityGap gap)
{
    return {.gap = gap, .isPartial = false};
}

std::optional<DisplayFacts> factsOn(const QByteArray& display)
{
    x11::DisplayConnector connector(display);
    return x11::readDisplayFacts(connector);
}

std::optional<DisplayFacts> factsOn(const XServer& server)
{
    return factsOn(server.display());
}

TEST(DisplayFacts, Are_those_of_the_servers_extensions_and_its_window_manager)
{
    const XServer server;
    EXPECT_EQ(factsOn(server), (DisplayFacts{.hasWindowManager = false,
                                             .hasVirtualDesktops = false,
                                             .hasComposite = true,
                                             .hasRawKeys = true,
                                             .isXwayland = false}));
    const WindowManager manager(server.display());
    EXPECT_EQ(factsOn(server), complete);
}

TEST(DisplayFacts, Say_which_extensions_are_missing)
{
    const XServer server({QStringLiteral("-extension"), QStringLiteral("Composite")});
    const std::optional<DisplayFacts> facts = factsOn(server);
    ASSERT_TRUE(facts);
    EXPECT_FALSE(facts->hasComposite);
}

TEST(DisplayFacts, Are_absent_without_a_server)
{
    // Servers take the lowest number that is free: one that has ended may be another's by then.
    EXPECT_EQ(factsOn(":59000"), std::nullopt);
}

TEST(X11Abilities, Are_complete_on_a_complete_display)
{
    EXPECT_EQ(x11::abilitiesOn(complete), DesktopAbilities{});
}

TEST(X11Abilities, Are_none_without_a_display)
{
    const DesktopAbilities abilities = x11::abilitiesOn(std::nullopt);
    for (const DesktopAbility ability : allDesktopAbilities)
        EXPECT_EQ(abilities.shortfall(ability), missing(AbilityGap::display));
}

TEST(X11Abilities, Without_a_window_manager_are_the_keys_alone)
{
    DisplayFacts facts = complete;
    facts.hasWindowManager = false;
    facts.hasComposite = false;
    const DesktopAbilities abilities = x11::abilitiesOn(facts);
    EXPECT_EQ(abilities.shortfalls.size(), 7U);
    EXPECT_EQ(abilities.shortfall(DesktopAbility::windows), missing(AbilityGap::windowManager));
    // The first step is the window manager, also for previews.
    EXPECT_EQ(abilities.shortfall(DesktopAbility::previews), missing(AbilityGap::windowManager));
    EXPECT_EQ(abilities.shortfall(DesktopAbility::globalKeys), std::nullopt);
}

TEST(X11Abilities, Without_announced_virtual_desktops_are_all_but_these)
{
    DisplayFacts facts = complete;
    facts.hasVirtualDesktops = false;
    EXPECT_EQ(x11::abilitiesOn(facts).shortfalls,
              (std::map<DesktopAbility, AbilityShortfall>{
                  {DesktopAbility::virtualDesktops, missing(AbilityGap::virtualDesktopHints)}}));
    EXPECT_EQ(x11::lastingAbilities(facts), DesktopAbilities{})
        << "the next window manager may have them";
}

TEST(X11Abilities, Lack_what_a_missing_extension_gives)
{
    DisplayFacts facts = complete;
    facts.hasComposite = false;
    facts.hasRawKeys = false;
    EXPECT_EQ(x11::abilitiesOn(facts).shortfalls,
              (std::map<DesktopAbility, AbilityShortfall>{
                  {DesktopAbility::previews, missing(AbilityGap::composite)},
                  {DesktopAbility::globalKeys, missing(AbilityGap::rawKeys)}}));
}

TEST(X11Abilities, On_Xwayland_have_some_of_the_windows_and_no_keys)
{
    const DisplayFacts facts{.hasWindowManager = true,
                             .hasVirtualDesktops = true,
                             .hasComposite = true,
                             .hasRawKeys = false,
                             .isXwayland = true};
    EXPECT_EQ(
        x11::abilitiesOn(facts).shortfalls,
        (std::map<DesktopAbility, AbilityShortfall>{
            {DesktopAbility::windows, {.gap = AbilityGap::windowsOfXwayland, .isPartial = true}},
            {DesktopAbility::globalKeys, missing(AbilityGap::keysOfXwayland)}}));
}

TEST(X11Abilities, That_last_leave_out_what_comes_and_goes)
{
    const DisplayFacts facts{.hasWindowManager = false,
                             .hasVirtualDesktops = false,
                             .hasComposite = false,
                             .hasRawKeys = false,
                             .isXwayland = false};
    EXPECT_EQ(x11::lastingAbilities(facts).shortfalls,
              (std::map<DesktopAbility, AbilityShortfall>{
                  {DesktopAbility::globalKeys, missing(AbilityGap::rawKeys)}}));
}

TEST(X11Abilities, Are_reported_without_what_comes_and_goes)
{
    const XServer server({QStringLiteral("-extension"), QStringLiteral("Composite")});
    ManualScheduler scheduler;
    x11::DisplayAbilities report(std::make_shared<x11::DisplayConnector>(server.display()),
                                 scheduler);
    scheduler.holdBackgroundWork(true);
    const auto watch = report.watchAbilities([] { FAIL() << "nothing has changed"; });
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1) << "nobody waits for the display";
    scheduler.runBackgroundWork();
    EXPECT_EQ(report.abilities(), DesktopAbilities());
}

} // namespace
} // namespace kelpa::test
