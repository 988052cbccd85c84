// Implements Accessibility by orders to Kelpa's script within KWin; the accessibility bus has no
// part in it.
#pragma once

#include "platform/Accessibility.h"

namespace kelpa::kwin {

class KwinWindowServer;

/// The elements are the windows of the last discovery pass. KWin activates a window wherever it is:
/// it raises it, and shows its desktop and its activity.
class KwinWindowActions final : public Accessibility
{
public:
    /// It outlives this object and its elements.
    explicit KwinWindowActions(KwinWindowServer& server) : m_server(server) {}

    /// True while KWin is there.
    bool isTrusted() const override;
    std::optional<Obstacle> accessibilityObstacle() const override
    {
        return Obstacle::windowManager;
    }
    /// There is no permission to ask for: the same as `isTrusted`.
    bool requestTrust() override { return isTrusted(); }

    std::optional<AccessibilityElements> elements(ProcessID process) override;
    void showVirtualDesktop(const NumberedDesktop& desktop) override;

private:
    KwinWindowServer& m_server;
};

} // namespace kelpa::kwin
