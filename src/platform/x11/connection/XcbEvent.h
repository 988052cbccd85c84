// What the server tells unasked: what to hear of, and the events.
#pragma once

#include "platform/x11/connection/XcbConnection.h"

#include <xcb/xcb.h>

#include <cstdint>

namespace kelpa::x11 {

/// The type of an event, whether the server tells of it or another client has sent it; 0 for an
/// error.
inline std::uint8_t typeOf(const xcb_generic_event_t& event)
{
    constexpr unsigned int sent = 0x80;
    return static_cast<std::uint8_t>(event.response_type & ~sent);
}

/// The event as what its type says it is; valid as long as `event`.
template <class Event>
const Event& as(const xcb_generic_event_t& event)
{
    const void* bytes = &event;
    return *static_cast<const Event*>(bytes);
}

/// From now on the connection hears of these events of the window, and of no others of it. Where
/// the window is gone, an error comes among the events.
inline void selectEvents(XcbConnection& connection, xcb_window_t window, std::uint32_t mask)
{
    xcb_change_window_attributes(connection.raw(), window, XCB_CW_EVENT_MASK, &mask);
}

} // namespace kelpa::x11
