// Kelpa's own window on an X display.
#pragma once

#include "platform/OwnWindow.h"
#include "platform/Scheduler.h"
#include "platform/TaskGroup.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <cstdint>
#include <memory>

namespace kelpa::x11 {

class WindowActor;

class X11OwnWindow : public OwnWindow
{
public:
    /// `actor` and `scheduler` outlive this object, its subscriptions, and the work of `scheduler`
    /// that it began.
    X11OwnWindow(std::shared_ptr<DisplayConnector> connector, WindowActor& actor,
                 Scheduler& scheduler);

    void requestFront(std::uint32_t window, const ActivationContext& occasion) override;
    [[nodiscard]] std::unique_ptr<Subscription>
    watchCovered(std::uint32_t window, std::function<void(bool isCovered)> changed) override;

private:
    void endStartup(const QByteArray& startupID);

    const std::shared_ptr<DisplayConnector> m_connector;
    WindowActor& m_actor;
    Scheduler& m_scheduler;
    TaskHandle m_request;
    /// Ends of starts that are being told of.
    TaskGroup m_startupEnds;
};

} // namespace kelpa::x11
