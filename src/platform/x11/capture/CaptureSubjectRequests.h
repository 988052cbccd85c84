// The questions whose answers say how a window can be captured, all sent at once.
#pragma once

#include "model/Identifiers.h"
#include "platform/x11/capture/CaptureConnection.h"
#include "platform/x11/connection/XcbReply.h"

#include <QRect>
#include <QSize>

#include <xcb/shape.h>

#include <optional>

namespace kelpa::x11 {

/// How a window can be captured; the same answer before and after means that nothing moved between.
struct CaptureSubject
{
    /// The number that the window bears.
    WindowID number = 0;
    /// In the pixmap, its border included.
    QSize pixmapSize;
    /// The window's own bounds in the pixmap, without frame and shadow; not empty.
    QRect content;
    /// Where the window's origin, inside its border, lies in the pixmap.
    QPoint origin;
    /// Of the window whose contents are named.
    xcb_visualid_t visual = XCB_NONE;
    std::uint8_t depth = 0;
    bool isShaped = false;
    /// A compositor keeps the contents of the windows that are children of the root.
    bool isComposited = false;

    friend bool operator==(const CaptureSubject&, const CaptureSubject&) = default;
};

/// Sent when constructed; `read` waits for the answers. Must not outlive its link.
class CaptureSubjectRequests
{
public:
    /// `named` is the window whose contents are named: the client window itself, or the frame that
    /// it is in.
    CaptureSubjectRequests(CaptureConnection& link, xcb_window_t client, xcb_window_t named);

    /// Absent when the window is gone, bears no number, is not shown, or has no pixels.
    std::optional<CaptureSubject> read();

private:
    bool m_isFramed;
    AttributesReply m_attributes;
    GeometryReply m_geometry;
    AttributesReply m_namedAttributes;
    GeometryReply m_namedGeometry;
    TranslationReply m_position;
    PropertyReply m_number;
    PropertyReply m_extents;
    XcbReply<xcb_shape_query_extents, xcb_shape_query_extents_reply> m_shape;
    SelectionOwnerReply m_compositor;
};

/// The child of the root that the window is in, itself perhaps; absent when the window is gone.
/// Waits for the server once for each level.
std::optional<xcb_window_t> frameOf(CaptureConnection& link, xcb_window_t client);

} // namespace kelpa::x11
