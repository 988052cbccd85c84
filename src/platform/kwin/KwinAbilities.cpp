#include "platform/kwin/KwinAbilities.h"

namespace kelpa::kwin {

DesktopAbilities abilitiesOfKwin(const KwinStanding& standing)
{
    using enum DesktopAbility;
    DesktopAbilities abilities;
    const auto lacks = [&abilities](DesktopAbility ability, AbilityGap gap) {
        abilities.shortfalls[ability] = {.gap = gap, .isPartial = false};
    };
    if (!standing.isListing) {
        for (const DesktopAbility each : {windows, actions, virtualDesktops})
            lacks(each, AbilityGap::compositor);
    }
    if (standing.pictures == PictureStanding::denied)
        lacks(previews, AbilityGap::pictureEntry);
    if (standing.pictures == PictureStanding::withoutOpenGL)
        lacks(previews, AbilityGap::openGL);
    if (standing.isKeyHeard == std::optional(false))
        lacks(globalKeys, AbilityGap::desktopShortcut);
    return abilities;
}

} // namespace kelpa::kwin
