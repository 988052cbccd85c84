// A connection with what every user of it needs to know of its server.
#pragma once

#include "platform/x11/connection/AtomTable.h"
#include "platform/x11/connection/Property.h"
#include "platform/x11/connection/XcbConnection.h"

#include <QByteArray>

#include <memory>

namespace kelpa::x11 {

/// Used on one thread at a time.
class DisplayConnection
{
public:
    /// Waits for the server. Absent when there is none. Not on two threads at once: see
    /// `DisplayConnector`.
    static std::unique_ptr<DisplayConnection> open(const QByteArray& display);

    XcbConnection& connection() { return *m_connection; }
    const XcbConnection& connection() const { return *m_connection; }
    const AtomTable& atoms() const { return m_atoms; }
    TextTypes textTypes() const;

    /// The server can keep the contents of windows apart, so that one can be captured.
    bool hasComposite() const { return m_hasComposite; }
    /// The server can tell the process of a client.
    bool hasClientIDs() const { return m_hasClientIDs; }

    /// Makes this link's owner the only one that writes window numbers, unless another connection
    /// is. Waits for the server. False when another one is, or the connection is lost.
    bool acquireNumbers();
    /// The window that holds the ownership.
    xcb_window_t ownWindow() const { return m_ownWindow; }

private:
    explicit DisplayConnection(std::unique_ptr<XcbConnection> connection);

    std::unique_ptr<XcbConnection> m_connection;
    AtomTable m_atoms;
    bool m_hasComposite = false;
    bool m_hasClientIDs = false;
    xcb_window_t m_ownWindow = XCB_WINDOW_NONE;
};

/// Whether there is a connection that is not lost; otherwise it is time for a new one.
bool isStanding(const std::unique_ptr<DisplayConnection>& link);

} // namespace kelpa::x11
