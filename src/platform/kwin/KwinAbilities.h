// What Kelpa can do in a KWin session.
#pragma once

#include "platform/DesktopAbilities.h"
#include "platform/kwin/KwinWindowServer.h"

namespace kelpa::kwin {

struct KwinStanding
{
    /// KWin lists its windows.
    bool isListing = true;
    PictureStanding pictures = PictureStanding::given;
    /// Taps of Super are heard by the calls of Plasma's launcher.
    bool isKeyHeard = true;
};

DesktopAbilities abilitiesOfKwin(const KwinStanding& standing);

} // namespace kelpa::kwin
