#include "platform/wayland/wlr/WlrAbilities.h"

namespace kelpa::wayland {

DesktopAbilities abilitiesOfWlr(const WlrOffer& offer)
{
    using enum DesktopAbility;
    constexpr AbilityShortfall noProtocol{.gap = AbilityGap::compositorProtocol,
                                          .isPartial = false};
    DesktopAbilities abilities;
    if (!offer.hasPictures)
        abilities.shortfalls[previews] = noProtocol;
    if (offer.hasSwayIpc) {
        // sway never minimises a window.
        abilities.shortfalls[minimizing] = noProtocol;
    } else {
        abilities.shortfalls[virtualDesktops] = {.gap = AbilityGap::windowsNotSent,
                                                 .isPartial = false};
        abilities.shortfalls[quitting] = noProtocol;
        abilities.shortfalls[geometry] = noProtocol;
        abilities.shortfalls[globalKeys] = noProtocol;
    }
    return abilities;
}

DesktopAbilities abilitiesWithoutList()
{
    DesktopAbilities abilities = abilitiesOfWlr({});
    for (const DesktopAbility each : {DesktopAbility::windows, DesktopAbility::actions})
        abilities.shortfalls[each] = {.gap = AbilityGap::compositor, .isPartial = false};
    return abilities;
}

} // namespace kelpa::wayland
