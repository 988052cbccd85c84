#include "views/appearance/AppearanceResolution.h"

#include <algorithm>

namespace kelpa {

Appearance AppearanceResolution::appearance() const
{
    return ownAppearance.value_or(desktopAppearance.value_or(paletteAppearance));
}

bool AppearanceResolution::isReducingMotion() const
{
    const bool isUnwanted =
        std::ranges::find(desktopAnimations, std::optional(false)) != desktopAnimations.end();
    return isReducingOwnMotion.value_or(isUnwanted);
}

} // namespace kelpa
