#include "platform/x11/capture/ObscuredProbes.h"

#include "platform/x11/connection/ServerResource.h"

#include <array>

namespace kelpa::x11 {

void ObscuredProbes::send(xcb_window_t window, const CaptureSubject& subject)
{
    XcbConnection& connection = m_display.connection();
    const auto width = static_cast<std::uint16_t>(subject.pixmapSize.width());
    const auto height = static_cast<std::uint16_t>(subject.pixmapSize.height());
    const ServerPixmap copy(connection);
    xcb_create_pixmap(connection.raw(), subject.depth, copy.id(), window, width, height);
    const ServerGraphicsContext context(connection);
    const std::array<std::uint32_t, 2> values{XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS, 1};
    xcb_create_gc(connection.raw(), context.id(), copy.id(),
                  XCB_GC_SUBWINDOW_MODE | XCB_GC_GRAPHICS_EXPOSURES, values.data());
    xcb_copy_area(connection.raw(), window, copy.id(), context.id(), 0, 0, 0, 0,
                  static_cast<std::uint16_t>(width - 2 * subject.origin.x()),
                  static_cast<std::uint16_t>(height - 2 * subject.origin.y()));
    m_pending[copy.id()] = window;
}

std::optional<xcb_window_t> ObscuredProbes::take(xcb_drawable_t drawable)
{
    const auto it = m_pending.find(drawable);
    if (it == m_pending.end())
        return std::nullopt;
    const xcb_window_t window = it->second;
    m_pending.erase(it);
    return window;
}

void ObscuredProbes::forget(xcb_window_t window)
{
    std::erase_if(m_pending, [window](const auto& probe) { return probe.second == window; });
}

} // namespace kelpa::x11
