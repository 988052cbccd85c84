#include "platform/x11/actions/WindowActor.h"

#include "platform/x11/actions/StartupNotification.h"
#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbEvent.h"
#include "platform/x11/discovery/DesktopReader.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace kelpa::x11 {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// What asks is a tool in the person's hand, not the window's own application: window managers let
/// it pass where they would keep an application from taking the keyboard.
constexpr std::uint32_t fromPager = 2;
constexpr std::uint32_t mostProtocols = 64;

/// In WM_HINTS: the second word counts where the first has this bit.
constexpr std::uint32_t inputHint = 1;

void tellManager(DisplayConnection& link, xcb_window_t window, Atom message,
                 const std::array<std::uint32_t, 5>& data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = link.atoms()[message];
    std::copy(data.begin(), data.end(), std::begin(event.data.data32));
    const void* bytes = &event;
    xcb_send_event(link.connection().raw(), 0, link.connection().root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   static_cast<const char*>(bytes));
}

bool contains(const std::vector<xcb_atom_t>& atoms, xcb_atom_t atom)
{
    return std::find(atoms.begin(), atoms.end(), atom) != atoms.end();
}

bool hasCloseButton(const ClientWindow& client)
{
    return !client.isOverrideRedirect && client.kind != WindowKind::dock &&
           client.kind != WindowKind::desktop && client.kind != WindowKind::passing;
}

/// Whether anything has arrived from the server by `end`; what has arrived is thrown away, it only
/// tells that it is worth looking again.
bool awaitEvent(XcbConnection& connection, Clock::time_point end)
{
    bool hasArrived = false;
    while (connection.pollEvent())
        hasArrived = true;
    if (hasArrived)
        return true;
    const auto left = std::chrono::ceil<milliseconds>(end - Clock::now());
    pollfd watched{connection.fileDescriptor(), POLLIN, 0};
    return left.count() > 0 && poll(&watched, 1, static_cast<int>(left.count())) > 0 &&
           !connection.isBroken();
}

} // namespace

/// What must be known of a window and of the desktop before asking for anything.
struct WindowActor::Outlook
{
    /// The window is there and is the one that is meant.
    bool isSame = false;
    /// It takes the keyboard when it is given to it.
    bool takesFocus = true;
    /// The server's, just before it answered the rest; absent when the connection was lost.
    std::optional<std::uint32_t> time;
    std::uint32_t active = XCB_WINDOW_NONE;
    /// The desktop to go to first; absent when it is the one that is shown.
    std::optional<std::uint32_t> desktop;
};

WindowActor::WindowActor(std::shared_ptr<DisplayConnector> connector, ClientWindowOf clientWindowOf,
                         const ActivationLimits& limits)
    : m_connector(std::move(connector)), m_clientWindowOf(std::move(clientWindowOf)),
      m_policy(limits)
{}

WindowActor::~WindowActor() = default;

bool WindowActor::connect()
{
    if (isConnected(m_link))
        return true;
    m_asked.reset();
    m_link = m_connector->open();
    if (!m_link)
        return false;
    XcbConnection& connection = m_link->connection();
    for (const xcb_window_t window : {connection.root(), m_link->helperWindow()})
        selectEvents(connection, window, XCB_EVENT_MASK_PROPERTY_CHANGE);
    return true;
}

std::optional<WindowActor::Windows> WindowActor::windows(ProcessID process)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    return readWindows(process);
}

std::optional<WindowActor::Windows> WindowActor::readWindows(ProcessID process)
{
    if (!connect())
        return std::nullopt;
    const RootReading root = readRoot(*m_link);
    ClientsReading reading = readClients(*m_link, root, [](xcb_window_t) { return true; });
    if (m_link->connection().isBroken() || !reading.hasWindowManager || !root.clients)
        return std::nullopt;
    Windows windows;
    windows.context = root.context;
    for (ClientReading& each : reading.clients) {
        if (each.client.process != process)
            continue;
        // Anyone can write a tag; the listing knows whose it is.
        const std::optional<std::uint32_t> tag = each.sighting.tag;
        if (tag && m_clientWindowOf(*tag) == each.client.window)
            each.client.number = *tag;
        windows.clients.push_back(std::move(each.client));
    }
    return windows;
}

WindowActor::Outlook WindowActor::outlook(const WindowTarget& target)
{
    const AtomTable& atoms = m_link->atoms();
    requestTime();
    PropertyReply tag = ask(target.window, atoms[Atom::kelpaWindowNumber], 1);
    PropertyReply desktop = ask(target.window, atoms[Atom::netWmDesktop], 1);
    PropertyReply hints = ask(target.window, XCB_ATOM_WM_HINTS, 2);
    PropertyReply protocols = ask(target.window, atoms[Atom::wmProtocols], mostProtocols);
    PropertyReply active = askRoot(Atom::netActiveWindow);
    PropertyReply current = askRoot(Atom::netCurrentDesktop);

    Outlook outlook;
    outlook.time = requestedTime(tag);
    outlook.isSame =
        !target.number || word(propertyOf(tag.get()), XCB_ATOM_CARDINAL) == target.number;
    const std::vector<std::uint32_t> flags =
        words(propertyOf(hints.get()), xcb_atom_t{XCB_ATOM_WM_HINTS});
    const bool declines = flags.size() > 1 && (flags[0] & inputHint) != 0 && flags[1] == 0;
    outlook.takesFocus = !declines || contains(words(propertyOf(protocols.get()), XCB_ATOM_ATOM),
                                               atoms[Atom::wmTakeFocus]);
    outlook.active = word(propertyOf(active.get()), XCB_ATOM_WINDOW).value_or(XCB_WINDOW_NONE);
    const auto own = word(propertyOf(desktop.get()), XCB_ATOM_CARDINAL);
    if (own && *own != everyDesktop &&
        own != word(propertyOf(current.get()), XCB_ATOM_CARDINAL).value_or(*own))
        outlook.desktop = own;
    return outlook;
}

PropertyReply WindowActor::ask(xcb_window_t window, xcb_atom_t name, std::uint32_t length)
{
    return askProperty(m_link->connection(), window, name, length);
}

PropertyReply WindowActor::askRoot(Atom name)
{
    return ask(m_link->connection().root(), m_link->atoms()[name], 1);
}

void WindowActor::requestTime()
{
    // Nothing is appended, but the server says when.
    XcbConnection& connection = m_link->connection();
    while (connection.pollEvent()) {
    }
    xcb_change_property(connection.raw(), XCB_PROP_MODE_APPEND, m_link->helperWindow(),
                        m_link->atoms()[Atom::kelpaTime], XCB_ATOM_CARDINAL, 32, 0, nullptr);
}

std::optional<std::uint32_t> WindowActor::requestedTime(PropertyReply& later)
{
    // The notice comes before any later answer.
    later.get();
    std::optional<std::uint32_t> time;
    while (const XcbEvent event = m_link->connection().queuedEvent()) {
        if (typeOf(*event) == XCB_PROPERTY_NOTIFY) {
            const auto& notice = as<xcb_property_notify_event_t>(*event);
            if (notice.window == m_link->helperWindow() &&
                notice.atom == m_link->atoms()[Atom::kelpaTime])
                time = notice.time;
        }
    }
    return time;
}

std::optional<std::uint32_t> WindowActor::freshTime()
{
    requestTime();
    PropertyReply barrier = ask(m_link->helperWindow(), m_link->atoms()[Atom::kelpaTime], 0);
    return requestedTime(barrier);
}

std::optional<std::uint32_t> WindowActor::serverTime()
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    return connect() ? freshTime() : std::nullopt;
}

std::uint32_t WindowActor::activeWindow()
{
    PropertyReply active = askRoot(Atom::netActiveWindow);
    return word(propertyOf(active.get()), XCB_ATOM_WINDOW).value_or(XCB_WINDOW_NONE);
}

bool WindowActor::isDialogOf(std::uint32_t dialog, std::uint32_t window)
{
    const XcbConnection& connection = m_link->connection();
    if (dialog == XCB_WINDOW_NONE || connection.clientOf(dialog) != connection.clientOf(window))
        return false;
    PropertyReply owner = ask(dialog, XCB_ATOM_WM_TRANSIENT_FOR, 1);
    return word(propertyOf(owner.get()), XCB_ATOM_WINDOW) == window;
}

bool WindowActor::isInFront(const WindowTarget& target)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    return connect() && m_asked == target && activeWindow() == m_activeThen;
}

bool WindowActor::awaitActive(const WindowTarget& target, std::uint32_t before)
{
    XcbConnection& connection = m_link->connection();
    const auto begin = Clock::now();
    const auto end = begin + m_policy.wait();
    do {
        const std::uint32_t active = activeWindow();
        // A window that waits for an answer to its dialog passes the keyboard on to that.
        if (active == target.window || (active != before && isDialogOf(active, target.window))) {
            m_policy.noteConfirmed();
            m_activeThen = active;
            return true;
        }
    } while (awaitEvent(connection, end));
    m_policy.noteUnanswered(std::chrono::ceil<milliseconds>(Clock::now() - begin));
    return false;
}

bool WindowActor::bringForward(const WindowTarget& target)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    return connect() && bringForwardLocked(target);
}

bool WindowActor::bringOwnForward(std::uint32_t window, std::optional<std::uint32_t> inputTime)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    return connect() &&
           bringForwardLocked({window, std::nullopt, static_cast<ProcessID>(getpid())}, inputTime);
}

void WindowActor::endStartup(const QByteArray& startupID)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    if (connect())
        announceStartupEnd(*m_link, startupID);
}

bool WindowActor::bringForwardLocked(const WindowTarget& target,
                                     std::optional<std::uint32_t> inputTime)
{
    m_policy.begin(Clock::now(), inputTime);
    m_asked = target;
    m_activeThen.reset();
    bool isDone = false;
    while (!isDone && m_policy.mayAsk()) {
        const Outlook seen = outlook(target);
        if (!seen.isSame)
            break;
        const std::uint32_t time = m_policy.timeToName(seen.time);
        if (seen.desktop)
            tellManager(*m_link, m_link->connection().root(), Atom::netCurrentDesktop,
                        {*seen.desktop, time, 0, 0, 0});
        tellManager(*m_link, target.window, Atom::netActiveWindow,
                    {fromPager, time, XCB_WINDOW_NONE, 0, 0});
        m_link->connection().flush();
        if (!seen.takesFocus || m_policy.wait().count() == 0)
            break;
        isDone = awaitActive(target, seen.active);
    }
    m_policy.end(Clock::now());
    return isDone;
}

void WindowActor::minimize(const WindowTarget& target)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    if (!connect() || !outlook(target).isSame)
        return;
    tellManager(*m_link, target.window, Atom::wmChangeState, {iconicState, 0, 0, 0, 0});
    m_link->connection().flush();
}

void WindowActor::bringApplicationForward(ProcessID process)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    if (!connect())
        return;
    const std::uint32_t active = activeWindow();
    // The application comes with the window of it that was just asked for, also when the window
    // manager takes its time: another of its windows must not get in front of that one.
    const bool isUnderWay = !m_activeThen && m_policy.isUnderWay(Clock::now());
    if (m_asked && m_asked->process == process && (isUnderWay || m_activeThen == active))
        return;
    const std::optional<Windows> own = readWindows(process);
    if (!own || std::any_of(own->clients.begin(), own->clients.end(),
                            [&](const ClientWindow& each) { return each.window == active; }))
        return;
    const auto top =
        std::find_if(own->clients.begin(), own->clients.end(), [](const ClientWindow& each) {
            return each.number.has_value() && layer(each) == 0;
        });
    if (top != own->clients.end())
        bringForwardLocked({top->window, *top->number, process});
}

void WindowActor::closeWindows(ProcessID process)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    const std::optional<Windows> own = readWindows(process);
    if (!own)
        return;
    const AtomTable& atoms = m_link->atoms();
    std::vector<std::pair<xcb_window_t, PropertyReply>> questions;
    for (const ClientWindow& client : own->clients) {
        if (hasCloseButton(client))
            questions.emplace_back(client.window,
                                   ask(client.window, atoms[Atom::wmProtocols], mostProtocols));
    }
    const std::uint32_t time = freshTime().value_or(XCB_CURRENT_TIME);
    for (auto& [window, protocols] : questions) {
        if (contains(words(propertyOf(protocols.get()), XCB_ATOM_ATOM),
                     atoms[Atom::wmDeleteWindow]))
            tellManager(*m_link, window, Atom::netCloseWindow, {time, fromPager, 0, 0, 0});
    }
    m_link->connection().flush();
}

} // namespace kelpa::x11
