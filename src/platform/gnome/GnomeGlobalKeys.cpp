#include "platform/gnome/GnomeGlobalKeys.h"

#include "platform/DoubleTapReport.h"
#include "platform/gnome/ShellFollower.h"

#include <utility>

namespace kelpa::gnome {

namespace {

class GnomeKeySubscription final : public Subscription
{
public:
    GnomeKeySubscription(ShellFollower& follower, Scheduler& scheduler, GlobalKeyHandlers handlers)
        : m_follower(follower), m_scheduler(scheduler), m_handlers(std::move(handlers)),
          m_watch(follower.watch({.standingChanged = [this] { update(); },
                                  .windowsChanged = {},
                                  .doubleTapped =
                                      [this] {
                                          if (m_isAvailable)
                                              reportDoubleTap(m_handlers, m_scheduler);
                                      }}))
    {
        update();
    }

private:
    void update()
    {
        const bool isAvailable = m_follower.hearsDoubleTap();
        if (std::exchange(m_isAvailable, isAvailable) != isAvailable)
            m_handlers.availabilityChanged(isAvailable);
    }

    ShellFollower& m_follower;
    Scheduler& m_scheduler;
    const GlobalKeyHandlers m_handlers;
    bool m_isAvailable = false;
    const std::unique_ptr<Subscription> m_watch;
};

} // namespace

std::unique_ptr<Subscription> GnomeGlobalKeys::watchKeys(GlobalKeyHandlers handlers)
{
    return std::make_unique<GnomeKeySubscription>(m_follower, m_scheduler, std::move(handlers));
}

} // namespace kelpa::gnome
