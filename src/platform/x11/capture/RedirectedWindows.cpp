#include "platform/x11/capture/RedirectedWindows.h"

#include "platform/x11/connection/ServerResource.h"
#include "platform/x11/connection/XcbEvent.h"

#include <xcb/composite.h>
#include <xcb/xfixes.h>

#include <array>
#include <vector>

namespace kelpa::x11 {

void RedirectedWindows::handleEvents()
{
    while (const XcbEvent event = m_link.connection().pollEvent())
        handle(*event);
}

void RedirectedWindows::handle(const xcb_generic_event_t& event)
{
    const std::uint8_t type = typeOf(event);
    if (m_link.damageEvent() == type) {
        m_log.noteDamage(as<xcb_damage_notify_event_t>(event).drawable, event.full_sequence);
        return;
    }
    if (m_link.selectionEvent() == type) {
        // A compositor came or went: every window is kept in another way now.
        for (const auto& [window, kept] : m_windows)
            m_log.noteChange(window);
        return;
    }
    switch (type) {
    case XCB_NO_EXPOSURE:
        noteProbe(as<xcb_no_exposure_event_t>(event).drawable, true);
        break;
    case XCB_GRAPHICS_EXPOSURE:
        noteProbe(as<xcb_graphics_exposure_event_t>(event).drawable, false);
        break;
    case XCB_DESTROY_NOTIFY:
        forget(as<xcb_destroy_notify_event_t>(event).window);
        break;
    case XCB_REPARENT_NOTIFY:
        drop(as<xcb_reparent_notify_event_t>(event).window);
        break;
    case XCB_MAP_NOTIFY:
        m_log.noteChange(as<xcb_map_notify_event_t>(event).window);
        break;
    case XCB_CONFIGURE_NOTIFY: {
        const auto& configured = as<xcb_configure_notify_event_t>(event);
        noteResize(configured.window, QSize(configured.width, configured.height));
        break;
    }
    default:
        // Errors among them: a window that is gone by now.
        break;
    }
}

RedirectedWindow* RedirectedWindows::find(xcb_window_t window)
{
    const auto it = m_windows.find(window);
    return it == m_windows.end() ? nullptr : &it->second;
}

void RedirectedWindows::keep(xcb_window_t window, const CaptureSubject& subject, xcb_window_t named,
                             Time now)
{
    drop(window);
    XcbConnection& connection = m_link.connection();
    selectEvents(connection, window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    RedirectedWindow kept{subject, named, XCB_NONE, now};
    m_log.begin(window, now);
    if (subject.isComposited && named != window) {
        m_log.noteWhole(window);
    } else {
        probeCover(window, subject);
        xcb_composite_redirect_window(connection.raw(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    }
    if (m_link.damageEvent()) {
        kept.damage = xcb_generate_id(connection.raw());
        xcb_damage_create(connection.raw(), kept.damage, window, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    }
    m_windows.insert_or_assign(window, kept);
    // A new notice tells of a change at once, which is none.
    beginRead(window);
    m_log.noteChange(window);
}

/// A copy from the window says whether all of it could be copied, in the same batch and by the
/// server's own account of what covers what. A window that nothing covers when its contents begin
/// to be kept shows them from the start; of another one the covered part is whatever it was until
/// its program has drawn it.
void RedirectedWindows::probeCover(xcb_window_t window, const CaptureSubject& subject)
{
    XcbConnection& connection = m_link.connection();
    const auto width = static_cast<std::uint16_t>(subject.pixmapSize.width());
    const auto height = static_cast<std::uint16_t>(subject.pixmapSize.height());
    const ServerPixmap probe(connection);
    xcb_create_pixmap(connection.raw(), subject.depth, probe.id(), window, width, height);
    const ServerGraphicsContext context(connection);
    const std::array<std::uint32_t, 2> values{XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS, 1};
    xcb_create_gc(connection.raw(), context.id(), probe.id(),
                  XCB_GC_SUBWINDOW_MODE | XCB_GC_GRAPHICS_EXPOSURES, values.data());
    xcb_copy_area(connection.raw(), window, probe.id(), context.id(), 0, 0, 0, 0,
                  static_cast<std::uint16_t>(width - 2 * subject.origin.x()),
                  static_cast<std::uint16_t>(height - 2 * subject.origin.y()));
    m_probes[probe.id()] = window;
}

void RedirectedWindows::noteProbe(xcb_pixmap_t probe, bool isWhole)
{
    const auto it = m_probes.find(probe);
    if (it == m_probes.end())
        return;
    if (isWhole)
        m_log.noteWhole(it->second);
    m_probes.erase(it);
}

void RedirectedWindows::noteResize(xcb_window_t window, const QSize& size)
{
    const RedirectedWindow* kept = find(window);
    const QSize border(2 * (kept ? kept->subject.origin.x() : 0),
                       2 * (kept ? kept->subject.origin.y() : 0));
    if (kept && (kept->named != window || size + border != kept->subject.pixmapSize))
        m_log.noteChange(window);
}

void RedirectedWindows::drop(xcb_window_t window)
{
    const RedirectedWindow* kept = find(window);
    if (!kept)
        return;
    XcbConnection& connection = m_link.connection();
    if (kept->named == window)
        xcb_composite_unredirect_window(connection.raw(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    if (kept->damage != XCB_NONE)
        xcb_damage_destroy(connection.raw(), kept->damage);
    selectEvents(connection, window, XCB_EVENT_MASK_NO_EVENT);
    forget(window);
}

void RedirectedWindows::dropUnusedSince(Time time)
{
    std::vector<xcb_window_t> unused;
    for (const auto& [window, kept] : m_windows) {
        if (kept.lastUsed < time)
            unused.push_back(window);
    }
    for (const xcb_window_t window : unused)
        drop(window);
}

void RedirectedWindows::forget(xcb_window_t window)
{
    std::erase_if(m_probes, [window](const auto& probe) { return probe.second == window; });
    m_windows.erase(window);
    m_log.forget(window);
}

void RedirectedWindows::beginRead(xcb_window_t window)
{
    const RedirectedWindow* kept = find(window);
    if (!kept || kept->damage == XCB_NONE)
        return;
    const xcb_void_cookie_t cookie = xcb_damage_subtract(
        m_link.connection().raw(), kept->damage, XCB_XFIXES_REGION_NONE, XCB_XFIXES_REGION_NONE);
    m_log.noteRead(window, cookie.sequence);
}

} // namespace kelpa::x11
