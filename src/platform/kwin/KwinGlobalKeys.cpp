#include "platform/kwin/KwinGlobalKeys.h"

#include "platform/DoubleTapReport.h"
#include "platform/kwin/KwinWindowServer.h"

#include <utility>

namespace kelpa::kwin {

namespace {

class KwinKeySubscription final : public Subscription
{
public:
    KwinKeySubscription(KwinWindowServer& server, Scheduler& scheduler, GlobalKeyHandlers handlers)
        : m_handlers(std::move(handlers)),
          m_summons(
              server.watchSummons([this, &scheduler] { reportDoubleTap(m_handlers, scheduler); })),
          m_launcher(
              server.watchLauncher([this](Scheduler::Time time) { reportTap(m_handlers, time); }))
    {}

private:
    const GlobalKeyHandlers m_handlers;
    const std::unique_ptr<Subscription> m_summons;
    const std::unique_ptr<Subscription> m_launcher;
};

} // namespace

std::unique_ptr<Subscription> KwinGlobalKeys::watchKeys(GlobalKeyHandlers handlers)
{
    return std::make_unique<KwinKeySubscription>(m_server, m_scheduler, std::move(handlers));
}

} // namespace kelpa::kwin
