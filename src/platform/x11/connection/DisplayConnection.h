// An XcbConnection, to which it adds what every user needs to know of the server: atoms,
// extensions, and an unmapped window of its own.
#pragma once

#include "platform/PointScale.h"
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
    /// Waits for the server. Absent when there is none. Not on two threads at once, which
    /// `DisplayConnector` ensures.
    static std::unique_ptr<DisplayConnection> open(const QByteArray& display,
                                                   std::shared_ptr<const PointScale> scale);

    XcbConnection& connection() { return *m_connection; }
    const XcbConnection& connection() const { return *m_connection; }
    const AtomTable& atoms() const { return m_atoms; }
    TextTypes textTypes() const;

    /// The display's scale at the moment, which may change from one call to the next.
    double pixelsPerPoint() const { return m_scale->pixelsPerPoint(); }

    /// The server has the Composite extension: it can redirect windows, so that each can be
    /// captured.
    bool hasComposite() const { return m_hasComposite; }
    /// The server has client ids (X-Resource 1.2), which give the process of a client.
    bool hasClientIDs() const { return m_hasClientIDs; }

    /// Acquires the selection whose owner alone writes window numbers. Waits for the server. False
    /// when another connection owns it, or when this one is lost.
    bool acquireNumbers();
    /// Never mapped. It owns selections, is named as the sender of messages and takes the property
    /// changes by which the server's time is read.
    xcb_window_t helperWindow() const { return m_helperWindow; }

private:
    DisplayConnection(std::unique_ptr<XcbConnection> connection,
                      std::shared_ptr<const PointScale> scale);

    std::unique_ptr<XcbConnection> m_connection;
    const std::shared_ptr<const PointScale> m_scale;
    AtomTable m_atoms;
    bool m_hasComposite = false;
    bool m_hasClientIDs = false;
    xcb_window_t m_helperWindow = XCB_WINDOW_NONE;
};

/// Whether there is a connection and it is not lost; otherwise it has to be opened anew.
bool isConnected(const std::unique_ptr<DisplayConnection>& display);

} // namespace kelpa::x11
