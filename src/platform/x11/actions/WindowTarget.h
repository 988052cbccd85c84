// The window that an action is meant for.
#pragma once

#include "model/Identifiers.h"

#include <cstdint>
#include <optional>

namespace kelpa::x11 {

/// The server reuses window ids, so the number is compared with the tag on the window before
/// anything is requested.
struct WindowTarget
{
    std::uint32_t window = 0;
    /// Absent for this program's own window.
    std::optional<WindowID> number;
    ProcessID process = 0;

    friend bool operator==(const WindowTarget&, const WindowTarget&) = default;
};

} // namespace kelpa::x11
