#include "platform/wayland/wlr/WlrAbilities.h"

namespace kelpa::wayland {

DesktopAbilities abilitiesOfWlr(bool hasSwayIpc)
{
    using enum DesktopAbility;
    constexpr AbilityShortfall noProtocol{.gap = AbilityGap::compositorProtocol,
                                          .isPartial = false};
    DesktopAbilities abilities;
    abilities.shortfalls[previews] = noProtocol;
    if (hasSwayIpc) {
        // sway never minimises a window.
        abilities.shortfalls[minimizing] = noProtocol;
    } else {
        abilities.shortfalls[quitting] = noProtocol;
        abilities.shortfalls[geometry] = noProtocol;
        abilities.shortfalls[globalKeys] = noProtocol;
    }
    return abilities;
}

} // namespace kelpa::wayland
