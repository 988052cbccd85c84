#include "platform/x11/discovery/DesktopReader.h"

#include "platform/x11/connection/XcbEvent.h"
#include "platform/x11/discovery/ClientPropertyRequests.h"

#include <xcb/res.h>

#include <QByteArray>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <set>

namespace kelpa::x11 {

namespace {

using ClientIDsReply = XcbReply<xcb_res_query_client_ids, xcb_res_query_client_ids_reply>;

constexpr std::uint32_t maxSupported = 4096;
/// Session managers give out some fifty bytes.
constexpr std::uint32_t wordsOfSessionID = 40;
/// In four-byte words: enough for many desktops, of which later ones have numbers.
constexpr std::uint32_t wordsOfDesktopNames = 1024;

/// _NET_CLIENT_LIST_STACKING goes from bottom to top.
std::vector<xcb_window_t> topToBottom(const std::vector<xcb_window_t>& stacking)
{
    std::vector<xcb_window_t> clients;
    std::set<xcb_window_t> seen;
    for (auto it = stacking.rbegin(); it != stacking.rend(); ++it) {
        if (*it != XCB_WINDOW_NONE && seen.insert(*it).second)
            clients.push_back(*it);
    }
    return clients;
}

ClientIDsReply requestProcesses(DisplayConnection& display,
                                const std::vector<xcb_window_t>& windows)
{
    std::set<std::uint32_t> clients;
    for (const xcb_window_t window : windows)
        clients.insert(display.connection().clientOf(window));
    std::vector<xcb_res_client_id_spec_t> specs;
    specs.reserve(clients.size());
    for (const std::uint32_t client : clients)
        specs.push_back({client, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID});
    return ClientIDsReply(display.connection(), static_cast<std::uint32_t>(specs.size()),
                          static_cast<const xcb_res_client_id_spec_t*>(specs.data()));
}

/// Processes by the shared part of their resource ids. The server leaves out clients that it does
/// not know, so that the id in a reply identifies it, not its position.
std::map<std::uint32_t, ProcessID> readProcesses(const DisplayConnection& display,
                                                 ClientIDsReply& reply)
{
    std::map<std::uint32_t, ProcessID> processes;
    const auto* ids = reply.get();
    if (!ids)
        return processes;
    auto it = xcb_res_query_client_ids_ids_iterator(ids);
    for (; it.rem > 0; xcb_res_client_id_value_next(&it)) {
        const bool isProcess = (it.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0U;
        if (!isProcess || xcb_res_client_id_value_value_length(it.data) < 1)
            continue;
        const std::uint32_t process = *xcb_res_client_id_value_value(it.data);
        if (process != 0 && process <= std::uint32_t{std::numeric_limits<ProcessID>::max()})
            processes[display.connection().clientOf(it.data->spec.client)] =
                static_cast<ProcessID>(process);
    }
    return processes;
}

QByteArray hostName()
{
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? QByteArray(name.data()) : QByteArray();
}

/// A leader of another client could lend its identifier to any window, so it does not count.
bool hasOwnLeader(const ClientReading& reading, const XcbConnection& connection)
{
    return reading.leader &&
           connection.clientOf(*reading.leader) == connection.clientOf(reading.client.window);
}

/// The identifiers that the session manager gave to the clients of new windows, all in one batch.
void readSessionIDs(DisplayConnection& display, std::vector<ClientReading>& clients)
{
    XcbConnection& connection = display.connection();
    std::map<xcb_window_t, PropertyReply> requests;
    for (const ClientReading& reading : clients) {
        if (hasOwnLeader(reading, connection) && !requests.contains(*reading.leader)) {
            requests.emplace(*reading.leader,
                             askProperty(connection, *reading.leader,
                                         display.atoms()[Atom::sessionClientID], wordsOfSessionID));
        }
    }
    for (ClientReading& reading : clients) {
        if (!hasOwnLeader(reading, connection))
            continue;
        const Property property = propertyOf(requests.at(*reading.leader).get());
        // The beginning of a longer one may be another client's too.
        if (!property.isTruncated)
            reading.client.sessionID = text(property, display.textTypes()).value_or(QString());
    }
}

} // namespace

RootReading readRoot(DisplayConnection& display)
{
    const AtomTable& atoms = display.atoms();
    const auto request = [&](Atom name, std::uint32_t length) {
        return askProperty(display.connection(), display.connection().root(), atoms[name], length);
    };
    PropertyReply stacking = request(Atom::netClientListStacking, mostClients);
    PropertyReply list = request(Atom::netClientList, mostClients);
    PropertyReply supported = request(Atom::netSupported, maxSupported);
    PropertyReply desktop = request(Atom::netCurrentDesktop, 1);
    PropertyReply names = request(Atom::netDesktopNames, wordsOfDesktopNames);
    PropertyReply desktops = request(Atom::netNumberOfDesktops, 1);
    PropertyReply check = request(Atom::netSupportingWmCheck, 1);
    PropertyReply counter = request(Atom::kelpaNumberCounter, 1);
    SelectionOwnerReply owner(display.connection(), atoms[Atom::kelpaNumbers]);

    RootReading reading;
    // An empty list has the type and no bytes; a missing one has no type.
    for (PropertyReply* reply : {&stacking, &list}) {
        const Property property = propertyOf(reply->get());
        if (!reading.clients && property.type == XCB_ATOM_WINDOW && property.format == 32)
            reading.clients = topToBottom(words(property, XCB_ATOM_WINDOW));
    }
    const std::vector<xcb_atom_t> hints = words(propertyOf(supported.get()), XCB_ATOM_ATOM);
    const auto isAnnounced = [&](Atom hint) {
        return std::find(hints.begin(), hints.end(), atoms[hint]) != hints.end();
    };
    reading.context.marksHiddenWindows = isAnnounced(Atom::netWmStateHidden);
    reading.context.pixelsPerPoint = display.pixelsPerPoint();
    reading.context.currentDesktop = word(propertyOf(desktop.get()), XCB_ATOM_CARDINAL);
    reading.context.desktopNames = utf8Texts(propertyOf(names.get()), display.textTypes());
    if (isAnnounced(Atom::netWmDesktop) && isAnnounced(Atom::netCurrentDesktop))
        reading.context.desktopCount =
            word(propertyOf(desktops.get()), XCB_ATOM_CARDINAL).value_or(0);
    reading.managerCheck = word(propertyOf(check.get()), XCB_ATOM_WINDOW).value_or(XCB_WINDOW_NONE);
    reading.numberCounter = word(propertyOf(counter.get()), XCB_ATOM_CARDINAL);
    if (const auto* reply = owner.get())
        reading.numbersOwner = reply->owner;
    return reading;
}

ClientsReading readClients(DisplayConnection& display, const RootReading& root,
                           const std::function<bool(xcb_window_t)>& isWatched)
{
    const std::vector<xcb_window_t> windows = root.clients.value_or(std::vector<xcb_window_t>());
    PropertyReply check = askProperty(display.connection(), root.managerCheck,
                                      display.atoms()[Atom::netSupportingWmCheck], 1);
    std::vector<ClientPropertyRequests> requests;
    requests.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        const bool isNew = !isWatched(window);
        if (isNew) {
            // Earlier in the same batch, so that no window is destroyed unnoticed between the
            // selection of its events and its reading.
            selectEvents(display.connection(), window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        }
        requests.emplace_back(display, window, isNew);
    }
    std::map<std::uint32_t, ProcessID> processes;
    if (display.hasClientIDs() && !windows.empty()) {
        ClientIDsReply reply = requestProcesses(display, windows);
        processes = readProcesses(display, reply);
    }

    ClientsReading reading;
    const std::optional<std::uint32_t> named = word(propertyOf(check.get()), XCB_ATOM_WINDOW);
    reading.hasWindowManager = named && *named == root.managerCheck;
    const QByteArray host = hostName();
    for (ClientPropertyRequests& request : requests) {
        const auto process = processes.find(display.connection().clientOf(request.window()));
        std::optional<ClientReading> client = request.read(
            display, process == processes.end() ? std::nullopt : std::optional(process->second),
            host);
        if (client)
            reading.clients.push_back(std::move(*client));
    }
    readSessionIDs(display, reading.clients);
    return reading;
}

} // namespace kelpa::x11
