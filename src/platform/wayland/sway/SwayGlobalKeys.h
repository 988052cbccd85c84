// Hears Super through a binding that Kelpa adds to sway at run time and takes away again. Each
// event of the binding is a whole tap; the keys themselves are never reported.
#pragma once

#include "platform/GlobalKeys.h"
#include "platform/Scheduler.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <utility>

namespace kelpa::wayland {

class SwayGlobalKeys final : public GlobalKeys
{
public:
    /// `socketPath` as in the SWAYSOCK variable. `scheduler` outlives this object and its
    /// subscriptions. `bound` is told on the main thread whether sway has the binding, each time
    /// that it replies: not where the person's configuration binds the key, or it is refused.
    SwayGlobalKeys(QByteArray socketPath, Scheduler& scheduler, std::function<void(bool)> bound)
        : m_socketPath(std::move(socketPath)), m_scheduler(scheduler), m_bound(std::move(bound))
    {}

    /// Reports each tap as a press and a release. Not available where the person's configuration
    /// binds the key. Destroying the subscription takes the binding away, for which it waits 200 ms
    /// at most.
    [[nodiscard]] std::unique_ptr<Subscription> watchKeys(GlobalKeyHandlers handlers) override;

private:
    const QByteArray m_socketPath;
    Scheduler& m_scheduler;
    const std::function<void(bool)> m_bound;
};

} // namespace kelpa::wayland
