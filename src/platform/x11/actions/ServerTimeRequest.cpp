#include "platform/x11/actions/ServerTimeRequest.h"

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbEvent.h"

namespace kelpa::x11 {

namespace {

unsigned int appendNothing(DisplayConnection& display)
{
    return xcb_change_property(display.connection().raw(), XCB_PROP_MODE_APPEND,
                               display.helperWindow(), display.atoms()[Atom::kelpaTime],
                               XCB_ATOM_CARDINAL, 32, 0, nullptr)
        .sequence;
}

} // namespace

ServerTimeRequest::ServerTimeRequest(DisplayConnection& display)
    : m_display(display), m_sequence(appendNothing(display)), m_barrier(display.connection())
{}

std::optional<xcb_timestamp_t> ServerTimeRequest::get()
{
    m_barrier.get();
    std::optional<xcb_timestamp_t> time;
    while (const XcbEvent event = m_display.connection().queuedEvent()) {
        // Events of other windows may carry the same sequence number: that of the last request
        // that the server had processed.
        if (typeOf(*event) != XCB_PROPERTY_NOTIFY || event->full_sequence != m_sequence)
            continue;
        const auto& change = as<xcb_property_notify_event_t>(*event);
        if (change.window == m_display.helperWindow() &&
            change.atom == m_display.atoms()[Atom::kelpaTime])
            time = change.time;
    }
    return time;
}

} // namespace kelpa::x11
