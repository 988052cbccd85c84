// The windows whose contents the server keeps apart, so that they can be read while others cover
// them, and what it says about their changes.
#pragma once

#include "platform/x11/capture/CaptureConnection.h"
#include "platform/x11/capture/CaptureSubjectRequests.h"
#include "platform/x11/capture/DamageTracker.h"

#include <xcb/damage.h>

#include <chrono>
#include <map>

namespace kelpa::x11 {

struct RedirectedWindow
{
    /// As last seen.
    CaptureSubject subject;
    /// The window whose contents are named: itself, or its frame when a compositor keeps that.
    xcb_window_t named = XCB_WINDOW_NONE;
    /// XCB_NONE when the server gives no notice of drawing.
    xcb_damage_damage_t damage = XCB_NONE;
    DamageTracker::Time lastUsed;
};

/// Used on one thread at a time; must not outlive its link, which ends all keeping when it ends.
class RedirectedWindows
{
public:
    using Time = DamageTracker::Time;

    RedirectedWindows(CaptureConnection& link, std::chrono::milliseconds settling)
        : m_link(link), m_log(settling)
    {}

    /// Takes in what the server has said so far. Waits for nothing.
    void handleEvents();

    /// Null when it is not kept, also once it was destroyed or got another frame.
    RedirectedWindow* find(xcb_window_t window);

    /// Begins to keep a window, `named` as in RedirectedWindow. Waits for nothing.
    void keep(xcb_window_t window, const CaptureSubject& subject, xcb_window_t named, Time now);
    /// Gives back what keeping it costs the server.
    void drop(xcb_window_t window);
    void dropUnusedSince(Time time);

    /// What is asked for after this shows every change so far.
    void beginRead(xcb_window_t window);
    void noteChange(xcb_window_t window) { m_log.noteChange(window); }

    /// Whether a reading that begins at `now` shows its own contents.
    bool isSettled(xcb_window_t window, Time now) const { return m_log.isSettled(window, now); }
    /// Whether it may look other than when it was last read.
    bool isChanged(xcb_window_t window) const
    {
        return !m_link.damageEvent() || m_log.isChanged(window);
    }

private:
    void handle(const xcb_generic_event_t& event);
    void probeCover(xcb_window_t window, const CaptureSubject& subject);
    void noteProbe(xcb_pixmap_t probe, bool isWhole);
    void noteResize(xcb_window_t window, const QSize& size);
    void forget(xcb_window_t window);

    CaptureConnection& m_link;
    DamageTracker m_log;
    std::map<xcb_window_t, RedirectedWindow> m_windows;
    /// Windows by the pixmap that a copy was made to, to see whether something covers them.
    std::map<xcb_pixmap_t, xcb_window_t> m_probes;
};

} // namespace kelpa::x11
