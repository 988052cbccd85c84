// The server that owns the windows of all applications.
#pragma once

#include "platform/DiscoverySource.h"
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

/// The picture of one window at its own bounds, without a shadow.
struct WindowCapture
{
    /// Already brought down to the size that was asked for.
    QImage image;
    /// The size of the window itself, in pixels of the screen.
    QSize pixelSize;
};

/// Whether a picture is wanted that shows the same as the last one given of that window.
enum class CaptureNeed : std::uint8_t { always, ifChanged };

struct CaptureRequest
{
    WindowID window = 0;
    /// How wide and high the picture may be, in pixels: brought down to that in each direction by
    /// itself, never up. It is drawn stretched.
    QSize largest;
    CaptureNeed need = CaptureNeed::always;
    /// A few windows that will be captured soon, for which the server may get ready meanwhile. It
    /// gets ready for no others.
    std::vector<WindowID> next{};
};

class WindowServer
{
public:
    virtual ~WindowServer() = default;

    /// Whether the contents and names of other applications' windows may be read, as last seen.
    /// Main thread; returns at once.
    virtual bool isScreenCaptureTrusted() const = 0;

    /// Asks the desktop to let this program read other windows, where one can ask; the answer that
    /// `isScreenCaptureTrusted` gives then. Main thread; returns at once.
    virtual bool requestScreenCapture() = 0;

    /// Takes one look at the desktop. Any thread, one at a time; may take as long as the window
    /// server does, so the main thread leaves it to the scheduler. Never absent: a server that does
    /// not answer gives a source whose lists are absent.
    virtual std::unique_ptr<DiscoverySource> openDiscoverySource() = 0;

    /// The window as it looks now, also when others cover it. None when there is no picture to be
    /// had, when the window is gone, when `stop` was requested, or when it shows what it showed
    /// last time and `need` says that this is not wanted. Any thread but the main one; may take as
    /// long as the window server does.
    virtual std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                                       const std::stop_token& stop) = 0;

    /// Calls `changed` on the main thread soon after windows were opened, closed, renamed,
    /// (un)minimised or restacked; several changes may come as one call. Absent when the platform
    /// gives no such notice. Main thread.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchWindows(std::function<void()> changed) = 0;
};

} // namespace kelpa
