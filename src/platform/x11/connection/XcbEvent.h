// Selecting the events of a window, and reading them.
#pragma once

#include "platform/x11/connection/XcbConnection.h"

#include <xcb/xcb.h>

#include <cstdint>

namespace kelpa::x11 {

/// The type of an event, whether the server generated it or another client sent it; 0 for an error.
inline std::uint8_t typeOf(const xcb_generic_event_t& event)
{
    constexpr unsigned int sent = 0x80;
    return static_cast<std::uint8_t>(event.response_type & ~sent);
}

/// The event as the structure of its type; valid as long as `event`.
template <class Event>
const Event& as(const xcb_generic_event_t& event)
{
    const void* bytes = &event;
    return *static_cast<const Event*>(bytes);
}

/// From now on the connection receives these events of the window and no others of it. If the
/// window is gone, an error arrives among the events.
inline void selectEvents(XcbConnection& connection, xcb_window_t window, std::uint32_t mask)
{
    xcb_change_window_attributes(connection.raw(), window, XCB_CW_EVENT_MASK, &mask);
}

} // namespace kelpa::x11
