// The subject of a capture, and the limits within which windows are captured. Plain values.
#pragma once

#include "model/Identifiers.h"

#include <QtGlobal>

#include <chrono>
#include <cstdint>

namespace kelpa::x11 {

/// A window by its number and the server's id. The id may have passed on to another window, which
/// then does not bear the number.
struct CaptureTarget
{
    WindowID number = 0;
    std::uint32_t window = 0;
};

struct CaptureLimits
{
    /// How long a window that was obscured when it was redirected may take to draw itself; until
    /// then it is not captured.
    std::chrono::milliseconds settleTime{150};
    /// A window that was not captured for this long is unredirected. Longer than it takes to
    /// capture 500 windows in turn.
    std::chrono::milliseconds unredirectAfter{std::chrono::minutes(10)};
    /// Larger windows are not captured: the server would block on their pixmaps.
    qint64 maxPixels = qint64{64} * 1024 * 1024;
};

} // namespace kelpa::x11
