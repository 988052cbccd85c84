// Remembers in which order windows were active. sway keeps that order within each container only,
// which says nothing of windows on two workspaces.
#pragma once

#include "platform/wayland/sway/SwayTree.h"

#include <cstdint>
#include <vector>

namespace kelpa::wayland {

/// Used on one thread at a time.
class ActivationOrder
{
public:
    /// The windows there are now, the most recently active first. Those that were not active since
    /// this object exists come last, in the order in which they were given.
    std::vector<SwayWindow> sorted(std::vector<SwayWindow> windows);

private:
    /// Containers that were active, the latest first.
    std::vector<std::int64_t> m_active;
};

} // namespace kelpa::wayland
