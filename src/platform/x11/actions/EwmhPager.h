// Acts on windows through the window manager, as a pager does. It joins the EWMH requests, the
// activation loop and the memory of the last activation on one connection under one mutex.
#pragma once

#include "platform/x11/actions/LastActivation.h"
#include "platform/x11/actions/WindowActivator.h"
#include "platform/x11/actions/WindowTarget.h"
#include "platform/x11/connection/DisplayConnector.h"
#include "platform/x11/discovery/ClientWindow.h"

#include <QByteArray>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

namespace kelpa::x11 {

class DisplayConnection;

/// Has a connection of its own, opened on the first use and reopened when it was lost. Any thread
/// but the main one; calls from several threads are carried out one after the other. A window
/// manager that is stopped or gone costs no more than the limits; a window that is gone is left
/// alone.
class EwmhPager
{
public:
    EwmhPager(std::shared_ptr<DisplayConnector> connector, FindClientWindow findWindow,
              const ActivationLimits& limits = {});
    EwmhPager(const EwmhPager&) = delete;
    EwmhPager& operator=(const EwmhPager&) = delete;
    ~EwmhPager();

    struct Windows
    {
        /// From top to bottom. Those whose number the listing does not know have none.
        std::vector<ClientWindow> clients;
        DesktopContext context;
    };

    /// The client windows of one process; absent when there is no window manager.
    std::optional<Windows> windows(ProcessID process);

    /// Those of all `processes`, read at once.
    std::optional<Windows> windows(const std::set<ProcessID>& processes);

    /// Raises the window above all others and gives it the focus, un-minimised, its desktop shown.
    /// Returns whether the window manager confirmed that in time; a late one does it later.
    bool activate(const WindowTarget& target);

    /// As `activate`, for a window of this program, which needs no number to be recognised.
    /// `inputTime` is when the person asked for it, on the server's clock; absent: now.
    bool activateOwn(std::uint32_t window, std::optional<std::uint32_t> inputTime);

    /// As `activate`, for the topmost window of another process, which need not be listed; false
    /// also when it has none.
    bool activateTopmost(ProcessID process);

    /// Whether the window was activated last and nothing has come in front of it since, as far as
    /// _NET_ACTIVE_WINDOW shows.
    bool isStillActive(const WindowTarget& target);

    void minimize(const WindowTarget& target);

    /// Sends the window to the desktop, from 0, which stays hidden if it is.
    void sendToDesktop(const WindowTarget& target, std::uint32_t desktop);

    /// Shows the desktop, from 0, unless it is the present one.
    void showDesktop(std::uint32_t desktop);

    /// As a click on its close button does.
    void close(const WindowTarget& target);

    /// Activates the topmost window of the process, unless one of its windows has the focus.
    void activateApplication(ProcessID process);

    /// Requests each ordinary window of the process that supports WM_DELETE_WINDOW to close; window
    /// managers kill the clients of others. Docks and desktops have no close button and are left
    /// alone.
    void closeWindows(ProcessID process);

    /// Announces that a start of this program is complete, by the id that its launcher gave.
    void completeStartup(const QByteArray& startupID);

private:
    // These are called with the mutex locked.
    bool connect();
    std::optional<Windows> readWindows(const std::set<ProcessID>& processes);
    bool activateTarget(const WindowTarget& target,
                        std::optional<std::uint32_t> inputTime = std::nullopt);

    const std::shared_ptr<DisplayConnector> m_connector;
    const FindClientWindow m_findWindow;

    /// Guards what follows it.
    std::mutex m_mutex;
    std::unique_ptr<DisplayConnection> m_display;
    WindowActivator m_activator;
    LastActivation m_last;
};

} // namespace kelpa::x11
