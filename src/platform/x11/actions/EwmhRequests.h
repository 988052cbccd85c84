// The requests that a pager sends to an EWMH window manager, and the properties that it reads
// first. Requests are client messages without a reply; every reply that is read is matched by its
// own cookie, never by the order in which replies arrive.
#pragma once

#include "platform/x11/actions/WindowTarget.h"
#include "platform/x11/connection/XcbReply.h"

#include <xcb/xproto.h>

#include <optional>

namespace kelpa::x11 {

class DisplayConnection;

// Requests are buffered, the caller flushes. `time` is on the server's clock; XCB_CURRENT_TIME
// means the time at which the window manager reads the request.

/// _NET_ACTIVE_WINDOW: un-minimises and raises the window and gives it the focus.
void requestActivation(DisplayConnection& display, xcb_window_t window, xcb_timestamp_t time);
/// _NET_CURRENT_DESKTOP: switches to the desktop.
void requestDesktop(DisplayConnection& display, std::uint32_t desktop, xcb_timestamp_t time);
/// _NET_WM_DESKTOP: sends the window to the desktop, which stays hidden if it is.
void requestDesktopOf(DisplayConnection& display, xcb_window_t window, std::uint32_t desktop);
/// _NET_CLOSE_WINDOW. Window managers kill the client of a window without WM_DELETE_WINDOW.
void requestClose(DisplayConnection& display, xcb_window_t window, xcb_timestamp_t time);
/// WM_CHANGE_STATE: minimises the window.
void requestIconify(DisplayConnection& display, xcb_window_t window);

/// The focused window by _NET_ACTIVE_WINDOW; XCB_WINDOW_NONE when the window manager reports none.
/// Waits for the server.
xcb_window_t activeWindow(DisplayConnection& display);

/// The desktop that is shown, from 0; absent when the window manager has none. Waits for the
/// server.
std::optional<std::uint32_t> currentDesktop(DisplayConnection& display);

/// Whether `dialog` is transient for `window` and belongs to the same client. Waits for the server.
bool isDialogOf(DisplayConnection& display, xcb_window_t dialog, xcb_window_t window);

/// Asks for WM_PROTOCOLS of a window; does not wait.
PropertyReply askProtocols(DisplayConnection& display, xcb_window_t window);
/// Whether such a reply lists the protocol. Waits for the server.
bool supportsProtocol(PropertyReply& protocols, xcb_atom_t protocol);

/// The state of a window and of its desktop before an action.
struct TargetState
{
    /// The window exists and still is the target.
    bool isSame = false;
    /// The window accepts the focus, by WM_HINTS or WM_TAKE_FOCUS.
    bool takesFocus = true;
    /// The server's time when it answered; absent when the connection was lost.
    std::optional<xcb_timestamp_t> serverTime;
    /// As `activeWindow`.
    xcb_window_t active = XCB_WINDOW_NONE;
    /// The desktop to switch to first; absent when the window is on the current one.
    std::optional<std::uint32_t> desktop;
};

/// Waits for the server, one round trip. The requirement of `ServerTimeRequest` holds.
TargetState readTargetState(DisplayConnection& display, const WindowTarget& target);

} // namespace kelpa::x11
