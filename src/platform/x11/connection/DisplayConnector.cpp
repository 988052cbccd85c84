#include "platform/x11/connection/DisplayConnector.h"

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbConnection.h"

namespace kelpa::x11 {

std::unique_ptr<DisplayConnection> DisplayConnector::open()
{
    const std::scoped_lock lock(m_mutex);
    return DisplayConnection::open(m_display);
}

bool hasDisplay(const QByteArray& display)
{
    return XcbConnection::open(display) != nullptr;
}

} // namespace kelpa::x11
