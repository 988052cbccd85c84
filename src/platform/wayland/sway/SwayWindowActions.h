// Implements Accessibility by sway's commands; the accessibility bus has no part in it.
#pragma once

#include "platform/Accessibility.h"

namespace kelpa::wayland {

class SwayCommands;
class SwayWindowServer;

/// The elements are the windows of the last discovery pass. Raising and giving the focus are one
/// command; sway minimises no window, so there is none to restore.
class SwayWindowActions final : public Accessibility
{
public:
    /// Both outlive this object and its elements.
    SwayWindowActions(const SwayWindowServer& server, SwayCommands& commands)
        : m_server(server), m_commands(commands)
    {}

    /// True while sway is there.
    bool isTrusted() const override;
    std::optional<Obstacle> accessibilityObstacle() const override
    {
        return Obstacle::windowManager;
    }
    /// There is no permission to ask for: the same as `isTrusted`.
    bool requestTrust() override { return isTrusted(); }

    void showVirtualDesktop(const NumberedDesktop& desktop) override;
    std::optional<AccessibilityElements> elements(ProcessID process) override;

private:
    const SwayWindowServer& m_server;
    SwayCommands& m_commands;
};

} // namespace kelpa::wayland
