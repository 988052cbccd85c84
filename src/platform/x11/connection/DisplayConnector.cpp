#include "platform/x11/connection/DisplayConnector.h"

#include "platform/LoggingCategories.h"
#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbConnection.h"

namespace kelpa::x11 {

std::unique_ptr<DisplayConnection> DisplayConnector::open()
{
    const std::scoped_lock lock(m_mutex);
    std::unique_ptr<DisplayConnection> connection = DisplayConnection::open(m_display, m_scale);
    qCDebug(logX11Connection, "connection to display \"%s\": %s", m_display.constData(),
            connection ? "open" : "failed");
    return connection;
}

bool hasDisplay(const QByteArray& display)
{
    return XcbConnection::open(display) != nullptr;
}

} // namespace kelpa::x11
