// Fetches images from the server: through shared memory, or over the connection where there is
// none.
#pragma once

#include "platform/x11/capture/CaptureConnection.h"
#include "platform/x11/capture/ShmSegment.h"
#include "platform/x11/connection/XcbReply.h"

#include <QImage>
#include <QSize>

#include <xcb/shm.h>

#include <memory>
#include <variant>

namespace kelpa::x11 {

using ImageReply = XcbReply<xcb_get_image, xcb_get_image_reply>;
using SharedImageReply = XcbReply<xcb_shm_get_image, xcb_shm_get_image_reply>;

/// Used on one thread at a time; must not outlive its connection.
class ImageReader
{
public:
    using Pending = std::variant<ImageReply, SharedImageReply>;

    /// Without `useSharedMemory` every image is transferred over the connection.
    ImageReader(CaptureConnection& display, bool useSharedMemory);

    /// Makes room for an image of the size. Waits for the server when there was less room.
    void reserve(const QSize& size);

    /// Requests the whole of a drawable of the size, which has one of the connection's two formats.
    /// Shared memory holds one image at a time.
    Pending request(xcb_drawable_t drawable, const QSize& size);

    /// Waits for the image, which then owns its pixels; null when the request failed.
    QImage read(Pending& pending, const QSize& size, bool hasAlpha);

    /// Images for which there is room come through shared memory.
    bool isSharing() const { return m_segment != nullptr; }
    /// The server takes shared memory, but refused ours.
    bool hasSharedMemoryFailed() const { return m_hasSharedMemoryFailed; }

private:
    CaptureConnection& m_display;
    bool m_useSharedMemory;
    bool m_hasSharedMemoryFailed = false;
    std::unique_ptr<ShmSegment> m_segment;
};

} // namespace kelpa::x11
