#include "platform/kwin/KwinGlobalKeys.h"

#include "platform/DoubleTapReport.h"
#include "platform/kwin/KwinWindowServer.h"

#include <utility>

namespace kelpa::kwin {

std::unique_ptr<Subscription> KwinGlobalKeys::watchKeys(GlobalKeyHandlers handlers)
{
    return m_server.watchSummons(
        [this, told = std::move(handlers)] { reportDoubleTap(told, m_scheduler); });
}

} // namespace kelpa::kwin
