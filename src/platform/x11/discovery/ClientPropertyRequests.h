// The requests about one client window, all sent at once, and the client window that their replies
// describe.
#pragma once

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/discovery/DesktopReader.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace kelpa::x11 {

/// Sent when constructed; `read` waits for the replies. Must not outlive its connection.
class ClientPropertyRequests
{
public:
    /// Asks for what never changes only where the window is new.
    ClientPropertyRequests(DisplayConnection& display, xcb_window_t window, bool isNew);

    /// Absent when the window is gone or not managed. `process` is the client's as the server
    /// reports it; `host` is this machine's name.
    std::optional<ClientReading> read(const DisplayConnection& display,
                                      std::optional<ProcessID> process, const QByteArray& host);

    xcb_window_t window() const { return m_window; }

private:
    enum class PropertyIndex : std::uint8_t;

    Property property(PropertyIndex index);
    void readState(ClientWindow& client, const AtomTable& atoms);
    void readIdentity(ClientWindow& client, const DisplayConnection& display,
                      std::optional<ProcessID> process, const QByteArray& host);
    Rect frame(const xcb_get_geometry_reply_t& geometry,
               const xcb_translate_coordinates_reply_t& position);

    xcb_window_t m_window;
    AttributesReply m_attributes;
    GeometryReply m_geometry;
    TranslationReply m_position;
    std::vector<PropertyReply> m_properties;
    std::optional<PropertyReply> m_leader;
};

} // namespace kelpa::x11
