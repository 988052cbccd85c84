#include "platform/x11/actions/EwmhPager.h"

#include "platform/x11/actions/EwmhRequests.h"
#include "platform/x11/actions/ServerTimeRequest.h"
#include "platform/x11/actions/StartupNotification.h"
#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbEvent.h"
#include "platform/x11/discovery/DesktopReader.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace kelpa::x11 {

namespace {

bool hasCloseButton(const ClientWindow& client)
{
    return !client.isOverrideRedirect && client.kind != WindowKind::dock &&
           client.kind != WindowKind::desktop && client.kind != WindowKind::passing;
}

} // namespace

EwmhPager::EwmhPager(std::shared_ptr<DisplayConnector> connector, FindClientWindow findWindow,
                     const ActivationLimits& limits)
    : m_connector(std::move(connector)), m_findWindow(std::move(findWindow)), m_activator(limits)
{}

EwmhPager::~EwmhPager() = default;

bool EwmhPager::connect()
{
    if (isConnected(m_display))
        return true;
    m_last.forget();
    m_display = m_connector->open();
    if (!m_display)
        return false;
    XcbConnection& connection = m_display->connection();
    for (const xcb_window_t window : {connection.root(), m_display->helperWindow()})
        selectEvents(connection, window, XCB_EVENT_MASK_PROPERTY_CHANGE);
    return true;
}

std::optional<EwmhPager::Windows> EwmhPager::windows(ProcessID process)
{
    return windows(std::set{process});
}

std::optional<EwmhPager::Windows> EwmhPager::windows(const std::set<ProcessID>& processes)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    return readWindows(processes);
}

std::optional<EwmhPager::Windows> EwmhPager::readWindows(const std::set<ProcessID>& processes)
{
    if (!connect())
        return std::nullopt;
    const RootReading root = readRoot(*m_display);
    ClientsReading reading = readClients(*m_display, root, [](xcb_window_t) { return true; });
    if (m_display->connection().isBroken() || !reading.hasWindowManager || !root.clients)
        return std::nullopt;
    Windows windows;
    windows.context = root.context;
    for (ClientReading& each : reading.clients) {
        if (!each.client.process || !processes.contains(*each.client.process))
            continue;
        // Any client can write a tag; the listing knows which window has the number.
        const std::optional<std::uint32_t> tag = each.sighting.tag;
        if (tag && m_findWindow(*tag) == each.client.window)
            each.client.number = *tag;
        windows.clients.push_back(std::move(each.client));
    }
    return windows;
}

bool EwmhPager::activate(const WindowTarget& target)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    return connect() && activateTarget(target);
}

bool EwmhPager::activateOwn(std::uint32_t window, std::optional<std::uint32_t> inputTime)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    return connect() &&
           activateTarget({window, std::nullopt, static_cast<ProcessID>(getpid())}, inputTime);
}

bool EwmhPager::activateTopmost(ProcessID process)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    const std::optional<Windows> found = readWindows({process});
    if (!found)
        return false;
    const auto top = std::ranges::find_if(
        found->clients, [](const ClientWindow& each) { return layer(each) == 0; });
    return top != found->clients.end() && activateTarget({top->window, std::nullopt, process});
}

bool EwmhPager::activateTarget(const WindowTarget& target, std::optional<std::uint32_t> inputTime)
{
    m_last.begin(target);
    const auto focused = m_activator.activate(*m_display, target, inputTime);
    if (focused)
        m_last.confirm(*focused);
    return focused.has_value();
}

bool EwmhPager::isStillActive(const WindowTarget& target)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    return connect() && m_last.isOf(target) && m_last.keepsFocus(activeWindow(*m_display));
}

void EwmhPager::minimize(const WindowTarget& target)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    if (!connect() || !readTargetState(*m_display, target).isSame)
        return;
    requestIconify(*m_display, target.window);
    m_display->connection().flush();
}

void EwmhPager::sendToDesktop(const WindowTarget& target, std::uint32_t desktop)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    if (!connect() || !readTargetState(*m_display, target).isSame)
        return;
    requestDesktopOf(*m_display, target.window, desktop);
    m_display->connection().flush();
}

void EwmhPager::showDesktop(std::uint32_t desktop)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    if (!connect() || currentDesktop(*m_display) == desktop)
        return;
    ServerTimeRequest serverTime(*m_display);
    requestDesktop(*m_display, desktop, serverTime.get().value_or(XCB_CURRENT_TIME));
    m_display->connection().flush();
}

void EwmhPager::close(const WindowTarget& target)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    if (!connect() || !readTargetState(*m_display, target).isSame)
        return;
    PropertyReply protocols = askProtocols(*m_display, target.window);
    ServerTimeRequest serverTime(*m_display);
    const std::uint32_t time = serverTime.get().value_or(XCB_CURRENT_TIME);
    if (supportsProtocol(protocols, m_display->atoms()[Atom::wmDeleteWindow]))
        requestClose(*m_display, target.window, time);
    m_display->connection().flush();
}

void EwmhPager::activateApplication(ProcessID process)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    if (!connect())
        return;
    const std::uint32_t active = activeWindow(*m_display);
    // A window of the application that was just activated brings the application with it, even if
    // the window manager is late: no other window of it must get in front of that one.
    const bool isPending = !m_last.isConfirmed() && m_activator.isPending();
    if (m_last.isOf(process) && (isPending || m_last.keepsFocus(active)))
        return;
    const std::optional<Windows> own = readWindows({process});
    if (!own || std::any_of(own->clients.begin(), own->clients.end(),
                            [&](const ClientWindow& each) { return each.window == active; }))
        return;
    const auto top =
        std::find_if(own->clients.begin(), own->clients.end(), [](const ClientWindow& each) {
            return each.number.has_value() && layer(each) == 0;
        });
    if (top != own->clients.end())
        activateTarget({top->window, *top->number, process});
}

void EwmhPager::closeWindows(ProcessID process)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    const std::optional<Windows> own = readWindows({process});
    if (!own)
        return;
    ServerTimeRequest serverTime(*m_display);
    std::vector<std::pair<xcb_window_t, PropertyReply>> asked;
    for (const ClientWindow& client : own->clients) {
        if (hasCloseButton(client))
            asked.emplace_back(client.window, askProtocols(*m_display, client.window));
    }
    const std::uint32_t time = serverTime.get().value_or(XCB_CURRENT_TIME);
    for (auto& [window, protocols] : asked) {
        if (supportsProtocol(protocols, m_display->atoms()[Atom::wmDeleteWindow]))
            requestClose(*m_display, window, time);
    }
    m_display->connection().flush();
}

void EwmhPager::completeStartup(const QByteArray& startupID)
{
    const std::scoped_lock lock(m_mutex);
    const BrokenPipeGuard guard;
    if (connect())
        announceStartupComplete(*m_display, startupID);
}

} // namespace kelpa::x11
