// Captures windows through one connection: redirects a window, reads its pixmap, and takes the
// pixels only when the window neither changed meanwhile nor still shows what obscured it.
#pragma once

#include "platform/WindowServer.h"
#include "platform/x11/capture/CaptureTarget.h"
#include "platform/x11/capture/RedirectedWindows.h"
#include "platform/x11/capture/WindowPixmapReader.h"
#include "platform/x11/capture/WindowRedirector.h"

#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace kelpa::x11 {

struct CaptureCounts
{
    /// Pictures that were read.
    std::uint64_t pictures = 0;
    /// The pictures among them that came through shared memory.
    std::uint64_t shared = 0;
    /// Windows that were not read because they were known to be unchanged.
    std::uint64_t unchanged = 0;
};

/// Used on one thread at a time, until its connection is lost.
class CaptureSession
{
public:
    /// Waits for the server. Absent when there is none or when it cannot capture windows.
    static std::unique_ptr<CaptureSession> open(DisplayConnector& connector,
                                                const CaptureLimits& limits, bool useSharedMemory);

    /// As WindowServer::captureWindow. Costs one round trip for a window that was captured before,
    /// two for another, none for an unchanged one; waits in addition while an obscured window that
    /// was redirected only now draws itself. `next` are windows that will be captured soon: they
    /// are redirected ahead of their turn, so that they have drawn themselves by then.
    std::optional<WindowCapture> capture(const CaptureTarget& target,
                                         const std::vector<CaptureTarget>& next,
                                         const QSize& largest, CaptureNeed need,
                                         const std::stop_token& stop);

    /// Handles the events that have arrived; false once the connection is lost.
    bool isConnected();
    /// The server takes shared memory, but refused ours.
    bool hasSharedMemoryFailed() const { return m_reader.hasSharedMemoryFailed(); }

    XcbTraffic traffic() const { return m_display->connection().traffic(); }
    const CaptureCounts& counts() const { return m_counts; }

private:
    CaptureSession(std::unique_ptr<CaptureConnection> display, const CaptureLimits& limits,
                   bool useSharedMemory);

    bool isUpToDate(const CaptureTarget& target);
    bool confirm(const CaptureTarget& target, const WindowPixmapReading& reading);

    std::unique_ptr<CaptureConnection> m_display;
    CaptureLimits m_limits;
    RedirectedWindows m_redirected;
    WindowRedirector m_redirector;
    WindowPixmapReader m_reader;
    CaptureCounts m_counts;
};

} // namespace kelpa::x11
