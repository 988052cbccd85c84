// Redirects the window to capture, and ahead of their turn those that come next, so that these have
// drawn themselves by then.
#pragma once

#include "platform/x11/capture/CaptureConnection.h"
#include "platform/x11/capture/CaptureTarget.h"
#include "platform/x11/capture/RedirectedWindows.h"

#include <optional>
#include <set>
#include <vector>

namespace kelpa::x11 {

/// Used on one thread at a time; must not outlive its connection and `redirected`.
class WindowRedirector
{
public:
    WindowRedirector(CaptureConnection& display, RedirectedWindows& redirected, qint64 maxPixels)
        : m_display(display), m_redirected(redirected), m_maxPixels(maxPixels)
    {}

    /// Redirects those that are not redirected yet. Waits for the server once for all of them, and
    /// again only where a compositor has redirected the target's frame. A window of `next` that
    /// cannot be redirected is not tried again before its turn.
    void redirect(const CaptureTarget& target, const std::vector<CaptureTarget>& next);

    /// Redirects the target as `subject` describes it, in its frame when a compositor runs; not
    /// when it is too large or no longer the target. Waits for the server when a compositor runs.
    void redirect(const CaptureTarget& target, const CaptureSubject& subject);

    /// Redirects the target by itself although a compositor runs: the compositor lets this frame
    /// draw on the screen directly. Waits for the server.
    void redirectWithoutFrame(const CaptureTarget& target);

    /// Whether the server can scale pixels of this kind and the window is not too large.
    bool isCapturable(const CaptureSubject& subject) const;

private:
    std::vector<CaptureTarget> unredirected(const CaptureTarget& target,
                                            const std::vector<CaptureTarget>& next);

    CaptureConnection& m_display;
    RedirectedWindows& m_redirected;
    const qint64 m_maxPixels;
    /// The windows that came next at the last capture.
    std::set<WindowID> m_triedAhead;
};

} // namespace kelpa::x11
