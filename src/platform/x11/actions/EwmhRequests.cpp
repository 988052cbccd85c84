#include "platform/x11/actions/EwmhRequests.h"

#include "platform/x11/actions/ServerTimeRequest.h"
#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/discovery/ClientWindow.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace kelpa::x11 {

namespace {

/// The source indication of pagers and task bars, tools in the person's hand. Window managers let
/// their requests pass where they keep an application from taking the focus by itself.
constexpr std::uint32_t fromPager = 2;
constexpr std::uint32_t mostProtocols = 64;

/// In WM_HINTS: the second word counts where the first has this bit.
constexpr std::uint32_t inputHint = 1;

void sendToManager(DisplayConnection& display, xcb_window_t window, Atom message,
                   const std::array<std::uint32_t, 5>& data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = display.atoms()[message];
    std::copy(data.begin(), data.end(), std::begin(event.data.data32));
    const void* bytes = &event;
    xcb_send_event(display.connection().raw(), 0, display.connection().root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   static_cast<const char*>(bytes));
}

PropertyReply askWord(DisplayConnection& display, xcb_window_t window, Atom name)
{
    return askProperty(display.connection(), window, display.atoms()[name], 1);
}

PropertyReply askRoot(DisplayConnection& display, Atom name)
{
    return askWord(display, display.connection().root(), name);
}

xcb_window_t windowOrNone(PropertyReply& reply)
{
    return word(propertyOf(reply.get()), XCB_ATOM_WINDOW).value_or(XCB_WINDOW_NONE);
}

bool declinesInput(PropertyReply& hints)
{
    const std::vector<std::uint32_t> flags =
        words(propertyOf(hints.get()), xcb_atom_t{XCB_ATOM_WM_HINTS});
    return flags.size() > 1 && (flags[0] & inputHint) != 0 && flags[1] == 0;
}

} // namespace

void requestActivation(DisplayConnection& display, xcb_window_t window, xcb_timestamp_t time)
{
    sendToManager(display, window, Atom::netActiveWindow, {fromPager, time, XCB_WINDOW_NONE, 0, 0});
}

void requestDesktop(DisplayConnection& display, std::uint32_t desktop, xcb_timestamp_t time)
{
    sendToManager(display, display.connection().root(), Atom::netCurrentDesktop,
                  {desktop, time, 0, 0, 0});
}

void requestDesktopOf(DisplayConnection& display, xcb_window_t window, std::uint32_t desktop)
{
    sendToManager(display, window, Atom::netWmDesktop, {desktop, fromPager, 0, 0, 0});
}

void requestClose(DisplayConnection& display, xcb_window_t window, xcb_timestamp_t time)
{
    sendToManager(display, window, Atom::netCloseWindow, {time, fromPager, 0, 0, 0});
}

void requestIconify(DisplayConnection& display, xcb_window_t window)
{
    sendToManager(display, window, Atom::wmChangeState, {iconicState, 0, 0, 0, 0});
}

xcb_window_t activeWindow(DisplayConnection& display)
{
    PropertyReply active = askRoot(display, Atom::netActiveWindow);
    return windowOrNone(active);
}

std::optional<std::uint32_t> currentDesktop(DisplayConnection& display)
{
    PropertyReply current = askRoot(display, Atom::netCurrentDesktop);
    return word(propertyOf(current.get()), XCB_ATOM_CARDINAL);
}

bool isDialogOf(DisplayConnection& display, xcb_window_t dialog, xcb_window_t window)
{
    XcbConnection& connection = display.connection();
    if (dialog == XCB_WINDOW_NONE || connection.clientOf(dialog) != connection.clientOf(window))
        return false;
    PropertyReply owner = askProperty(connection, dialog, XCB_ATOM_WM_TRANSIENT_FOR, 1);
    return word(propertyOf(owner.get()), XCB_ATOM_WINDOW) == window;
}

PropertyReply askProtocols(DisplayConnection& display, xcb_window_t window)
{
    return askProperty(display.connection(), window, display.atoms()[Atom::wmProtocols],
                       mostProtocols);
}

bool supportsProtocol(PropertyReply& protocols, xcb_atom_t protocol)
{
    const std::vector<std::uint32_t> listed = words(propertyOf(protocols.get()), XCB_ATOM_ATOM);
    return std::ranges::find(listed, protocol) != listed.end();
}

TargetState readTargetState(DisplayConnection& display, const WindowTarget& target)
{
    // All of them are sent before the first reply is read.
    ServerTimeRequest time(display);
    PropertyReply tag = askWord(display, target.window, Atom::kelpaWindowNumber);
    PropertyReply desktop = askWord(display, target.window, Atom::netWmDesktop);
    PropertyReply hints = askProperty(display.connection(), target.window, XCB_ATOM_WM_HINTS, 2);
    PropertyReply protocols = askProtocols(display, target.window);
    PropertyReply active = askRoot(display, Atom::netActiveWindow);
    PropertyReply current = askRoot(display, Atom::netCurrentDesktop);

    TargetState state;
    state.serverTime = time.get();
    state.isSame =
        !target.number || word(propertyOf(tag.get()), XCB_ATOM_CARDINAL) == target.number;
    state.takesFocus =
        !declinesInput(hints) || supportsProtocol(protocols, display.atoms()[Atom::wmTakeFocus]);
    state.active = windowOrNone(active);
    const auto own = word(propertyOf(desktop.get()), XCB_ATOM_CARDINAL);
    if (own && *own != everyDesktop &&
        own != word(propertyOf(current.get()), XCB_ATOM_CARDINAL).value_or(*own))
        state.desktop = own;
    return state;
}

} // namespace kelpa::x11
