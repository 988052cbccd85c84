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
    /// The display has been asked for both, or cannot be reached: what is false above is missing,
    /// and not only unknown. Written last.
    std::atomic<bool> isKnown = false;
};

} // namespace kelpa::x11
