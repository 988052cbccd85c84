// The abilities of the display, as of the last discovery pass.
#pragma once

#include <atomic>

namespace kelpa::x11 {

/// Written by each discovery pass, read on any thread without waiting.
struct DesktopTrust
{
    /// An EWMH window manager runs: windows can be listed and acted on.
    std::atomic<bool> hasWindowManager = false;
    /// The server has the Composite extension: windows can be captured one by one.
    std::atomic<bool> hasComposite = false;
};

} // namespace kelpa::x11
