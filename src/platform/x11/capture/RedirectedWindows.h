// The windows that are redirected to pixmaps of their own, so that they can be read while others
// obscure them. Follows their events: damage, a new size or frame, their end.
#pragma once

#include "platform/x11/capture/CaptureConnection.h"
#include "platform/x11/capture/CaptureSubjectRequests.h"
#include "platform/x11/capture/DamageTracker.h"
#include "platform/x11/capture/ObscuredProbes.h"

#include <xcb/damage.h>

#include <chrono>
#include <map>

namespace kelpa::x11 {

struct RedirectedWindow
{
    /// As last seen.
    CaptureSubject subject;
    /// The window whose pixmap is named (NameWindowPixmap): the client window itself, or its frame
    /// when a compositor has redirected that.
    xcb_window_t pixmapWindow = XCB_WINDOW_NONE;
    /// XCB_NONE when the server does not report damage.
    xcb_damage_damage_t damage = XCB_NONE;
    DamageTracker::Time lastUsed;
};

/// Keyed by client window. Used on one thread at a time; must not outlive its connection, whose end
/// ends all redirection.
class RedirectedWindows
{
public:
    using Time = DamageTracker::Time;

    RedirectedWindows(CaptureConnection& display, std::chrono::milliseconds settleTime)
        : m_display(display), m_damage(settleTime), m_probes(display)
    {}

    /// Handles the events that have arrived. Waits for nothing.
    void handleEvents();

    /// Null when the window is not redirected, also once it was destroyed or got another frame.
    RedirectedWindow* find(xcb_window_t window);

    /// Redirects a window, or joins the redirection of its frame by a compositor when
    /// `pixmapWindow` is that frame. Waits for nothing.
    void redirect(xcb_window_t window, const CaptureSubject& subject, xcb_window_t pixmapWindow,
                  Time now);
    /// Ends the redirection and all that it costs the server.
    void unredirect(xcb_window_t window);
    void unredirectUnusedSince(Time time);

    /// Subtracts the window's damage: pixels that are requested after this include it.
    void subtractDamage(xcb_window_t window);
    /// Counts the window as changed.
    void invalidate(xcb_window_t window) { m_damage.invalidate(window); }

    /// Whether pixels that are read at `now` are the window's own.
    bool isSettled(xcb_window_t window, Time now) const { return m_damage.isSettled(window, now); }
    /// Whether the window may differ from its last reading.
    bool isChanged(xcb_window_t window) const
    {
        return !m_display.damageEvent() || m_damage.isChanged(window);
    }

private:
    void handle(const xcb_generic_event_t& event);
    void handleProbe(xcb_drawable_t drawable, bool isUnobscured);
    void handleResize(xcb_window_t window, const QSize& size);
    void forget(xcb_window_t window);

    CaptureConnection& m_display;
    DamageTracker m_damage;
    ObscuredProbes m_probes;
    std::map<xcb_window_t, RedirectedWindow> m_windows;
};

} // namespace kelpa::x11
