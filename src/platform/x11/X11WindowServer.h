// The windows of an X display, as its window manager keeps them.
#pragma once

#include "platform/ApplicationResolver.h"
#include "platform/DocumentSource.h"
#include "platform/Scheduler.h"
#include "platform/WindowServer.h"
#include "platform/numbers/WindowNumbers.h"
#include "platform/x11/capture/WindowCapturer.h"
#include "platform/x11/connection/DesktopTrust.h"
#include "platform/x11/connection/DisplayConnector.h"
#include "platform/x11/connection/XcbConnection.h"
#include "platform/x11/discovery/DesktopReader.h"
#include "platform/x11/discovery/IconRevisions.h"

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
    /// Null when no documents can be had.
    DocumentSource* documents = nullptr;
    NumberReservation& reservation;
    /// What `reservation` last took, 0 at first.
    WindowID numberFloor = 0;
    Scheduler& scheduler;
    /// Numbers that no new window may get, since something is kept under them.
    std::set<WindowID> takenNumbers{};
    /// Whose windows are not prepared for being captured: of those that are, the server no longer
    /// tells whether others cover them.
    std::optional<ProcessID> ownProcess{};
};

/// Looks at the desktop through a connection of its own, which is made on the first look and made
/// anew when it was lost. A look costs two round trips, one more when no program gives window
/// numbers yet. While it looks regularly it hears of the end of every window it has seen, so that a
/// number never passes on with a reused id.
class X11WindowServer : public WindowServer
{
public:
    explicit X11WindowServer(const X11WindowServerNeeds& needs);
    ~X11WindowServer() override;

    /// True when an EWMH window manager runs and the server has Composite.
    bool isScreenCaptureTrusted() const override;
    /// There is no one to ask: what the display offers is there for every client.
    bool requestScreenCapture() override { return isScreenCaptureTrusted(); }
    std::unique_ptr<DiscoverySource> openDiscoverySource() override;
    /// Known are the windows of the last look.
    std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                               const std::stop_token& stop) override;
    /// The watch also keeps the trust up to date, so that it returns with a window manager.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchWindows(std::function<void()> changed) override;

    /// Looks anew whether a window manager runs, without reading windows. Any thread but the main
    /// one: it waits for the server.
    void refreshTrust();
    /// Outlives this object where it is kept.
    std::shared_ptr<const DesktopTrust> trust() const { return m_trust; }

    /// The server's id of a window, as of the last look; absent when it is not among its windows.
    /// The id may have been reused since: compare the tag before acting on it. Any thread, returns
    /// at once.
    std::optional<std::uint32_t> clientWindow(WindowID number) const;

    /// What the present connection has cost so far. Any thread; waits for a look in progress.
    XcbTraffic traffic() const;
    /// What the present connection for captures has cost so far, and brought. Any thread; waits for
    /// a capture in progress.
    XcbTraffic captureTraffic() const { return m_capturer.traffic(); }
    CaptureCounts captureCounts() const { return m_capturer.counts(); }

private:
    struct SeenWindow
    {
        std::uint32_t window = 0;
        /// It is shown, and not this program's own.
        bool mayBeKept = false;
    };

    bool connect();
    void updateNumbersRole(RootReading& root);
    std::vector<ClientWindow> numbered(ClientsReading clients, const RootReading& root);
    void write(const WindowNumbers::Numbering& numbering);
    /// The ids of the windows of which the server has said that they ended.
    std::vector<std::uint32_t> forgetEnded();
    void publishWindows(const std::vector<ClientWindow>& clients);
    std::unique_ptr<DiscoverySource> absent();
    /// Those of them whose contents may be kept ahead of their turn, as of the last look.
    std::vector<CaptureTarget> keepable(const std::vector<WindowID>& numbers) const;

    const X11WindowServerNeeds m_needs;
    const std::shared_ptr<DesktopTrust> m_trust = std::make_shared<DesktopTrust>();
    const std::shared_ptr<IconRevisions> m_icons = std::make_shared<IconRevisions>();

    /// Guards what follows it: one look at a time.
    mutable std::mutex m_lookMutex;
    std::unique_ptr<DisplayConnection> m_link;
    WindowNumbers m_numbers;
    bool m_isWritingNumbers = false;

    mutable std::mutex m_windowsMutex;
    std::map<WindowID, SeenWindow> m_windows;
    WindowCapturer m_capturer{m_needs.connector};
};

} // namespace kelpa::x11
