// Resolves how the interface looks and moves from the person's choice, the desktop and the palette.
#pragma once

#include "model/GoalAccent.h"

#include <optional>
#include <vector>

namespace kelpa {

/// What each of them says; absent for one that does not say.
struct AppearanceResolution
{
    /// What the person set for Kelpa alone.
    std::optional<Appearance> ownAppearance;
    std::optional<bool> isReducingOwnMotion;
    std::optional<Appearance> desktopAppearance;
    /// Whether animations are wanted, by each setting of the desktop.
    std::vector<std::optional<bool>> desktopAnimations;
    /// As the toolkit's colours are, which always are one or the other.
    Appearance paletteAppearance = Appearance::light;

    /// The person's own choice before the desktop's, and that before the palette.
    Appearance appearance() const;

    /// The person's own choice; without one, motion is reduced while any of the desktop's settings
    /// asks for it. Where there are several, the others may still be what they were from the
    /// beginning.
    bool isReducingMotion() const;
};

} // namespace kelpa
