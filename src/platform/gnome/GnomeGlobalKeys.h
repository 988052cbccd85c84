// Hears the double tap of Super from the Shell's extension, which recognises it by itself; the keys
// are never reported.
#pragma once

#include "platform/GlobalKeys.h"
#include "platform/Scheduler.h"

#include <memory>

namespace kelpa::gnome {

class ShellFollower;

class GnomeGlobalKeys final : public GlobalKeys
{
public:
    /// Both outlive this object and its subscriptions.
    GnomeGlobalKeys(ShellFollower& follower, Scheduler& scheduler)
        : m_follower(follower), m_scheduler(scheduler)
    {}

    /// Reports each double tap as two taps at one moment.
    [[nodiscard]] std::unique_ptr<Subscription> watchKeys(GlobalKeyHandlers handlers) override;

private:
    ShellFollower& m_follower;
    Scheduler& m_scheduler;
};

} // namespace kelpa::gnome
