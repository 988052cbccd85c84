// Implements Accessibility by the requests of the compositor's list; the accessibility bus has no
// part in it.
#pragma once

#include "platform/Accessibility.h"

namespace kelpa::wayland {

class WlrWindowServer;

class WlrWindowActions final : public Accessibility
{
public:
    /// `server` outlives this object and its elements.
    explicit WlrWindowActions(WlrWindowServer& server) : m_server(server) {}

    /// There is no permission that could be missing.
    bool isTrusted() const override { return true; }
    std::optional<Obstacle> accessibilityObstacle() const override { return std::nullopt; }
    bool requestTrust() override { return true; }

    /// The one window of what stands for a process.
    std::optional<AccessibilityElements> elements(ProcessID process) override;

private:
    WlrWindowServer& m_server;
};

} // namespace kelpa::wayland
