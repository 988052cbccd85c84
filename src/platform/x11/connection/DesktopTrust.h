// What the display offers, as last seen.
#pragma once

#include <atomic>

namespace kelpa::x11 {

/// Written by whoever looked last, read on any thread without waiting.
struct DesktopTrust
{
    /// An EWMH window manager runs: windows can be listed and acted on.
    std::atomic<bool> hasWindowManager = false;
    /// The server has the Composite extension: single windows can be captured.
    std::atomic<bool> hasComposite = false;
};

} // namespace kelpa::x11
