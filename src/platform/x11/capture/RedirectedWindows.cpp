#include "platform/x11/capture/RedirectedWindows.h"

#include "platform/LoggingCategories.h"
#include "platform/x11/connection/XcbEvent.h"

#include <xcb/composite.h>
#include <xcb/xfixes.h>

#include <vector>

namespace kelpa::x11 {

void RedirectedWindows::handleEvents()
{
    while (const XcbEvent event = m_display.connection().pollEvent())
        handle(*event);
}

void RedirectedWindows::handle(const xcb_generic_event_t& event)
{
    const std::uint8_t type = typeOf(event);
    if (m_display.damageEvent() == type) {
        m_damage.noteDamage(as<xcb_damage_notify_event_t>(event).drawable, event.full_sequence);
        return;
    }
    if (m_display.selectionEvent() == type) {
        // A compositor started or ended: every window's pixmap is now that of another window.
        for (const auto& [window, redirected] : m_windows)
            m_damage.invalidate(window);
        return;
    }
    switch (type) {
    case XCB_NO_EXPOSURE:
        handleProbe(as<xcb_no_exposure_event_t>(event).drawable, true);
        break;
    case XCB_GRAPHICS_EXPOSURE:
        handleProbe(as<xcb_graphics_exposure_event_t>(event).drawable, false);
        break;
    case XCB_DESTROY_NOTIFY:
        forget(as<xcb_destroy_notify_event_t>(event).window);
        break;
    case XCB_REPARENT_NOTIFY:
        unredirect(as<xcb_reparent_notify_event_t>(event).window);
        break;
    case XCB_MAP_NOTIFY:
        m_damage.invalidate(as<xcb_map_notify_event_t>(event).window);
        break;
    case XCB_CONFIGURE_NOTIFY: {
        const auto& configured = as<xcb_configure_notify_event_t>(event);
        handleResize(configured.window, QSize(configured.width, configured.height));
        break;
    }
    default:
        // Includes errors: the window of a request is gone.
        break;
    }
}

RedirectedWindow* RedirectedWindows::find(xcb_window_t window)
{
    const auto it = m_windows.find(window);
    return it == m_windows.end() ? nullptr : &it->second;
}

void RedirectedWindows::redirect(xcb_window_t window, const CaptureSubject& subject,
                                 xcb_window_t pixmapWindow, Time now)
{
    unredirect(window);
    XcbConnection& connection = m_display.connection();
    selectEvents(connection, window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    RedirectedWindow redirected{subject, pixmapWindow, XCB_NONE, now};
    m_damage.track(window, now);
    if (subject.isComposited && pixmapWindow != window) {
        // The compositor has redirected the frame long since.
        m_damage.noteUnobscured(window);
    } else {
        m_probes.send(window, subject);
        xcb_composite_redirect_window(connection.raw(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    }
    if (m_display.damageEvent()) {
        redirected.damage = xcb_generate_id(connection.raw());
        xcb_damage_create(connection.raw(), redirected.damage, window,
                          XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    }
    m_windows.insert_or_assign(window, redirected);
    qCDebug(logX11Capture, "window %u redirected%s", subject.number,
            pixmapWindow == window ? "" : " in its frame by the compositor");
    // A new damage object reports the whole window as damaged, which is no change.
    subtractDamage(window);
    m_damage.invalidate(window);
}

void RedirectedWindows::handleProbe(xcb_drawable_t drawable, bool isUnobscured)
{
    const std::optional<xcb_window_t> window = m_probes.take(drawable);
    if (window && isUnobscured)
        m_damage.noteUnobscured(*window);
}

void RedirectedWindows::handleResize(xcb_window_t window, const QSize& size)
{
    const RedirectedWindow* redirected = find(window);
    const QSize border(2 * (redirected ? redirected->subject.origin.x() : 0),
                       2 * (redirected ? redirected->subject.origin.y() : 0));
    if (redirected &&
        (redirected->pixmapWindow != window || size + border != redirected->subject.pixmapSize))
        m_damage.invalidate(window);
}

void RedirectedWindows::unredirect(xcb_window_t window)
{
    const RedirectedWindow* redirected = find(window);
    if (!redirected)
        return;
    XcbConnection& connection = m_display.connection();
    if (redirected->pixmapWindow == window)
        xcb_composite_unredirect_window(connection.raw(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    if (redirected->damage != XCB_NONE)
        xcb_damage_destroy(connection.raw(), redirected->damage);
    selectEvents(connection, window, XCB_EVENT_MASK_NO_EVENT);
    qCDebug(logX11Capture, "window %u unredirected", redirected->subject.number);
    forget(window);
}

void RedirectedWindows::unredirectUnusedSince(Time time)
{
    std::vector<xcb_window_t> unused;
    for (const auto& [window, redirected] : m_windows) {
        if (redirected.lastUsed < time)
            unused.push_back(window);
    }
    for (const xcb_window_t window : unused)
        unredirect(window);
}

void RedirectedWindows::forget(xcb_window_t window)
{
    m_probes.forget(window);
    m_windows.erase(window);
    m_damage.forget(window);
}

void RedirectedWindows::subtractDamage(xcb_window_t window)
{
    const RedirectedWindow* redirected = find(window);
    if (!redirected || redirected->damage == XCB_NONE)
        return;
    const xcb_void_cookie_t cookie =
        xcb_damage_subtract(m_display.connection().raw(), redirected->damage,
                            XCB_XFIXES_REGION_NONE, XCB_XFIXES_REGION_NONE);
    m_damage.noteSubtraction(window, cookie.sequence);
}

} // namespace kelpa::x11
