// What Kelpa can do under a compositor of the wlroots family.
#pragma once

#include "platform/DesktopAbilities.h"

namespace kelpa::wayland {

struct WlrOffer
{
    /// It is a sway whose IPC replies.
    bool hasSwayIpc = false;
    /// It takes pictures of windows, as `arePicturesAmong` says.
    bool hasPictures = false;
};

/// Of a compositor that lists its windows.
DesktopAbilities abilitiesOfWlr(const WlrOffer& offer);

/// Of one that lists its windows no more, without IPC.
DesktopAbilities abilitiesWithoutList();

} // namespace kelpa::wayland
