#include "platform/x11/DisplayConnector.h"

#include "platform/x11/DisplayLink.h"
#include "platform/x11/XcbConnection.h"

namespace kelpa::x11 {

std::unique_ptr<DisplayLink> DisplayConnector::open()
{
    const std::scoped_lock lock(m_mutex);
    return DisplayLink::open(m_display);
}

bool hasDisplay(const QByteArray& display)
{
    return XcbConnection::open(display) != nullptr;
}

} // namespace kelpa::x11
