// Kelpa's main window in a sway session.
#pragma once

#include "platform/OwnWindow.h"
#include "platform/Scheduler.h"
#include "platform/tasks/ExclusiveTask.h"

namespace kelpa::wayland {

class SwayCommands;

/// sway knows the window by its process, which has no other: Wayland gives a window no number.
class SwayOwnWindow final : public OwnWindow
{
public:
    /// Both outlive this object and the background work that it started.
    SwayOwnWindow(SwayCommands& commands, Scheduler& scheduler)
        : m_commands(commands), m_activation(scheduler)
    {}

    void requestFront(QWindow& window, const ActivationContext& context) override;
    /// sway does not report it: null.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchOcclusion(QWindow& window, std::function<void(bool isOccluded)> changed) override;

private:
    void activate();

    SwayCommands& m_commands;
    ExclusiveTask m_activation;
    /// Requested again while an activation was under way.
    bool m_isRequested = false;
};

} // namespace kelpa::wayland
