// Whether a window lies wholly behind others.
#pragma once

#include "platform/Scheduler.h"
#include "platform/Subscription.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <QSocketNotifier>

#include <cstdint>
#include <functional>
#include <memory>

namespace kelpa::x11 {

class DisplayConnection;

/// Asks the server to tell over a connection of its own. Under a compositing manager, which has the
/// server keep all windows' contents apart, the server counts none as covered. Main thread, which
/// waits for nothing.
class OcclusionMonitor : public Subscription
{
public:
    /// `window` is a client window, which need not be shown yet. `scheduler` outlives this object.
    OcclusionMonitor(std::shared_ptr<DisplayConnector> connector, Scheduler& scheduler,
                     std::uint32_t window, std::function<void(bool isCovered)> changed);
    ~OcclusionMonitor() override;

private:
    void connected(std::unique_ptr<DisplayConnection> link);
    void process();
    void set(bool isCovered);

    const std::uint32_t m_window;
    const std::function<void(bool isCovered)> m_changed;
    bool m_isCovered = false;
    std::unique_ptr<DisplayConnection> m_link;
    std::unique_ptr<QSocketNotifier> m_notifier;
    TaskHandle m_connecting;
};

} // namespace kelpa::x11
