// The connection that windows are captured through, with what the server can do for it.
#pragma once

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <xcb/render.h>

#include <map>
#include <memory>

namespace kelpa::x11 {

/// How the server draws pixels of one kind.
struct PixelFormat
{
    xcb_render_pictformat_t id = XCB_NONE;
    std::uint8_t depth = 0;
    bool hasAlpha = false;
};

/// Used on one thread at a time.
class CaptureConnection
{
public:
    /// Waits for the server. Absent when there is none or when it cannot keep the contents of
    /// windows apart and scale them.
    static std::unique_ptr<CaptureConnection> open(DisplayConnector& connector);

    XcbConnection& connection() { return m_link->connection(); }
    const XcbConnection& connection() const { return m_link->connection(); }
    const AtomTable& atoms() const { return m_link->atoms(); }

    /// The code of the event that says that a window was drawn to; absent when the server gives no
    /// such notice.
    const std::optional<std::uint8_t>& damageEvent() const { return m_damageEvent; }
    /// The code of the event that says that a selection has changed hands.
    std::uint8_t selectionEvent() const { return m_selectionEvent; }
    /// The server takes memory that is handed to it as a file descriptor.
    bool takesSharedMemory() const { return m_takesSharedMemory; }
    /// The selection that a compositor owns while it keeps the contents of all windows.
    xcb_atom_t compositorSelection() const { return m_compositorSelection; }

    /// Absent for a kind of pixels that the server cannot scale.
    std::optional<PixelFormat> formatOf(xcb_visualid_t visual) const;
    /// 32 bits a pixel, laid out as QImage::Format_RGB32 but for the unused byte.
    const PixelFormat& opaque() const { return m_opaque; }
    /// 32 bits a pixel, laid out as QImage::Format_ARGB32_Premultiplied.
    const PixelFormat& transparent() const { return m_transparent; }

private:
    explicit CaptureConnection(std::unique_ptr<DisplayConnection> link);

    bool negotiate();
    bool readFormats();
    void watchCompositor();

    std::unique_ptr<DisplayConnection> m_link;
    std::optional<std::uint8_t> m_damageEvent;
    std::uint8_t m_selectionEvent = 0;
    bool m_takesSharedMemory = false;
    xcb_atom_t m_compositorSelection = XCB_ATOM_NONE;
    std::map<xcb_visualid_t, PixelFormat> m_formats;
    PixelFormat m_opaque;
    PixelFormat m_transparent;
};

} // namespace kelpa::x11
