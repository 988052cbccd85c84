// Reports whether other windows obscure a window completely.
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

/// Receives VisibilityNotify events on a connection of its own. Under a compositing manager the
/// server reports no window as obscured, because the contents of all windows are redirected. Main
/// thread, which waits for nothing.
class OcclusionMonitor : public Subscription
{
public:
    /// `window` is a client window, which need not be mapped yet. `changed` is called with each
    /// change; before the first one the window counts as not occluded. `scheduler` outlives this
    /// object.
    OcclusionMonitor(std::shared_ptr<DisplayConnector> connector, Scheduler& scheduler,
                     std::uint32_t window, std::function<void(bool isOccluded)> changed);
    ~OcclusionMonitor() override;

private:
    void connected(std::unique_ptr<DisplayConnection> display);
    void processEvents();
    void setOccluded(bool isOccluded);

    const std::uint32_t m_window;
    const std::function<void(bool isOccluded)> m_changed;
    bool m_isOccluded = false;
    std::unique_ptr<DisplayConnection> m_display;
    std::unique_ptr<QSocketNotifier> m_notifier;
    TaskHandle m_connecting;
};

} // namespace kelpa::x11
