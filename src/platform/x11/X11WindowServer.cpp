#include "platform/x11/X11WindowServer.h"

#include "platform/LoggingCategories.h"
#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbEvent.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/discovery/SnapshotSource.h"
#include "platform/x11/discovery/WindowEventMonitor.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace kelpa::x11 {

namespace {

/// The window that an event reports as destroyed. An error of selecting its events reports that as
/// well: by the time the rest of the batch was answered, the id may have been another window's,
/// whose destruction would go unreported.
std::optional<xcb_window_t> destroyedWindow(const xcb_generic_event_t& event)
{
    switch (typeOf(event)) {
    case 0: {
        const auto& error = as<xcb_generic_error_t>(event);
        const bool isSelection = error.major_code == XCB_CHANGE_WINDOW_ATTRIBUTES;
        return isSelection ? std::optional(error.resource_id) : std::nullopt;
    }
    case XCB_DESTROY_NOTIFY:
        return as<xcb_destroy_notify_event_t>(event).window;
    default:
        return std::nullopt;
    }
}

WindowOwner ownerOf(const ClientWindow& client)
{
    return {client.window, client.process,
            client.process ? processStart(*client.process) : std::nullopt,
            client.clues.wmClassName};
}

} // namespace

X11WindowServer::X11WindowServer(const X11WindowServerNeeds& needs)
    : m_needs(needs), m_numbers(needs.reservation, needs.highWaterMark, needs.takenNumbers),
      m_owners(needs.owners, needs.recordedOwners, needs.takenNumbers)
{}

X11WindowServer::~X11WindowServer() = default;

bool X11WindowServer::isScreenCaptureTrusted() const
{
    return m_trust->hasWindowManager && m_trust->hasComposite;
}

std::optional<Obstacle> X11WindowServer::screenCaptureObstacle() const
{
    if (!m_trust->isKnown)
        return std::nullopt;
    return m_trust->hasWindowManager ? Obstacle::composite : Obstacle::windowManager;
}

std::unique_ptr<Subscription> X11WindowServer::watchWindows(std::function<void()> changed)
{
    return std::make_unique<WindowEventMonitor>(m_needs.scheduler, m_needs.connector, m_trust,
                                                m_icons, std::move(changed));
}

std::unique_ptr<DiscoverySource> X11WindowServer::openDiscoverySource()
{
    const std::scoped_lock lock(m_discoveryMutex);
    const BrokenPipeGuard guard;
    if (!connect()) {
        qCDebug(logX11Discovery, "pass without a display");
        return withoutDesktop();
    }
    const auto begin = std::chrono::steady_clock::now();
    const std::uint64_t roundTrips = m_display->connection().traffic().roundTrips;
    RootReading root = readRoot(*m_display);
    forgetDestroyed();
    updateNumberWriter(root);
    ClientsReading clients = readClients(
        *m_display, root, [this](xcb_window_t window) { return m_numbers.isKnown(window); });
    if (m_display->connection().isBroken() || !clients.hasWindowManager || !root.clients) {
        qCDebug(logX11Discovery, "pass without a window list: %s",
                m_display->connection().isBroken() ? "the connection is lost"
                : clients.hasWindowManager         ? "the window manager maintains none"
                                                   : "there is no window manager");
        return withoutDesktop();
    }
    publishTrust();
    const std::vector<ClientWindow> windows = numbered(std::move(clients), root);
    publishWindows(windows);
    const std::chrono::duration<double, std::milli> duration =
        std::chrono::steady_clock::now() - begin;
    qCDebug(logX11Discovery, "pass read %zu windows in %.1f ms, %llu round trips", windows.size(),
            duration.count(),
            qulonglong(m_display->connection().traffic().roundTrips - roundTrips));
    return std::make_unique<SnapshotSource>(windows, root.context, m_needs.resolver,
                                            m_needs.documents);
}

void X11WindowServer::assumeTrust()
{
    m_trust->hasComposite = true;
    m_trust->hasWindowManager = true;
}

void X11WindowServer::publishTrust()
{
    m_trust->hasComposite = m_display->hasComposite();
    m_trust->hasWindowManager = true;
    m_trust->isKnown = true;
}

std::optional<std::uint32_t> X11WindowServer::clientWindow(WindowID number) const
{
    const std::scoped_lock lock(m_windowsMutex);
    const auto it = m_windows.find(number);
    return it == m_windows.end() ? std::nullopt : std::optional(it->second.window);
}

std::optional<WindowCapture> X11WindowServer::captureWindow(const CaptureRequest& request,
                                                            const std::stop_token& stop)
{
    const std::optional<std::uint32_t> client = clientWindow(request.window);
    if (!client)
        return std::nullopt;
    return m_capturer.capture({request.window, *client}, redirectable(request.next),
                              request.largest, request.need, stop);
}

std::vector<CaptureTarget> X11WindowServer::redirectable(const std::vector<WindowID>& numbers) const
{
    const std::scoped_lock lock(m_windowsMutex);
    std::vector<CaptureTarget> targets;
    for (const WindowID number : numbers) {
        const auto it = m_windows.find(number);
        if (it != m_windows.end() && it->second.mayRedirectAhead)
            targets.push_back({number, it->second.window});
    }
    return targets;
}

XcbTraffic X11WindowServer::traffic() const
{
    const std::scoped_lock lock(m_discoveryMutex);
    return m_display ? m_display->connection().traffic() : XcbTraffic{};
}

bool X11WindowServer::connect()
{
    if (isConnected(m_display))
        return true;
    m_numbers.forgetAll();
    m_sessionIDs.clear();
    m_isWritingNumbers = false;
    m_display = m_needs.connector->open();
    return m_display != nullptr;
}

void X11WindowServer::updateNumberWriter(RootReading& root)
{
    if (root.numbersOwner == XCB_WINDOW_NONE && m_display->acquireNumbers())
        root.numbersOwner = m_display->helperWindow();
    const bool isOwner = root.numbersOwner == m_display->helperWindow();
    if (isOwner != m_isWritingNumbers) {
        qCDebug(logX11Discovery, "%s numbers the windows",
                isOwner ? "this program" : "another program");
    }
    if (isOwner && !m_isWritingNumbers)
        m_numbers.beginWriting(root.numberCounter);
    else if (!isOwner && m_isWritingNumbers)
        m_numbers.beginReading();
    m_isWritingNumbers = isOwner;
}

std::vector<ClientWindow> X11WindowServer::numbered(ClientsReading clients, const RootReading& root)
{
    // A window destroyed during the pass may have been read in parts from two windows.
    const std::vector<std::uint32_t> destroyed = forgetDestroyed();
    std::erase_if(clients.clients, [&](const ClientReading& reading) {
        return std::find(destroyed.begin(), destroyed.end(), reading.client.window) !=
               destroyed.end();
    });
    std::vector<WindowNumbers::Sighting> sightings;
    sightings.reserve(clients.clients.size());
    for (ClientReading& reading : clients.clients) {
        noteSessionID(reading.client);
        sightings.push_back(believable(reading));
    }
    const WindowNumbers::Numbering numbering = m_numbers.number(sightings, root.numberCounter);
    write(numbering);

    std::vector<ClientWindow> windows;
    windows.reserve(clients.clients.size());
    for (std::size_t index = 0; index < clients.clients.size(); ++index) {
        ClientWindow& client = clients.clients.at(index).client;
        client.number = numbering.numbers.at(index);
        noteOwner(client);
        client.iconRevision = m_icons->of(client.window);
        windows.push_back(std::move(client));
    }
    m_owners.save(std::chrono::steady_clock::now());
    return windows;
}

WindowNumbers::Sighting X11WindowServer::believable(const ClientReading& reading) const
{
    WindowNumbers::Sighting sighting = reading.sighting;
    // While another program numbers the windows, it decides.
    const bool isClaim =
        m_isWritingNumbers && sighting.tag && !m_numbers.isKnown(reading.client.window);
    if (isClaim && !m_owners.mayBear(*sighting.tag, ownerOf(reading.client))) {
        qCDebug(logX11Discovery, "the number %u of another window is not believed", *sighting.tag);
        sighting.tag.reset();
    }
    return sighting;
}

void X11WindowServer::noteOwner(const ClientWindow& client)
{
    if (client.number && !m_owners.isNoted(*client.number, client.window))
        m_owners.note(*client.number, ownerOf(client));
}

void X11WindowServer::noteSessionID(ClientWindow& client)
{
    const auto known = m_sessionIDs.find(client.window);
    if (!m_numbers.isKnown(client.window)) {
        if (!client.sessionID.isEmpty())
            m_sessionIDs.insert_or_assign(client.window, client.sessionID);
        else if (known != m_sessionIDs.end())
            m_sessionIDs.erase(known);
    } else if (known != m_sessionIDs.end()) {
        client.sessionID = known->second;
    }
}

void X11WindowServer::write(const WindowNumbers::Numbering& numbering)
{
    if (!numbering.counter && numbering.tags.empty())
        return;
    // The counter goes first, so that every tag that another program reads is covered by it. A
    // window that is gone by now leaves an unread error, and its number is never given again.
    XcbConnection& connection = m_display->connection();
    const AtomTable& atoms = m_display->atoms();
    const auto change = [&](xcb_window_t window, Atom property, WindowID value) {
        xcb_change_property(connection.raw(), XCB_PROP_MODE_REPLACE, window, atoms[property],
                            XCB_ATOM_CARDINAL, 32, 1, &value);
    };
    if (numbering.counter)
        change(connection.root(), Atom::kelpaNumberCounter, *numbering.counter);
    for (const WindowNumbers::Tag& tag : numbering.tags)
        change(tag.window, Atom::kelpaWindowNumber, tag.number);
    // Captures and actions go through connections of their own, which the server may serve before
    // this one: without waiting for this reply they could find a window that is not tagged yet.
    InputFocusReply(connection).get();
}

std::vector<std::uint32_t> X11WindowServer::forgetDestroyed()
{
    std::vector<std::uint32_t> destroyed;
    while (const XcbEvent event = m_display->connection().queuedEvent()) {
        if (const std::optional<xcb_window_t> window = destroyedWindow(*event)) {
            m_numbers.windowDestroyed(*window);
            m_owners.windowDestroyed(*window);
            m_sessionIDs.erase(*window);
            destroyed.push_back(*window);
        }
    }
    return destroyed;
}

void X11WindowServer::publishWindows(const std::vector<ClientWindow>& clients)
{
    std::map<WindowID, KnownWindow> windows;
    for (const ClientWindow& client : clients) {
        if (client.number) {
            const bool isOwn = client.process && client.process == m_needs.ownProcess;
            windows[*client.number] = {client.window, client.isViewable && !isOwn};
        }
    }
    const std::scoped_lock lock(m_windowsMutex);
    m_windows = std::move(windows);
}

std::unique_ptr<DiscoverySource> X11WindowServer::withoutDesktop()
{
    m_trust->hasWindowManager = false;
    m_trust->isKnown = true;
    publishWindows({});
    return std::make_unique<SnapshotSource>();
}

} // namespace kelpa::x11
