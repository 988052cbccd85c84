// Stands in for the double tap of Super with the shortcut of Kelpa's script within KWin: KWin
// reports no keys to its clients.
#pragma once

#include "platform/GlobalKeys.h"
#include "platform/Scheduler.h"

#include <memory>

namespace kelpa::kwin {

class KwinWindowServer;

class KwinGlobalKeys final : public GlobalKeys
{
public:
    /// Both outlive this object and its subscriptions.
    KwinGlobalKeys(KwinWindowServer& server, Scheduler& scheduler)
        : m_server(server), m_scheduler(scheduler)
    {}

    /// Reports each press of the shortcut as two taps at one moment. Never says that keys are
    /// received: a double tap is not recognised, and whether the shortcut has a key is not known.
    [[nodiscard]] std::unique_ptr<Subscription> watchKeys(GlobalKeyHandlers handlers) override;

private:
    KwinWindowServer& m_server;
    Scheduler& m_scheduler;
};

} // namespace kelpa::kwin
