// The requests whose replies say how a window can be captured, all sent at once.
#pragma once

#include "model/Identifiers.h"
#include "platform/x11/capture/CaptureConnection.h"
#include "platform/x11/connection/XcbReply.h"

#include <QRect>
#include <QSize>

#include <xcb/shape.h>

#include <optional>

namespace kelpa::x11 {

/// How a window can be captured. Equal values before and after a reading mean that nothing moved or
/// changed its shape in between.
struct CaptureSubject
{
    /// The number that the window bears.
    WindowID number = 0;
    /// The window's pixmap, in pixels, with the border.
    QSize pixmapSize;
    /// The client's bounds in the pixmap, in its pixels, without frame and shadow; not empty.
    QRect content;
    /// The client window's origin, inside its border, in the pixmap.
    QPoint origin;
    /// Of the window whose pixmap is named.
    xcb_visualid_t visual = XCB_NONE;
    std::uint8_t depth = 0;
    bool isShaped = false;
    /// A compositor runs and has redirected the children of the root.
    bool isComposited = false;

    friend bool operator==(const CaptureSubject&, const CaptureSubject&) = default;
};

/// Sent when constructed; `read` waits for the replies. Must not outlive its connection.
class CaptureSubjectRequests
{
public:
    /// `pixmapWindow` is the window whose pixmap is named: the client window itself or its frame.
    CaptureSubjectRequests(CaptureConnection& display, xcb_window_t client,
                           xcb_window_t pixmapWindow);

    /// Absent when the window is gone, bears no number, is not shown, or has no pixels.
    std::optional<CaptureSubject> read();

private:
    bool m_isFramed;
    AttributesReply m_attributes;
    GeometryReply m_geometry;
    AttributesReply m_pixmapAttributes;
    GeometryReply m_pixmapGeometry;
    TranslationReply m_position;
    PropertyReply m_number;
    PropertyReply m_extents;
    XcbReply<xcb_shape_query_extents, xcb_shape_query_extents_reply> m_shape;
    SelectionOwnerReply m_compositor;
};

/// The ancestor of the window, or the window itself, that is a child of the root; absent when the
/// window is gone. Waits for the server once for each level.
std::optional<xcb_window_t> frameOf(CaptureConnection& display, xcb_window_t client);

} // namespace kelpa::x11
