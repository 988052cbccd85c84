// Pictures of single windows, through a connection of its own, so that a slow capture never delays
// a look at the desktop.
#pragma once

#include "platform/x11/CaptureSession.h"

#include <QByteArray>

#include <memory>
#include <mutex>

namespace kelpa::x11 {

/// Connects at the first capture, and anew when the connection was lost.
class WindowCapturer
{
public:
    /// `display` as in the DISPLAY variable; empty means that variable.
    explicit WindowCapturer(QByteArray display, const CaptureLimits& limits = {});
    ~WindowCapturer();

    /// As CaptureSession::capture. Any thread but the main one; one capture at a time, others
    /// wait.
    std::optional<WindowCapture> capture(const CaptureTarget& target,
                                         const std::vector<CaptureTarget>& others, int longestSide,
                                         CaptureNeed need, const std::stop_token& stop);

    /// Of the present connection. Any thread; both wait for a capture in progress.
    XcbTraffic traffic() const;
    CaptureCounts counts() const;

private:
    const QByteArray m_display;
    const CaptureLimits m_limits;
    mutable std::mutex m_mutex;
    std::unique_ptr<CaptureSession> m_session;
    bool m_maySharePictures = true;
};

} // namespace kelpa::x11
