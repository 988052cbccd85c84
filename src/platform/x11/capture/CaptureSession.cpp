#include "platform/x11/capture/CaptureSession.h"

#include "platform/LoggingCategories.h"

#include <condition_variable>
#include <mutex>
#include <utility>

namespace kelpa::x11 {

namespace {

// A window that is resized all the while is left for its next turn.
constexpr int maxAttempts = 3;

/// Whether the time has passed without a stop.
bool pause(std::chrono::milliseconds time, const std::stop_token& stop)
{
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any stopped;
    stopped.wait_for(lock, stop, time, [] { return false; });
    return !stop.stop_requested();
}

} // namespace

std::unique_ptr<CaptureSession>
CaptureSession::open(DisplayConnector& connector, const CaptureLimits& limits, bool useSharedMemory)
{
    std::unique_ptr<CaptureConnection> display = CaptureConnection::open(connector);
    return display ? std::unique_ptr<CaptureSession>(
                         new CaptureSession(std::move(display), limits, useSharedMemory))
                   : nullptr;
}

CaptureSession::CaptureSession(std::unique_ptr<CaptureConnection> display,
                               const CaptureLimits& limits, bool useSharedMemory)
    : m_display(std::move(display)), m_limits(limits), m_redirected(*m_display, limits.settleTime),
      m_redirector(*m_display, m_redirected, limits.maxPixels),
      m_reader(*m_display, m_redirected, useSharedMemory)
{}

bool CaptureSession::isConnected()
{
    m_redirected.handleEvents();
    return !m_display->connection().isBroken();
}

std::optional<WindowCapture> CaptureSession::capture(const CaptureTarget& target,
                                                     const std::vector<CaptureTarget>& next,
                                                     const QSize& largest, CaptureNeed need,
                                                     const std::stop_token& stop)
{
    m_redirected.handleEvents();
    m_redirected.unredirectUnusedSince(RedirectedWindows::Time::clock::now() -
                                       m_limits.unredirectAfter);
    if (isUpToDate(target) && need == CaptureNeed::ifChanged) {
        ++m_counts.unchanged;
        return std::nullopt;
    }
    m_redirector.redirect(target, next);
    for (int attempt = 0; attempt < maxAttempts && !stop.stop_requested(); ++attempt) {
        if (!m_redirected.find(target.window)) {
            qCDebug(logX11Capture,
                    "window %u not captured: gone, not shown, too large, or of an unknown format",
                    target.number);
            return std::nullopt;
        }
        WindowPixmapReading reading = m_reader.read(target.window, largest);
        m_redirected.handleEvents();
        if (!m_redirected.find(target.window)) {
            qCDebug(logX11Capture, "window %u not captured: closed or reparented", target.number);
            return std::nullopt;
        }
        const bool isConfirmed = confirm(target, reading);
        const bool isSettled = m_redirected.isSettled(target.window, reading.time);
        if (isConfirmed && isSettled && !reading.image.isNull()) {
            ++m_counts.pictures;
            m_counts.shared += m_reader.isSharing() ? 1U : 0U;
            return WindowCapture{std::move(reading.image), reading.pixelSize};
        }
        m_redirected.invalidate(target.window);
        if (!isConfirmed && reading.subject)
            continue;
        if (!isConfirmed || isSettled) {
            qCDebug(logX11Capture, "window %u not captured: gone, or its pixmap cannot be read",
                    target.number);
            return std::nullopt;
        }
        // A window that has not settled was redirected less than the settle time ago.
        if (!pause(m_limits.settleTime, stop))
            break;
    }
    qCDebug(logX11Capture, "window %u not captured: %s", target.number,
            stop.stop_requested() ? "cancelled" : "changed at every attempt");
    return std::nullopt;
}

/// Whether the window is redirected and unchanged since it was last read. Unredirects another
/// window that had the id before.
bool CaptureSession::isUpToDate(const CaptureTarget& target)
{
    RedirectedWindow* redirected = m_redirected.find(target.window);
    if (!redirected)
        return false;
    if (redirected->subject.number != target.number) {
        m_redirected.unredirect(target.window);
        return false;
    }
    redirected->lastUsed = RedirectedWindows::Time::clock::now();
    return !m_redirected.isChanged(target.window);
}

/// Whether the reading is of the target, and the window was as its redirection expected it. If not,
/// the redirection is ended or brought up to date for the next attempt.
bool CaptureSession::confirm(const CaptureTarget& target, const WindowPixmapReading& reading)
{
    if (!reading.subject)
        return false;
    RedirectedWindow& redirected = *m_redirected.find(target.window);
    const CaptureSubject& subject = *reading.subject;
    if (subject.number != target.number || !m_redirector.isCapturable(subject)) {
        m_redirected.unredirect(target.window);
        return false;
    }
    if (subject.isComposited != redirected.subject.isComposited) {
        m_redirected.unredirect(target.window);
        m_redirector.redirect(target, subject);
        return false;
    }
    if (subject != redirected.subject) {
        redirected.subject = subject;
        return false;
    }
    if (!reading.hasExpectedSize && redirected.pixmapWindow != target.window) {
        m_redirector.redirectWithoutFrame(target);
        return false;
    }
    return reading.hasExpectedSize;
}

} // namespace kelpa::x11
