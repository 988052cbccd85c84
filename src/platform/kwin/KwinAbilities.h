// What Kelpa can do in a KWin session.
#pragma once

#include "platform/DesktopAbilities.h"
#include "platform/kwin/KwinWindowServer.h"

#include <optional>

namespace kelpa::kwin {

struct KwinStanding
{
    /// KWin lists its windows.
    bool isListing = true;
    PictureStanding pictures = PictureStanding::given;
    /// Taps of Super are heard by the calls of Plasma's launcher. Absent until that is known, when
    /// nothing counts as missing.
    std::optional<bool> isKeyHeard = true;
};

DesktopAbilities abilitiesOfKwin(const KwinStanding& standing);

} // namespace kelpa::kwin
