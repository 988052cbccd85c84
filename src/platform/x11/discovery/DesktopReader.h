// Reads the whole desktop in two round trips, however many windows there are: first what the root
// says, then everything about every window.
#pragma once

#include "platform/numbers/WindowNumbers.h"
#include "platform/x11/discovery/ClientWindow.h"

#include <xcb/xcb.h>

#include <functional>
#include <optional>
#include <vector>

namespace kelpa::x11 {

class DisplayConnection;

/// What the root window says.
struct RootReading
{
    /// Top to bottom, each once; absent when no window manager keeps a list.
    std::optional<std::vector<xcb_window_t>> clients;
    DesktopContext context;
    /// The window by which a window manager shows that it runs; XCB_WINDOW_NONE when there is none.
    xcb_window_t managerCheck = XCB_WINDOW_NONE;
    xcb_window_t numbersOwner = XCB_WINDOW_NONE;
    std::optional<WindowID> numberCounter;
};

/// One window, without its number.
struct ClientReading
{
    ClientWindow client;
    WindowNumbers::Sighting sighting;
};

struct ClientsReading
{
    /// The manager's check window exists and says the same as the root.
    bool hasWindowManager = false;
    /// In the order of the list; windows that ended meanwhile or are not managed are
    /// left out.
    std::vector<ClientReading> clients;
};

/// Waits for the server once.
RootReading readRoot(DisplayConnection& link);

/// Waits for the server once. The ends of windows for which `isWatched` is false are reported to
/// the connection from before they are read.
ClientsReading readClients(DisplayConnection& link, const RootReading& root,
                           const std::function<bool(xcb_window_t)>& isWatched);

} // namespace kelpa::x11
