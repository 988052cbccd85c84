// Lists the windows of other applications, and what is known about each.
#pragma once

#include "model/WindowItem.h"
#include "platform/DiscoverySource.h"

#include <QList>
#include <QStringList>

namespace kelpa {

/// The result of one discovery pass, handed to the store on the main thread.
struct WindowDiscoveryBatch
{
    QList<WindowItem> windows{};
    /// As `DiscoverySource::virtualDesktops`.
    QStringList virtualDesktops{};
    /// As `DiscoverySource::unofferedDesktops`.
    QList<int> unofferedDesktops{};
    /// As `DiscoverySource::desktopIDs`.
    DesktopIDs desktopIDs{};
};

/// Keeps nothing between calls. Any thread.
class WindowDiscovery
{
public:
    WindowDiscovery() = delete;

    /// The smallest window that is listed, in points (see model/Rect.h): both the window server's
    /// list and the accessibility side are compared with it. Anything smaller is a palette or a
    /// helper.
    static constexpr double minimumWidth = 80;
    static constexpr double minimumHeight = 50;

    /// Two frames count as the same when x, y, width and height each differ by at most this much,
    /// in points.
    static constexpr double frameTolerance = 8;

    /// The windows of all regular applications except the process `ownProcess`, in the window
    /// server's front-to-back order. Leaves out what cannot be read; empty when there is no list at
    /// all. `goalID` is absent in every item.
    static QList<WindowItem> visibleWindows(DiscoverySource& source, ProcessID ownProcess);
};

/// Whether the two frames are the same within `WindowDiscovery::frameTolerance`.
bool framesMatch(const Rect& a, const Rect& b);

} // namespace kelpa
