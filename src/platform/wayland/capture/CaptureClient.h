// Captures windows over one connection: finds a window by its identifier, keeps sessions of the few
// that are captured now and soon, and waits for the compositor no longer than allowed.
#pragma once

#include "platform/WindowServer.h"
#include "platform/wayland/capture/CaptureSession.h"
#include "platform/wayland/capture/SharedPixels.h"
#include "platform/wayland/connection/WaylandConnection.h"

#include <QByteArray>
#include <QSize>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

struct ext_foreign_toplevel_list_v1;
struct wl_registry;

namespace kelpa::wayland {

/// A request for a picture, as in `CaptureRequest`, with the windows' identifiers in the
/// compositor's list.
struct PictureRequest
{
    QByteArray window;
    QSize largest;
    CaptureNeed need = CaptureNeed::always;
    std::vector<QByteArray> next{};
};

/// `identifierOf` gives the identifier of a window; empty where it is not known.
PictureRequest pictureRequest(const CaptureRequest& request,
                              const std::function<QByteArray(WindowID)>& identifierOf);

struct CaptureLimits
{
    /// From connecting until the compositor has told what it offers.
    std::chrono::milliseconds setup{1000};
    /// For a picture.
    std::chrono::milliseconds picture{2000};
    /// Sessions; a compositor draws the windows of those that are open, also unseen.
    std::size_t sessions = 8;
    /// Until a compositor that offers no pictures, or has not told, is asked again; what it can do
    /// hardly ever changes.
    std::chrono::milliseconds askAgainDelay{30000};
};

/// Used on one thread, the one that dispatches the connection.
class CaptureClient
{
public:
    /// Whether a capture is to be given up. Called after each wake, it clears the waker.
    using IsStopped = std::function<bool()>;

    /// `connection` outlives this object. `waker` is a descriptor that ends waits when it becomes
    /// readable; negative for none.
    CaptureClient(WaylandConnection& connection, const CaptureLimits& limits, int waker = -1);
    CaptureClient(const CaptureClient&) = delete;
    CaptureClient& operator=(const CaptureClient&) = delete;
    ~CaptureClient();

    /// Waits until the compositor has told what it offers, and its windows; false where it does not
    /// in time.
    bool setUp(const IsStopped& isStopped);
    /// The compositor has all that pictures need.
    bool isOffering() const;
    /// The compositor announces no more windows on this connection.
    bool isFinished() const { return m_isFinished; }

    /// As `WindowServer::captureWindow`. A window that has not changed since its last picture costs
    /// nothing, as long as its session is kept.
    std::optional<WindowCapture> capture(const PictureRequest& request, const IsStopped& isStopped);

    std::size_t sessionCount() const { return m_sessions.size(); }

private:
    using Time = WaylandConnection::Time;
    struct Globals;
    struct Handle;
    struct Listeners;
    struct Session
    {
        std::unique_ptr<CaptureSession> session;
        /// Counts requests; the greatest is the last.
        std::uint64_t use = 0;
    };

    void globalAdded(std::uint32_t name, const char* interface, std::uint32_t version);
    void globalRemoved(std::uint32_t name);
    const Handle* handleOf(const QByteArray& identifier) const;
    CaptureSession* sessionOf(const QByteArray& identifier);
    void makeRoom(const PictureRequest& request);
    /// Waits until the compositor has handled all requests so far; false where it has not.
    bool settle(Time end, const IsStopped& isStopped);
    bool waitUntil(const std::function<bool()>& condition, Time end, const IsStopped& isStopped);
    std::optional<WindowCapture> take(CaptureSession& session, const QSize& largest,
                                      const IsStopped& isStopped);
    std::optional<WindowCapture> scaled(CaptureSession& session, const CaptureForm& form,
                                        const QSize& largest);

    WaylandConnection& m_connection;
    const CaptureLimits m_limits;
    const int m_waker;
    wl_registry* m_registry = nullptr;
    const std::unique_ptr<Globals> m_globals;
    /// Those of the picture that is taken.
    std::unique_ptr<SharedPixels> m_pixels;
    /// What compositors write to when a window changes, which nobody reads.
    std::unique_ptr<SharedPixels> m_unread;
    std::vector<std::unique_ptr<Handle>> m_handles;
    bool m_isFinished = false;
    /// By the identifiers of their windows.
    std::map<QByteArray, Session> m_sessions;
    std::uint64_t m_uses = 0;
};

} // namespace kelpa::wayland
