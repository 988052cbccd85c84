// The X server's current time, which no reply carries: appending nothing to a property makes the
// server send a PropertyNotify event with its timestamp.
#pragma once

#include "platform/x11/connection/XcbReply.h"

#include <xcb/xproto.h>

#include <optional>

namespace kelpa::x11 {

class DisplayConnection;

/// Sent when constructed, like a reply type, so that it shares the round trip of other requests.
/// The connection must have selected property changes of its helper window. Must not outlive its
/// connection.
class ServerTimeRequest
{
public:
    explicit ServerTimeRequest(DisplayConnection& display);

    /// Waits for the server and discards all other events that have arrived by then, also those of
    /// other such requests. Absent when the connection is lost. To be called once.
    std::optional<xcb_timestamp_t> get();

private:
    DisplayConnection& m_display;
    const unsigned int m_sequence;
    /// Sent behind the change: once its reply is here, so is the event.
    InputFocusReply m_barrier;
};

} // namespace kelpa::x11
