// The window server of an X display: reads the windows that its EWMH window manager lists, numbers
// and captures them.
#pragma once

#include "platform/ApplicationResolver.h"
#include "platform/DocumentSource.h"
#include "platform/Scheduler.h"
#include "platform/WindowServer.h"
#include "platform/numbers/WindowNumbers.h"
#include "platform/numbers/WindowOwners.h"
#include "platform/x11/capture/WindowCapturer.h"
#include "platform/x11/connection/DesktopTrust.h"
#include "platform/x11/connection/DisplayConnector.h"
#include "platform/x11/connection/XcbConnection.h"
#include "platform/x11/discovery/DesktopReader.h"
#include "platform/x11/discovery/IconRevisions.h"

#include <QString>

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

namespace kelpa::x11 {

class DisplayConnection;

/// References to objects that outlive the window server.
struct X11WindowServerNeeds
{
    std::shared_ptr<DisplayConnector> connector;
    ApplicationResolver& resolver;
    /// Null when there is no source of documents.
    DocumentSource* documents = nullptr;
    NumberReservation& reservation;
    /// The greatest number reserved so far, 0 at first.
    WindowID highWaterMark = 0;
    Scheduler& scheduler;
    /// Numbers that no new window may get, because windows are assigned by them.
    std::set<WindowID> takenNumbers{};
    /// This program's process. Its windows are not redirected ahead of a capture: of a redirected
    /// window the server no longer reports whether others obscure it.
    std::optional<ProcessID> ownProcess{};
    /// Null when nobody keeps the owners of numbered windows; `recordedOwners` is what it kept.
    OwnerStorage* owners = nullptr;
    RecordedOwners recordedOwners{};
};

/// Reads the desktop through a connection of its own, which the first discovery pass opens and a
/// later one opens again after it was lost. A pass costs two round trips, one more while no program
/// writes window numbers, and up to two more where windows are new. The destruction of every window
/// that a pass has read is reported to that connection, so that a number never passes on with a
/// reused id.
class X11WindowServer : public WindowServer
{
public:
    explicit X11WindowServer(const X11WindowServerNeeds& needs);
    ~X11WindowServer() override;

    /// True when an EWMH window manager runs and the server has Composite.
    bool isScreenCaptureTrusted() const override;
    std::optional<Obstacle> screenCaptureObstacle() const override;
    /// X11 has no such permission: what the display offers, it offers to every client.
    bool requestScreenCapture() override { return isScreenCaptureTrusted(); }
    std::unique_ptr<DiscoverySource> openDiscoverySource() override;
    /// Knows the windows of the last discovery pass.
    std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                               const std::stop_token& stop) override;
    /// The subscription also keeps the trust up to date, so that it returns with a window manager.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchWindows(std::function<void()> changed) override;

    /// Assumes that windows can be listed and captured, as on nearly every display, until the first
    /// discovery pass ends: what is not known yet is not to be reported as missing. To be called
    /// before that pass.
    void assumeTrust();
    /// May outlive this object.
    std::shared_ptr<const DesktopTrust> trust() const { return m_trust; }

    /// The server's id of a window, as of the last discovery pass; absent when the pass did not
    /// find it. The id may have been reused since: compare the tag before acting on it. Any thread;
    /// returns at once.
    std::optional<std::uint32_t> clientWindow(WindowID number) const;

    /// The cost of the current connection so far. Any thread; waits for a pass in progress.
    XcbTraffic traffic() const;
    /// The cost and the yield of the current connection for captures so far. Any thread; waits for
    /// a capture in progress.
    XcbTraffic captureTraffic() const { return m_capturer.traffic(); }
    CaptureCounts captureCounts() const { return m_capturer.counts(); }

private:
    struct KnownWindow
    {
        std::uint32_t window = 0;
        /// Viewable, and not this program's own.
        bool mayRedirectAhead = false;
    };

    bool connect();
    /// A window manager runs and maintains a list.
    void publishTrust();
    void updateNumberWriter(RootReading& root);
    std::vector<ClientWindow> numbered(ClientsReading clients, const RootReading& root);
    /// The sighting, without the tag of a window that cannot be the one that got it.
    WindowNumbers::Sighting believable(const ClientReading& reading) const;
    void noteOwner(const ClientWindow& client);
    /// A session manager's identifier is read only once.
    void noteSessionID(ClientWindow& client);
    void write(const WindowNumbers::Numbering& numbering);
    /// The ids of the windows that the server has reported as destroyed since the last call.
    std::vector<std::uint32_t> forgetDestroyed();
    void publishWindows(const std::vector<ClientWindow>& clients);
    std::unique_ptr<DiscoverySource> withoutDesktop();
    /// The windows among them that may be redirected ahead of their turn, as of the last pass.
    std::vector<CaptureTarget> redirectable(const std::vector<WindowID>& numbers) const;

    const X11WindowServerNeeds m_needs;
    const std::shared_ptr<DesktopTrust> m_trust = std::make_shared<DesktopTrust>();
    const std::shared_ptr<IconRevisions> m_icons = std::make_shared<IconRevisions>();

    /// Guards the members up to the next mutex: one discovery pass at a time.
    mutable std::mutex m_discoveryMutex;
    std::unique_ptr<DisplayConnection> m_display;
    WindowNumbers m_numbers;
    WindowOwners m_owners;
    bool m_isWritingNumbers = false;
    /// By the server's id, of the windows that have one and are known by a number.
    std::map<std::uint32_t, QString> m_sessionIDs;

    mutable std::mutex m_windowsMutex;
    std::map<WindowID, KnownWindow> m_windows;
    WindowCapturer m_capturer{m_needs.connector};
};

} // namespace kelpa::x11
