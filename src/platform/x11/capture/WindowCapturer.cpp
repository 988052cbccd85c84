#include "platform/x11/capture/WindowCapturer.h"

#include <utility>

namespace kelpa::x11 {

WindowCapturer::WindowCapturer(std::shared_ptr<DisplayConnector> connector,
                               const CaptureLimits& limits)
    : m_connector(std::move(connector)), m_limits(limits)
{}

WindowCapturer::~WindowCapturer() = default;

std::optional<WindowCapture> WindowCapturer::capture(const CaptureTarget& target,
                                                     const std::vector<CaptureTarget>& next,
                                                     const QSize& largest, CaptureNeed need,
                                                     const std::stop_token& stop)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    if (stop.stop_requested() || largest.isEmpty())
        return std::nullopt;
    if (!m_session || !m_session->isConnected())
        m_session = CaptureSession::open(*m_connector, m_limits, m_useSharedMemory);
    if (!m_session)
        return std::nullopt;
    std::optional<WindowCapture> result = m_session->capture(target, next, largest, need, stop);
    // A server that ends the connection over shared memory would do so again.
    m_useSharedMemory = m_useSharedMemory && !m_session->hasSharedMemoryFailed();
    return result;
}

XcbTraffic WindowCapturer::traffic() const
{
    const std::scoped_lock lock(m_mutex);
    return m_session ? m_session->traffic() : XcbTraffic{};
}

CaptureCounts WindowCapturer::counts() const
{
    const std::scoped_lock lock(m_mutex);
    return m_session ? m_session->counts() : CaptureCounts{};
}

} // namespace kelpa::x11
