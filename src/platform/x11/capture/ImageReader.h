// Fetches pictures from the server: through shared memory, or over the connection where there is
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

/// Used on one thread at a time; must not outlive its link.
class ImageReader
{
public:
    using Pending = std::variant<ImageReply, SharedImageReply>;

    /// Without `maySharePictures` all goes over the connection.
    ImageReader(CaptureConnection& link, bool maySharePictures);

    /// Makes room for pictures of the size. Waits for the server when there was less.
    void reserve(const QSize& size);

    /// Asks for all of a drawable of the size, which has one of the link's two formats. With shared
    /// memory, one picture at a time.
    Pending ask(xcb_drawable_t drawable, const QSize& size);

    /// Waits for the picture, which then owns its pixels. A null image when there is none.
    QImage read(Pending& pending, const QSize& size, bool hasAlpha);

    /// Pictures for which there was room come through shared memory.
    bool isSharing() const { return m_segment != nullptr; }
    /// The server takes shared memory, but not ours.
    bool hasFailedToShare() const { return m_hasFailedToShare; }

private:
    CaptureConnection& m_link;
    bool m_mayShare;
    bool m_hasFailedToShare = false;
    std::unique_ptr<ShmSegment> m_segment;
};

} // namespace kelpa::x11
