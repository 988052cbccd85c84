// Which of the portals that Kelpa uses the desktop has, for who asks about the desktop.
#pragma once

#include "platform/freedesktop/portals/Sandbox.h"

#include <chrono>
#include <optional>

namespace kelpa {

struct PortalReading
{
    /// The versions of the interfaces; absent where there is none.
    std::optional<unsigned> background{};
    std::optional<unsigned> globalShortcuts{};
    Sandbox sandbox = Sandbox::none;

    friend bool operator==(const PortalReading&, const PortalReading&) = default;
};

/// Starts the portal where it does not run. Each of its answers may take `limit`; not on a thread
/// that runs an event loop.
PortalReading readPortals(const SandboxSigns& signs, std::chrono::milliseconds limit);

} // namespace kelpa
