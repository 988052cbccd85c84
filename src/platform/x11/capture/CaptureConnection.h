// The connection through which windows are captured, with the extensions that the server has for
// it.
#pragma once

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <xcb/render.h>

#include <map>
#include <memory>

namespace kelpa::x11 {

/// A picture format of the Render extension.
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
    /// Waits for the server. Absent when there is none or when it cannot redirect windows and scale
    /// pictures.
    static std::unique_ptr<CaptureConnection> open(DisplayConnector& connector);

    XcbConnection& connection() { return m_display->connection(); }
    const XcbConnection& connection() const { return m_display->connection(); }
    const AtomTable& atoms() const { return m_display->atoms(); }

    /// The event code of DamageNotify; absent when the server does not report damage.
    const std::optional<std::uint8_t>& damageEvent() const { return m_damageEvent; }
    /// The event code of XFixesSelectionNotify: a selection has another owner.
    std::uint8_t selectionEvent() const { return m_selectionEvent; }
    /// The server accepts shared memory as a file descriptor (MIT-SHM 1.2).
    bool takesSharedMemory() const { return m_takesSharedMemory; }
    /// The selection that a compositor owns while it redirects all windows.
    xcb_atom_t compositorSelection() const { return m_compositorSelection; }

    /// Absent for a visual that Render has no format for: the server cannot scale its pixels.
    std::optional<PixelFormat> formatOf(xcb_visualid_t visual) const;
    /// 32 bits a pixel, laid out as QImage::Format_RGB32 but for the unused byte.
    const PixelFormat& opaque() const { return m_opaque; }
    /// 32 bits a pixel, laid out as QImage::Format_ARGB32_Premultiplied.
    const PixelFormat& transparent() const { return m_transparent; }

private:
    explicit CaptureConnection(std::unique_ptr<DisplayConnection> display);

    bool negotiate();
    bool readFormats();
    void watchCompositor();

    std::unique_ptr<DisplayConnection> m_display;
    std::optional<std::uint8_t> m_damageEvent;
    std::uint8_t m_selectionEvent = 0;
    bool m_takesSharedMemory = false;
    xcb_atom_t m_compositorSelection = XCB_ATOM_NONE;
    std::map<xcb_visualid_t, PixelFormat> m_formats;
    PixelFormat m_opaque;
    PixelFormat m_transparent;
};

} // namespace kelpa::x11
