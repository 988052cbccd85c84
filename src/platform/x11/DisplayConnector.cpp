#include "platform/x11/DisplayConnector.h"

#include "platform/x11/DisplayLink.h"

namespace kelpa::x11 {

std::unique_ptr<DisplayLink> DisplayConnector::open()
{
    const std::scoped_lock lock(m_mutex);
    return DisplayLink::open(m_display);
}

} // namespace kelpa::x11
