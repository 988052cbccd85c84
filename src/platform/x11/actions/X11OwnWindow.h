// Kelpa's main window on an X display.
#pragma once

#include "platform/OwnWindow.h"
#include "platform/Scheduler.h"
#include "platform/TaskGroup.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <cstdint>
#include <memory>

namespace kelpa::x11 {

class EwmhPager;

class X11OwnWindow : public OwnWindow
{
public:
    /// `pager` and `scheduler` outlive this object, its subscriptions and the background work that
    /// it started.
    X11OwnWindow(std::shared_ptr<DisplayConnector> connector, EwmhPager& pager,
                 Scheduler& scheduler);

    void requestFront(std::uint32_t window, const ActivationContext& context) override;
    [[nodiscard]] std::unique_ptr<Subscription>
    watchOcclusion(std::uint32_t window, std::function<void(bool isOccluded)> changed) override;

private:
    void completeStartup(const QByteArray& startupID);

    const std::shared_ptr<DisplayConnector> m_connector;
    EwmhPager& m_pager;
    Scheduler& m_scheduler;
    TaskHandle m_activation;
    /// Announcements that a start is complete.
    TaskGroup m_completions;
};

} // namespace kelpa::x11
