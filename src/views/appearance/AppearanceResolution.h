// Resolves how the interface looks and moves from the person's choice, the desktop and the palette.
#pragma once

#include "model/GoalAccent.h"

#include <optional>
#include <vector>

namespace kelpa {

/// The value of each source; absent for a source that has none.
struct AppearanceResolution
{
    /// The person's choices for Kelpa alone.
    std::optional<Appearance> ownAppearance;
    std::optional<bool> isReducingOwnMotion;
    std::optional<Appearance> desktopAppearance;
    /// Whether animations are wanted, by each of the desktop's settings.
    std::vector<std::optional<bool>> desktopAnimations;
    /// The appearance of the toolkit's colours, which are always one or the other.
    Appearance paletteAppearance = Appearance::light;

    /// The person's own choice before the desktop's, and that before the palette.
    Appearance appearance() const;

    /// The person's own choice; without one, motion is reduced while any of the desktop's settings
    /// asks for it. Where there are several, the others may still have their initial values.
    bool isReducingMotion() const;
};

} // namespace kelpa
