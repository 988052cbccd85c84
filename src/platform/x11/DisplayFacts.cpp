#include "platform/x11/DisplayFacts.h"

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/DisplayConnector.h"
#include "platform/x11/discovery/DesktopReader.h"
#include "platform/x11/keys/RawKeyConnection.h"

#include <initializer_list>
#include <memory>
#include <variant>

namespace kelpa::x11 {

namespace {

void lack(DesktopAbilities& abilities, AbilityGap gap, std::initializer_list<DesktopAbility> which)
{
    for (const DesktopAbility ability : which)
        abilities.shortfalls[ability] = {.gap = gap, .isPartial = false};
}

} // namespace

std::optional<DisplayFacts> readDisplayFacts(DisplayConnector& connector)
{
    const std::unique_ptr<DisplayConnection> display = connector.open();
    if (!display)
        return std::nullopt;
    const BrokenPipeGuard guard;
    RootReading root = readRoot(*display);
    root.clients.reset();
    const ClientsReading clients = readClients(*display, root, [](xcb_window_t) { return true; });
    const RawKeyConnection::Result keys = RawKeyConnection::open(connector);
    const auto* const failure = std::get_if<RawKeyFailure>(&keys);
    if (display->connection().isBroken())
        return std::nullopt;
    return DisplayFacts{.hasWindowManager = clients.hasWindowManager,
                        .hasVirtualDesktops =
                            clients.hasWindowManager && root.context.desktopCount > 0,
                        .hasComposite = display->hasComposite(),
                        .hasRawKeys = !failure,
                        .isXwayland = failure && *failure == RawKeyFailure::xwayland};
}

DesktopAbilities abilitiesOn(const std::optional<DisplayFacts>& facts)
{
    using enum DesktopAbility;
    DesktopAbilities abilities;
    if (!facts)
        return DesktopAbilities::without(AbilityGap::display);
    if (facts->isXwayland)
        abilities.shortfalls[windows] = {.gap = AbilityGap::windowsOfXwayland, .isPartial = true};
    if (!facts->hasComposite)
        lack(abilities, AbilityGap::composite, {previews});
    if (!facts->hasWindowManager)
        lack(abilities, AbilityGap::windowManager,
             {windows, actions, quitting, minimizing, geometry, virtualDesktops, previews});
    else if (!facts->hasVirtualDesktops)
        lack(abilities, AbilityGap::virtualDesktopHints, {virtualDesktops});
    if (facts->isXwayland)
        lack(abilities, AbilityGap::keysOfXwayland, {globalKeys});
    else if (!facts->hasRawKeys)
        lack(abilities, AbilityGap::rawKeys, {globalKeys});
    return abilities;
}

} // namespace kelpa::x11
