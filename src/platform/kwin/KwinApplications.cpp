#include "platform/kwin/KwinApplications.h"

#include "platform/kwin/KwinWindowServer.h"

namespace kelpa::kwin {

void KwinApplications::requestQuit(ProcessID process)
{
    if (process != currentProcess())
        m_server.order({.action = KwinAction::close, .process = process});
}

} // namespace kelpa::kwin
