// Finds out whether other windows obscure a window when it is redirected: CopyArea from it answers
// with NoExposure when all of it could be copied, else with GraphicsExposure.
#pragma once

#include "platform/x11/capture/CaptureConnection.h"
#include "platform/x11/capture/CaptureSubjectRequests.h"

#include <map>
#include <optional>

namespace kelpa::x11 {

/// A window that nothing obscures when it is redirected shows its own pixels from the start; the
/// obscured part of another one shows whatever was there until the client has drawn it. Used on one
/// thread at a time; must not outlive its connection.
class ObscuredProbes
{
public:
    explicit ObscuredProbes(CaptureConnection& display) : m_display(display) {}

    /// Sends the copy. Sent in one batch with the redirection and before it, it answers by the
    /// server's own account of what obscures what. Waits for nothing.
    void send(xcb_window_t window, const CaptureSubject& subject);

    /// The window that was copied to `drawable`, as NoExposure and GraphicsExposure name it; absent
    /// when that is no pending probe. The probe is over.
    std::optional<xcb_window_t> take(xcb_drawable_t drawable);

    void forget(xcb_window_t window);

private:
    CaptureConnection& m_display;
    /// The probed windows by the pixmap to which they are copied.
    std::map<xcb_pixmap_t, xcb_window_t> m_pending;
};

} // namespace kelpa::x11
