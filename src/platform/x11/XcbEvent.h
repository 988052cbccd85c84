#pragma once

#include <xcb/xcb.h>

namespace kelpa::x11 {

/// The event as what its type says it is; valid as long as `event`.
template <class Event>
const Event& as(const xcb_generic_event_t& event)
{
    const void* bytes = &event;
    return *static_cast<const Event*>(bytes);
}

} // namespace kelpa::x11
