// Which windows of other applications exist right now, and what is known of each.
#pragma once

#include "model/WindowItem.h"
#include "platform/DiscoverySource.h"

#include <QList>

namespace kelpa {

/// The result of one discovery pass, handed to the store on the main thread.
struct WindowDiscoveryBatch
{
    QList<WindowItem> windows;
};

/// Keeps nothing between calls. Any thread.
class WindowDiscovery
{
public:
    WindowDiscovery() = delete;

    /// Smallest window that is listed, in points: anything below is a palette or a helper.
    static constexpr double minimumWidth = 80;
    static constexpr double minimumHeight = 50;

    /// Frames that differ by at most this many points in every edge measure are taken as one.
    static constexpr double frameTolerance = 8;

    /// The windows of all regular applications but the process `ownProcess`, in the window server's
    /// front-to-back order. Whatever cannot be read is left out; empty when there is no list at
    /// all. `goalID` is absent in every item.
    static QList<WindowItem> visibleWindows(DiscoverySource& source, ProcessID ownProcess);
};

/// Whether the two frames agree within `WindowDiscovery::frameTolerance`.
bool framesMatch(const Rect& a, const Rect& b);

} // namespace kelpa
