// Implements Accessibility by calls of the Shell's extension; the accessibility bus has no part in
// it.
#pragma once

#include "platform/Accessibility.h"
#include "platform/gnome/ShellClient.h"

namespace kelpa::gnome {

class GnomeWindowServer;

/// The elements are the windows of the last discovery pass. Raising, restoring and giving the focus
/// are one call.
class GnomeWindowActions final : public Accessibility
{
public:
    /// Both outlive this object and its elements.
    GnomeWindowActions(const GnomeWindowServer& server, ShellClient& client)
        : m_server(server), m_client(client)
    {}

    /// As `GnomeWindowServer::isScreenCaptureTrusted`, and the obstacle.
    bool isTrusted() const override;
    std::optional<Obstacle> accessibilityObstacle() const override { return std::nullopt; }
    bool requestTrust() override { return isTrusted(); }

    void showVirtualDesktop(const NumberedDesktop& desktop) override
    {
        m_client.showWorkspace(desktop);
    }
    std::optional<AccessibilityElements> elements(ProcessID process) override;

private:
    const GnomeWindowServer& m_server;
    ShellClient& m_client;
};

} // namespace kelpa::gnome
