// Captures windows through a connection of its own, so that a slow capture never delays a discovery
// pass.
#pragma once

#include "platform/x11/capture/CaptureSession.h"

#include <memory>
#include <mutex>

namespace kelpa::x11 {

/// Connects at the first capture, and again after the connection was lost.
class WindowCapturer
{
public:
    explicit WindowCapturer(std::shared_ptr<DisplayConnector> connector,
                            const CaptureLimits& limits = {});
    ~WindowCapturer();

    /// As CaptureSession::capture. Any thread but the main one; one capture at a time, others
    /// wait.
    std::optional<WindowCapture> capture(const CaptureTarget& target,
                                         const std::vector<CaptureTarget>& next,
                                         const QSize& largest, CaptureNeed need,
                                         const std::stop_token& stop);

    /// Counts of the current connection. Any thread; both wait for a capture in progress.
    XcbTraffic traffic() const;
    CaptureCounts counts() const;

private:
    const std::shared_ptr<DisplayConnector> m_connector;
    const CaptureLimits m_limits;
    mutable std::mutex m_mutex;
    std::unique_ptr<CaptureSession> m_session;
    bool m_useSharedMemory = true;
};

} // namespace kelpa::x11
