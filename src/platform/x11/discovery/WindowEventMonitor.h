// Hears of changes to windows from the server, on the main thread and without ever waiting for it.
#pragma once

#include "platform/Scheduler.h"
#include "platform/Subscription.h"
#include "platform/x11/connection/DesktopTrust.h"
#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/DisplayConnector.h"
#include "platform/x11/discovery/EventCoalescer.h"
#include "platform/x11/discovery/IconRevisions.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace kelpa::x11 {

/// Main thread. Its connection is made in the background, and made anew some time after it was
/// lost; `changed` is called whenever it stands, since changes before that went unheard.
class WindowEventMonitor : public Subscription
{
public:
    WindowEventMonitor(Scheduler& scheduler, std::shared_ptr<DisplayConnector> connector,
                       std::shared_ptr<DesktopTrust> trust, std::shared_ptr<IconRevisions> icons,
                       std::function<void()> changed);
    ~WindowEventMonitor() override;

private:
    using PropertyHandler = void (WindowEventMonitor::*)(const std::vector<std::uint32_t>& windows);

    /// A property that was asked for and is read once it has come.
    struct Awaited
    {
        unsigned int sequence = 0;
        PropertyHandler handler = nullptr;
    };

    void connect();
    void connected(std::unique_ptr<DisplayConnection> link);
    void lost();
    void process();
    bool pollReplies();
    void handle(const xcb_generic_event_t& event);
    void handleProperty(const xcb_property_notify_event_t& event);
    void handleFailure(const xcb_generic_error_t& error);
    void windowEnded(xcb_window_t window);

    void ask(xcb_window_t window, Atom property, std::uint32_t length, PropertyHandler handler);
    void askForClients();
    void askForManager();
    void clientsRead(const std::vector<std::uint32_t>& windows);
    void managerRead(const std::vector<std::uint32_t>& windows);
    void managerConfirmed(const std::vector<std::uint32_t>& windows);
    void setHasManager(bool hasManager);

    Scheduler& m_scheduler;
    const std::shared_ptr<DisplayConnector> m_connector;
    const std::shared_ptr<DesktopTrust> m_trust;
    const std::shared_ptr<IconRevisions> m_icons;

    std::unique_ptr<DisplayConnection> m_link;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::vector<Awaited> m_awaited;
    std::set<xcb_window_t> m_watched;
    xcb_window_t m_manager = XCB_WINDOW_NONE;
    bool m_isAskingForClients = false;
    bool m_mustAskForClients = false;
    bool m_owesNotice = false;

    TaskHandle m_connecting;
    EventCoalescer m_pace;
};

} // namespace kelpa::x11
