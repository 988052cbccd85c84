// Reads the whole desktop in two round trips, however many windows there are: first the properties
// of the root window, then everything about every client window. New windows may cost a third, for
// the leaders of their clients.
#pragma once

#include "platform/numbers/WindowNumbers.h"
#include "platform/x11/discovery/ClientWindow.h"

#include <xcb/xcb.h>

#include <functional>
#include <optional>
#include <vector>

namespace kelpa::x11 {

class DisplayConnection;

/// The properties of the root window.
struct RootReading
{
    /// Top to bottom, each once; absent when no window manager maintains a client list.
    std::optional<std::vector<xcb_window_t>> clients;
    DesktopContext context;
    /// _NET_SUPPORTING_WM_CHECK, the window by which a window manager shows that it runs;
    /// XCB_WINDOW_NONE when there is none.
    xcb_window_t managerCheck = XCB_WINDOW_NONE;
    /// Owns the selection of whoever writes window numbers; XCB_WINDOW_NONE when nobody does.
    xcb_window_t numbersOwner = XCB_WINDOW_NONE;
    std::optional<WindowID> numberCounter;
};

/// A client window, not numbered yet.
struct ClientReading
{
    ClientWindow client;
    WindowNumbers::Sighting sighting;
    /// WM_CLIENT_LEADER, as any client may have written it; absent without one, and for a window
    /// that was read before.
    std::optional<xcb_window_t> leader;
};

struct ClientsReading
{
    /// The window manager's check window exists and names itself as the root window names it.
    bool hasWindowManager = false;
    /// In the order of the client list, without windows that were destroyed meanwhile or are not
    /// managed.
    std::vector<ClientReading> clients;
};

/// Waits for the server once.
RootReading readRoot(DisplayConnection& display);

/// Waits for the server once, and once more where new windows have leaders. Selects the destruction
/// of windows for which `isWatched` is false before it reads them. The others have been read by an
/// earlier pass, and what never changes is not read again: their `sessionID` stays empty.
ClientsReading readClients(DisplayConnection& display, const RootReading& root,
                           const std::function<bool(xcb_window_t)>& isWatched);

} // namespace kelpa::x11
