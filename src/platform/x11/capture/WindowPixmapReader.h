// Reads the pixmap of a redirected window, scaled down, in one round trip: names the pixmap, scales
// and fetches its pixels, and asks in the same batch whether the window still is as expected.
#pragma once

#include "platform/x11/capture/ImageReader.h"
#include "platform/x11/capture/RedirectedWindows.h"

#include <QImage>
#include <QSize>

#include <optional>

namespace kelpa::x11 {

struct WindowPixmapReading
{
    /// Null when there are no pixels.
    QImage image;
    /// The size of the window's content, unscaled.
    QSize pixelSize;
    /// The window as it was once its pixels were read; absent when it is gone or not shown.
    std::optional<CaptureSubject> subject;
    /// The pixmap could be named and has the size that was expected.
    bool hasExpectedSize = false;
    RedirectedWindows::Time time;
};

/// Used on one thread at a time; must not outlive its connection and `redirected`.
class WindowPixmapReader
{
public:
    WindowPixmapReader(CaptureConnection& display, RedirectedWindows& redirected,
                       bool useSharedMemory)
        : m_display(display), m_redirected(redirected), m_images(display, useSharedMemory)
    {}

    /// The window must be redirected; its damage is subtracted. The image is at most as wide and as
    /// high as `largest`. Waits for the server.
    WindowPixmapReading read(xcb_window_t window, const QSize& largest);

    /// Whether images come through shared memory.
    bool isSharing() const { return m_images.isSharing(); }
    bool hasSharedMemoryFailed() const { return m_images.hasSharedMemoryFailed(); }

private:
    CaptureConnection& m_display;
    RedirectedWindows& m_redirected;
    ImageReader m_images;
};

} // namespace kelpa::x11
