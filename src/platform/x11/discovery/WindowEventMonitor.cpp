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
      m_icons(std::move(icons)), m_pace(scheduler, std::move(changed))
{
    connect();
}

WindowEventMonitor::~WindowEventMonitor() = default;

void WindowEventMonitor::connect()
{
    m_connecting = m_scheduler.inBackground(
        [connector = m_connector](const std::stop_token&) { return connector->open(); },
        [this](std::unique_ptr<DisplayConnection> link) { connected(std::move(link)); });
}

void WindowEventMonitor::connected(std::unique_ptr<DisplayConnection> link)
{
    if (!link) {
        lost();
        return;
    }
    const BrokenPipeGuard guard;
    m_link = std::move(link);
    m_trust->hasComposite = m_link->hasComposite();
    m_notifier = std::make_unique<QSocketNotifier>(m_link->connection().fileDescriptor(),
                                                   QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { process(); });
    selectEvents(m_link->connection(), m_link->connection().root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    m_owesNotice = true;
    askForClients();
    askForManager();
    // What came along while the connection was made does not wake the notifier.
    process();
}

void WindowEventMonitor::lost()
{
    if (m_notifier) {
        m_notifier->setEnabled(false);
        // It may be the one whose signal is being handled.
        m_notifier.release()->deleteLater();
    }
    m_awaited.clear();
    m_watched.clear();
    m_isAskingForClients = false;
    m_mustAskForClients = false;
    m_manager = XCB_WINDOW_NONE;
    m_link.reset();
    setHasManager(false);
    m_connecting = m_scheduler.after(reconnectDelay, [this] { connect(); });
}

void WindowEventMonitor::process()
{
    const BrokenPipeGuard guard;
    // Sending may read as well, and what was read so does not wake the notifier: go on until there
    // is nothing left.
    bool isProgressing = true;
    while (isProgressing) {
        isProgressing = false;
        while (const XcbEvent event = m_link->connection().pollEvent()) {
            handle(*event);
            isProgressing = true;
        }
        isProgressing = pollReplies() || isProgressing;
        if (m_mustAskForClients && !m_isAskingForClients)
            askForClients();
        m_link->connection().flush();
    }
    if (m_link->connection().isBroken())
        lost();
}

bool WindowEventMonitor::pollReplies()
{
    bool hasRead = false;
    // Replies come in the order of the requests; handling one may ask anew.
    while (!m_awaited.empty()) {
        const Awaited awaited = m_awaited.front();
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(m_link->connection().raw(), awaited.sequence, &reply, &error) == 0)
            break;
        const std::unique_ptr<xcb_get_property_reply_t, XcbFree> value(
            static_cast<xcb_get_property_reply_t*>(reply));
        std::free(error);
        m_awaited.erase(m_awaited.begin());
        hasRead = true;
        (this->*awaited.handler)(words(propertyOf(value.get()), XCB_ATOM_WINDOW));
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
        windowEnded(as<xcb_destroy_notify_event_t>(event).window);
        break;
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
        m_pace.noteChange();
        break;
    case XCB_CONFIGURE_NOTIFY:
        m_pace.noteMove();
        break;
    default:
        break;
    }
}

void WindowEventMonitor::handleProperty(const xcb_property_notify_event_t& event)
{
    const AtomTable& atoms = m_link->atoms();
    const auto isAnyOf = [&](std::initializer_list<Atom> properties) {
        return std::any_of(properties.begin(), properties.end(),
                           [&](Atom property) { return event.atom == atoms[property]; });
    };
    if (event.window != m_link->connection().root()) {
        if (event.atom == XCB_ATOM_WM_NAME ||
            isAnyOf({Atom::netWmName, Atom::netWmWindowOpacity})) {
            m_pace.noteLooks(event.window);
        } else if (isAnyOf({Atom::netWmIcon})) {
            m_icons->noteChange(event.window);
            m_pace.noteLooks(event.window);
        } else if (isAnyOf({Atom::netWmState, Atom::wmState, Atom::netWmDesktop,
                            Atom::netWmWindowType})) {
            m_pace.noteChange();
        }
    } else if (isAnyOf({Atom::netClientList, Atom::netClientListStacking})) {
        m_mustAskForClients = true;
        m_pace.noteChange();
    } else if (isAnyOf({Atom::netActiveWindow, Atom::netCurrentDesktop})) {
        m_pace.noteChange();
    } else if (isAnyOf({Atom::netSupportingWmCheck})) {
        askForManager();
        m_pace.noteChange();
    }
}

void WindowEventMonitor::handleFailure(const xcb_generic_error_t& error)
{
    if (error.major_code != XCB_CHANGE_WINDOW_ATTRIBUTES)
        return;
    if (error.resource_id == m_manager) {
        // The root window still names a window manager that has ended. Asking it again would give
        // the same answer until the next one writes its own name there.
        m_manager = XCB_WINDOW_NONE;
        setHasManager(false);
        return;
    }
    // The window was gone before it could be watched; its id may come back as another's.
    windowEnded(error.resource_id);
}

void WindowEventMonitor::windowEnded(xcb_window_t window)
{
    m_watched.erase(window);
    m_pace.forget(window);
    m_icons->forget(window);
    if (window == m_manager) {
        m_manager = XCB_WINDOW_NONE;
        askForManager();
    }
    m_pace.noteChange();
}

void WindowEventMonitor::ask(xcb_window_t window, Atom property, std::uint32_t length,
                             PropertyHandler handler)
{
    const xcb_get_property_cookie_t cookie =
        xcb_get_property(m_link->connection().raw(), 0, window, m_link->atoms()[property],
                         XCB_ATOM_WINDOW, 0, length);
    m_awaited.push_back({cookie.sequence, handler});
}

void WindowEventMonitor::askForClients()
{
    m_mustAskForClients = false;
    m_isAskingForClients = true;
    ask(m_link->connection().root(), Atom::netClientList, mostClients,
        &WindowEventMonitor::clientsRead);
}

void WindowEventMonitor::clientsRead(const std::vector<std::uint32_t>& windows)
{
    m_isAskingForClients = false;
    std::set<xcb_window_t> watched;
    bool isAnyNew = false;
    for (const xcb_window_t window : windows) {
        if (watched.insert(window).second && !m_watched.contains(window)) {
            selectEvents(m_link->connection(), window,
                         XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
            isAnyNew = true;
        }
    }
    m_watched = std::move(watched);
    if (isAnyNew) {
        // What changed in a new window before it was watched went unheard: one more notice once the
        // watching is sure to have begun.
        m_owesNotice = true;
        m_mustAskForClients = true;
    } else if (std::exchange(m_owesNotice, false)) {
        m_pace.noteChange();
    }
}

void WindowEventMonitor::askForManager()
{
    ask(m_link->connection().root(), Atom::netSupportingWmCheck, 1,
        &WindowEventMonitor::managerRead);
}

void WindowEventMonitor::managerRead(const std::vector<std::uint32_t>& windows)
{
    m_manager = windows.empty() ? xcb_window_t{XCB_WINDOW_NONE} : windows.front();
    if (m_manager == XCB_WINDOW_NONE) {
        setHasManager(false);
        return;
    }
    // The hint outlives its window manager; only its window tells whether that still runs.
    selectEvents(m_link->connection(), m_manager, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    ask(m_manager, Atom::netSupportingWmCheck, 1, &WindowEventMonitor::managerConfirmed);
}

void WindowEventMonitor::managerConfirmed(const std::vector<std::uint32_t>& windows)
{
    setHasManager(!windows.empty() && windows.front() == m_manager);
}

void WindowEventMonitor::setHasManager(bool hasManager)
{
    if (m_trust->hasWindowManager.exchange(hasManager) != hasManager)
        m_pace.noteChange();
}

} // namespace kelpa::x11
