// What Kelpa can do under a compositor of the wlroots family.
#pragma once

#include "platform/DesktopAbilities.h"

namespace kelpa::wayland {

/// Of a compositor that lists its windows; whether it is a sway whose IPC replies too.
DesktopAbilities abilitiesOfWlr(bool hasSwayIpc);

/// Of one that lists its windows no more, without IPC.
DesktopAbilities abilitiesWithoutList();

} // namespace kelpa::wayland
