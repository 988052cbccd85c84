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
        : m_server(server), m_handlers(std::move(handlers)),
          m_summons(
              server.watchSummons([this, &scheduler] { reportDoubleTap(m_handlers, scheduler); })),
          m_launcher(
              server.watchLauncher([this](Scheduler::Time time) { reportTap(m_handlers, time); })),
          m_changes(server.watchWindows([this] { reportAvailability(); }))
    {}

private:
    void reportAvailability()
    {
        const bool isHeard = m_server.isKeyHeard() == std::optional(true);
        if (std::exchange(m_isHeard, isHeard) != isHeard)
            m_handlers.availabilityChanged(isHeard);
    }

    KwinWindowServer& m_server;
    const GlobalKeyHandlers m_handlers;
    bool m_isHeard = false;
    const std::unique_ptr<Subscription> m_summons;
    const std::unique_ptr<Subscription> m_launcher;
    const std::unique_ptr<Subscription> m_changes;
};

} // namespace

std::unique_ptr<Subscription> KwinGlobalKeys::watchKeys(GlobalKeyHandlers handlers)
{
    return std::make_unique<KwinKeySubscription>(m_server, m_scheduler, std::move(handlers));
}

} // namespace kelpa::kwin
