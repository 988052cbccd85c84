// The window server, which owns the windows of all applications.
#pragma once

#include "platform/DiscoverySource.h"
#include "platform/Obstacle.h"
#include "platform/Subscription.h"

#include <QImage>
#include <QSize>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace kelpa {

/// The picture of one window within its bounds, without a shadow.
struct WindowCapture
{
    /// Already scaled down to the requested size.
    QImage image;
    /// The size of the window itself, in pixels of the screen.
    QSize pixelSize;
};

/// Whether to capture a window whose contents have not changed since its last capture.
enum class CaptureNeed : std::uint8_t { always, ifChanged };

struct CaptureRequest
{
    WindowID window = 0;
    /// The largest size of the picture, in pixels. Width and height are scaled down to it
    /// independently, never up; the view stretches the picture to its proportions.
    QSize largest;
    CaptureNeed need = CaptureNeed::always;
    /// A few windows that will be captured soon, which the server may prepare meanwhile. It
    /// prepares no others.
    std::vector<WindowID> next{};
};

class WindowServer
{
public:
    virtual ~WindowServer() = default;

    /// Whether Kelpa may read the contents and names of other applications' windows, as last known.
    /// Main thread; returns at once.
    virtual bool isScreenCaptureTrusted() const = 0;

    /// What stands in the way while `isScreenCaptureTrusted` is false; absent while the desktop has
    /// not been asked yet. Main thread; returns at once.
    virtual std::optional<Obstacle> screenCaptureObstacle() const = 0;

    /// Requests that permission from the desktop, where it can be requested; returns what
    /// `isScreenCaptureTrusted` gives afterwards. Main thread; returns at once.
    virtual bool requestScreenCapture() = 0;

    /// Takes a snapshot of the desktop. Any thread, one at a time; may take as long as the window
    /// server does, so the main thread leaves it to the scheduler. Never null: a server that does
    /// not answer gives a source whose lists are absent.
    virtual std::unique_ptr<DiscoverySource> openDiscoverySource() = 0;

    /// The current picture of the window, also when others cover it. Absent when no picture is
    /// available, when the window is gone, when `stop` was requested before the picture was taken,
    /// or when `need` is `ifChanged` and the contents have not changed. Any thread but the main
    /// one; may take as long as the window server does.
    virtual std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                                       const std::stop_token& stop) = 0;

    /// Whether no window at all can be captured at present, and will be later, as on a screen that
    /// is switched off. Any thread; returns at once.
    virtual bool isPausing() const { return false; }

    /// Calls `changed` on the main thread soon after windows were opened, closed, renamed,
    /// (un)minimised or restacked; changes may be coalesced into one call. Null when the platform
    /// does not report changes. Main thread.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchWindows(std::function<void()> changed) = 0;
};

} // namespace kelpa
