// Receives the events of windows from the server, on the main thread and without ever waiting for
// it, and reports them coalesced.
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

/// Main thread. Connects in the background, and again some time after the connection was lost;
/// `changed` is called after each connection, since events before it were missed.
class WindowEventMonitor : public Subscription
{
public:
    /// Events handled before the main thread turns to other work. A window that changes as fast as
    /// the server lets it sends events for as long as anybody reads them.
    static constexpr int mostEventsAtOnce = 200;
    /// After events were handled, the next ones wait so long: a window that opens sends dozens, one
    /// by one, and each would wake the main thread. A quarter of the time between two reports, so
    /// that it delays none that matters; the first event after a quiet time is handled at once.
    static constexpr Scheduler::Duration restTime = EventCoalescer::firstInterval / 4;

    WindowEventMonitor(Scheduler& scheduler, std::shared_ptr<DisplayConnector> connector,
                       std::shared_ptr<DesktopTrust> trust, std::shared_ptr<IconRevisions> icons,
                       std::function<void()> changed);
    ~WindowEventMonitor() override;

private:
    using PropertyHandler = void (WindowEventMonitor::*)(const std::vector<std::uint32_t>& windows);

    /// A requested property whose reply has not arrived yet.
    struct PendingProperty
    {
        unsigned int sequence = 0;
        PropertyHandler handler = nullptr;
    };

    void connect();
    void connected(std::unique_ptr<DisplayConnection> display);
    void lost();
    void process();
    /// Handles what has arrived, and returns how many events that were.
    int processSome();
    void rest(Scheduler::Duration time);
    bool pollReplies();
    void handle(const xcb_generic_event_t& event);
    void handleProperty(const xcb_property_notify_event_t& event);
    void handleFailure(const xcb_generic_error_t& error);
    void windowDestroyed(xcb_window_t window);

    void request(xcb_window_t window, Atom property, std::uint32_t length, PropertyHandler handler);
    void requestClientList();
    void requestWmCheck();
    void clientListReceived(const std::vector<std::uint32_t>& windows);
    void wmCheckReceived(const std::vector<std::uint32_t>& windows);
    void wmCheckConfirmed(const std::vector<std::uint32_t>& windows);
    void setHasManager(bool hasManager);

    Scheduler& m_scheduler;
    const std::shared_ptr<DisplayConnector> m_connector;
    const std::shared_ptr<DesktopTrust> m_trust;
    const std::shared_ptr<IconRevisions> m_icons;

    std::unique_ptr<DisplayConnection> m_display;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::vector<PendingProperty> m_pendingProperties;
    std::set<xcb_window_t> m_watched;
    xcb_window_t m_manager = XCB_WINDOW_NONE;
    bool m_isClientListPending = false;
    bool m_isClientListStale = false;
    bool m_owesNotification = false;

    TaskHandle m_connecting;
    /// Handles the events that were left for later. Meanwhile the notifier is off.
    TaskHandle m_continuing;
    EventCoalescer m_events;
};

} // namespace kelpa::x11
