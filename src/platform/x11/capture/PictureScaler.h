// Scales the picture of a window down to the size of its preview on the server, so that only the
// small one is transferred.
#pragma once

#include "platform/x11/capture/CaptureConnection.h"
#include "platform/x11/connection/ServerResource.h"

#include <QRect>
#include <QSize>

#include <optional>
#include <vector>

namespace kelpa::x11 {

/// The picture to scale.
struct SourcePicture
{
    xcb_pixmap_t pixmap = XCB_NONE;
    PixelFormat format;
    /// The part of the pixmap that is wanted, in its pixels; not empty.
    QRect content;
    /// The window whose bounding shape cuts the picture out; XCB_NONE when it is a rectangle.
    xcb_window_t shape = XCB_NONE;
    /// Where the origin of that window lies in the pixmap.
    QPoint shapeOrigin;
};

/// The sizes through which a picture goes from one size to a smaller one, the last included: each
/// is at least half of the one before, so that interpolating between four pixels leaves none out.
std::vector<QSize> scalingSteps(const QSize& from, const QSize& to);

/// Sends the requests that scale `source` to `size` and waits for nothing. The result has the
/// connection's transparent format when `hasAlpha`, else its opaque one. When the source is not as
/// described, the result's pixels are undefined.
ServerPixmap scaledPicture(CaptureConnection& display, const SourcePicture& source,
                           const QSize& size, bool hasAlpha);

} // namespace kelpa::x11
