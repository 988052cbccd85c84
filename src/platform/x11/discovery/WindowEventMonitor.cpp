#include "platform/x11/discovery/WindowEventMonitor.h"

#include "platform/x11/connection/XcbEvent.h"
#include "platform/x11/connection/XcbReply.h"

#include <xcb/xcbext.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace kelpa::x11 {

namespace {

using namespace std::chrono_literals;

constexpr Scheduler::Duration reconnectDelay = 2s;

} // namespace

WindowEventMonitor::WindowEventMonitor(Scheduler& scheduler,
                                       std::shared_ptr<DisplayConnector> connector,
                                       std::shared_ptr<DesktopTrust> trust,
                                       std::shared_ptr<IconRevisions> icons,
                                       std::function<void()> changed)
    : m_scheduler(scheduler), m_connector(std::move(connector)), m_trust(std::move(trust)),
      m_icons(std::move(icons)), m_events(scheduler, std::move(changed))
{
    connect();
}

WindowEventMonitor::~WindowEventMonitor() = default;

void WindowEventMonitor::connect()
{
    m_connecting = m_scheduler.inBackground(
        [connector = m_connector](const std::stop_token&) { return connector->open(); },
        [this](std::unique_ptr<DisplayConnection> display) { connected(std::move(display)); });
}

void WindowEventMonitor::connected(std::unique_ptr<DisplayConnection> display)
{
    if (!display) {
        lost();
        return;
    }
    const BrokenPipeGuard guard;
    m_display = std::move(display);
    m_trust->hasComposite = m_display->hasComposite();
    m_notifier = std::make_unique<QSocketNotifier>(m_display->connection().fileDescriptor(),
                                                   QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { process(); });
    selectEvents(m_display->connection(), m_display->connection().root(),
                 XCB_EVENT_MASK_PROPERTY_CHANGE);
    m_owesNotification = true;
    requestClientList();
    requestWmCheck();
    // Events that arrived while the connection was opened do not wake the notifier.
    process();
}

void WindowEventMonitor::lost()
{
    if (m_notifier) {
        m_notifier->setEnabled(false);
        // Its signal may be the one that is being handled.
        m_notifier.release()->deleteLater();
    }
    m_continuing.reset();
    m_pendingProperties.clear();
    m_watched.clear();
    m_isClientListPending = false;
    m_isClientListStale = false;
    m_manager = XCB_WINDOW_NONE;
    m_display.reset();
    setHasManager(false);
    m_connecting = m_scheduler.after(reconnectDelay, [this] { connect(); });
}

void WindowEventMonitor::process()
{
    const BrokenPipeGuard guard;
    m_continuing.reset();
    const int handled = processSome();
    if (m_display->connection().isBroken())
        lost();
    else if (handled == mostEventsAtOnce)
        rest(0ms);
    else if (handled > 0 && m_pendingProperties.empty())
        rest(restTime);
    else
        m_notifier->setEnabled(true);
}

void WindowEventMonitor::rest(Scheduler::Duration time)
{
    m_notifier->setEnabled(false);
    m_continuing = m_scheduler.after(time, [this] { process(); });
}

int WindowEventMonitor::processSome()
{
    // Sending may read the socket as well, and events read in that way do not wake the notifier:
    // continue until nothing is left, or until it is somebody else's turn.
    int left = mostEventsAtOnce;
    bool isProgressing = true;
    while (isProgressing && left > 0) {
        isProgressing = false;
        for (; left > 0; --left) {
            const XcbEvent event = m_display->connection().pollEvent();
            if (!event)
                break;
            handle(*event);
            isProgressing = true;
        }
        isProgressing = pollReplies() || isProgressing;
        if (m_isClientListStale && !m_isClientListPending)
            requestClientList();
        m_display->connection().flush();
    }
    return mostEventsAtOnce - left;
}

bool WindowEventMonitor::pollReplies()
{
    bool hasRead = false;
    // Replies arrive in the order of the requests; handling one may send another request.
    while (!m_pendingProperties.empty()) {
        const PendingProperty pending = m_pendingProperties.front();
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(m_display->connection().raw(), pending.sequence, &reply, &error) ==
            0)
            break;
        const std::unique_ptr<xcb_get_property_reply_t, XcbFree> value(
            static_cast<xcb_get_property_reply_t*>(reply));
        std::free(error);
        m_pendingProperties.erase(m_pendingProperties.begin());
        hasRead = true;
        (this->*pending.handler)(words(propertyOf(value.get()), XCB_ATOM_WINDOW));
    }
    return hasRead;
}

void WindowEventMonitor::handle(const xcb_generic_event_t& event)
{
    switch (typeOf(event)) {
    case 0:
        handleFailure(as<xcb_generic_error_t>(event));
        break;
    case XCB_PROPERTY_NOTIFY:
        handleProperty(as<xcb_property_notify_event_t>(event));
        break;
    case XCB_DESTROY_NOTIFY:
        windowDestroyed(as<xcb_destroy_notify_event_t>(event).window);
        break;
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
        m_events.windowsChanged();
        break;
    case XCB_CONFIGURE_NOTIFY:
        m_events.windowMoved();
        break;
    default:
        break;
    }
}

void WindowEventMonitor::handleProperty(const xcb_property_notify_event_t& event)
{
    const AtomTable& atoms = m_display->atoms();
    const auto isAnyOf = [&](std::initializer_list<Atom> properties) {
        return std::any_of(properties.begin(), properties.end(),
                           [&](Atom property) { return event.atom == atoms[property]; });
    };
    if (event.window != m_display->connection().root()) {
        if (event.atom == XCB_ATOM_WM_NAME ||
            isAnyOf({Atom::netWmName, Atom::netWmWindowOpacity})) {
            m_events.appearanceChanged(event.window);
        } else if (isAnyOf({Atom::netWmIcon})) {
            m_icons->increment(event.window);
            m_events.appearanceChanged(event.window);
        } else if (event.atom == XCB_ATOM_WM_TRANSIENT_FOR ||
                   isAnyOf({Atom::netWmState, Atom::wmState, Atom::netWmDesktop,
                            Atom::netWmWindowType})) {
            m_events.windowsChanged();
        }
    } else if (isAnyOf({Atom::netClientList, Atom::netClientListStacking})) {
        m_isClientListStale = true;
        m_events.windowsChanged();
    } else if (isAnyOf({Atom::netActiveWindow, Atom::netCurrentDesktop, Atom::netDesktopNames,
                        Atom::netNumberOfDesktops})) {
        m_events.windowsChanged();
    } else if (isAnyOf({Atom::netSupportingWmCheck})) {
        requestWmCheck();
        m_events.windowsChanged();
    }
}

void WindowEventMonitor::handleFailure(const xcb_generic_error_t& error)
{
    if (error.major_code != XCB_CHANGE_WINDOW_ATTRIBUTES)
        return;
    if (error.resource_id == m_manager) {
        // The root window still names a window manager that has ended. Reading the property again
        // would give the same value until the next window manager replaces it.
        m_manager = XCB_WINDOW_NONE;
        setHasManager(false);
        return;
    }
    // The window was destroyed before its events were selected; its id may be reused.
    windowDestroyed(error.resource_id);
}

void WindowEventMonitor::windowDestroyed(xcb_window_t window)
{
    m_watched.erase(window);
    m_events.forget(window);
    m_icons->forget(window);
    if (window == m_manager) {
        m_manager = XCB_WINDOW_NONE;
        requestWmCheck();
    }
    m_events.windowsChanged();
}

void WindowEventMonitor::request(xcb_window_t window, Atom property, std::uint32_t length,
                                 PropertyHandler handler)
{
    const xcb_get_property_cookie_t cookie =
        xcb_get_property(m_display->connection().raw(), 0, window, m_display->atoms()[property],
                         XCB_ATOM_WINDOW, 0, length);
    m_pendingProperties.push_back({cookie.sequence, handler});
}

void WindowEventMonitor::requestClientList()
{
    m_isClientListStale = false;
    m_isClientListPending = true;
    request(m_display->connection().root(), Atom::netClientList, mostClients,
            &WindowEventMonitor::clientListReceived);
}

void WindowEventMonitor::clientListReceived(const std::vector<std::uint32_t>& windows)
{
    m_isClientListPending = false;
    std::set<xcb_window_t> watched;
    bool isAnyNew = false;
    for (const xcb_window_t window : windows) {
        if (watched.insert(window).second && !m_watched.contains(window)) {
            selectEvents(m_display->connection(), window,
                         XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
            isAnyNew = true;
        }
    }
    m_watched = std::move(watched);
    if (isAnyNew) {
        // Changes to a new window before its events were selected were missed: notify once more
        // when the reply to a later request shows that the selection is in effect.
        m_owesNotification = true;
        m_isClientListStale = true;
    } else if (std::exchange(m_owesNotification, false)) {
        m_events.windowsChanged();
    }
}

void WindowEventMonitor::requestWmCheck()
{
    request(m_display->connection().root(), Atom::netSupportingWmCheck, 1,
            &WindowEventMonitor::wmCheckReceived);
}

void WindowEventMonitor::wmCheckReceived(const std::vector<std::uint32_t>& windows)
{
    m_manager = windows.empty() ? xcb_window_t{XCB_WINDOW_NONE} : windows.front();
    if (m_manager == XCB_WINDOW_NONE) {
        setHasManager(false);
        return;
    }
    // The property outlives its window manager; only the check window shows whether it still runs.
    selectEvents(m_display->connection(), m_manager, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    request(m_manager, Atom::netSupportingWmCheck, 1, &WindowEventMonitor::wmCheckConfirmed);
}

void WindowEventMonitor::wmCheckConfirmed(const std::vector<std::uint32_t>& windows)
{
    setHasManager(!windows.empty() && windows.front() == m_manager);
}

void WindowEventMonitor::setHasManager(bool hasManager)
{
    const bool isNew = m_trust->hasWindowManager.exchange(hasManager) != hasManager;
    const bool wasKnown = m_trust->isKnown.exchange(true);
    if (isNew || !wasKnown)
        m_events.windowsChanged();
}

} // namespace kelpa::x11
