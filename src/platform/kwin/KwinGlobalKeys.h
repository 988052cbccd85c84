// Hears the double tap of Super where it calls Plasma's launcher, and stands in for it with the
// shortcut of Kelpa's script within KWin: KWin reports no keys to its clients.
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

    /// Reports each press of the shortcut as two taps at one moment, and each call of the launcher
    /// as one, by whichever of its keys. Keys are received while a tap of Super is among these;
    /// which keys the shortcut has is not known.
    [[nodiscard]] std::unique_ptr<Subscription> watchKeys(GlobalKeyHandlers handlers) override;

private:
    KwinWindowServer& m_server;
    Scheduler& m_scheduler;
};

} // namespace kelpa::kwin
