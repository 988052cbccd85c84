// Asks the window manager to act on windows, the way a pager does.
#pragma once

#include "platform/x11/actions/ActivationRetry.h"
#include "platform/x11/connection/AtomTable.h"
#include "platform/x11/connection/DisplayConnector.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/discovery/ClientWindow.h"

#include <QByteArray>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace kelpa::x11 {

class DisplayConnection;

/// A window to act on. Its number is compared before anything is asked, since another window may
/// bear the server's id by now.
struct WindowTarget
{
    std::uint32_t window = 0;
    /// Absent for this program's own window.
    std::optional<WindowID> number;
    ProcessID process = 0;

    friend bool operator==(const WindowTarget&, const WindowTarget&) = default;
};

/// Has a connection of its own, made on the first use and made anew when it was lost. Any thread
/// but the main one; requests of several threads come one after the other. A window manager that is
/// stopped or gone costs no more than its limits; a window that is gone is left alone.
class WindowActor
{
public:
    /// The server's id of a window as last listed, as `X11WindowServer::clientWindow` tells it.
    using ClientWindowOf = std::function<std::optional<std::uint32_t>(WindowID)>;

    WindowActor(std::shared_ptr<DisplayConnector> connector, ClientWindowOf clientWindowOf,
                const ActivationLimits& limits = {});
    WindowActor(const WindowActor&) = delete;
    WindowActor& operator=(const WindowActor&) = delete;
    ~WindowActor();

    struct Windows
    {
        /// From top to bottom; those without a number that the listing knows have none.
        std::vector<ClientWindow> clients;
        DesktopContext context;
    };

    /// The client windows of one process; absent when there is no window manager.
    std::optional<Windows> windows(ProcessID process);

    /// In front of all others with the keyboard, un-minimised, its desktop shown. Whether the
    /// window manager did so in time; one that was late does so later.
    bool bringForward(const WindowTarget& target);

    /// As `bringForward`, for a window of this program, which needs no number to be known again.
    /// `inputTime` is when the person asked for it, on the server's clock; absent: now.
    bool bringOwnForward(std::uint32_t window, std::optional<std::uint32_t> inputTime);

    /// Whether nothing has come in front of it since it was brought forward, as far as the window
    /// manager tells by whom it gives the keyboard to.
    bool isInFront(const WindowTarget& target);

    void minimize(const WindowTarget& target);

    /// Brings the topmost window of the process forward, unless one of its windows has the
    /// keyboard.
    void bringApplicationForward(ProcessID process);

    /// A request to close for each ordinary window of the process that takes part in
    /// WM_DELETE_WINDOW; window managers kill the clients of others. Docks and desktops have no
    /// close button and are left alone.
    void closeWindows(ProcessID process);

    /// Tells the desktop that a start of this program is over, by the id that its launcher gave.
    void endStartup(const QByteArray& startupID);

    /// The server's time now, for what a new program is told of the moment it was asked for; absent
    /// without a server.
    std::optional<std::uint32_t> serverTime();

private:
    struct Outlook;

    bool connect();
    PropertyReply ask(xcb_window_t window, xcb_atom_t name, std::uint32_t length);
    PropertyReply askRoot(Atom name);
    Outlook outlook(const WindowTarget& target);
    void requestTime();
    std::optional<std::uint32_t> requestedTime(PropertyReply& later);
    std::optional<std::uint32_t> freshTime();
    std::uint32_t activeWindow();
    bool isDialogOf(std::uint32_t dialog, std::uint32_t window);
    bool awaitActive(const WindowTarget& target, std::uint32_t before);
    std::optional<Windows> readWindows(ProcessID process);
    bool bringForwardLocked(const WindowTarget& target,
                            std::optional<std::uint32_t> inputTime = std::nullopt);

    const std::shared_ptr<DisplayConnector> m_connector;
    const ClientWindowOf m_clientWindowOf;

    std::mutex m_mutex;
    std::unique_ptr<DisplayConnection> m_link;
    /// The window that was asked for last, and the one that got the keyboard then: it or its
    /// dialog; absent when the window manager did not do it in time.
    std::optional<WindowTarget> m_asked;
    std::optional<std::uint32_t> m_activeThen;
    ActivationRetry m_policy;
};

} // namespace kelpa::x11
