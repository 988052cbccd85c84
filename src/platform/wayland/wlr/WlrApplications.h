// The applications of a compositor that tells no processes: each window stands for its own.
#pragma once

#include "platform/Applications.h"

namespace kelpa {
class ApplicationIcons;
class ApplicationLauncher;
} // namespace kelpa

namespace kelpa::wayland {

class WlrWindowServer;

class WlrApplications final : public Applications
{
public:
    /// All outlive this object.
    WlrApplications(WlrWindowServer& server, ApplicationIcons& icons, ApplicationLauncher& launcher)
        : m_server(server), m_icons(icons), m_launcher(launcher)
    {}

    ProcessID currentProcess() const override;
    /// Whether the window was there in the last pass.
    bool isRunning(ProcessID process) override;
    /// Nothing: the window comes forward by itself.
    void requestActivation(ProcessID) override {}
    /// Asks the one window to close.
    void requestQuit(ProcessID process) override;
    std::optional<Launch> launch(LaunchableApplication application) override;
    Reopening reopen(const FormerWindow& window) override;
    std::optional<QString> identifierOf(const Launch& launch, const std::stop_token& stop) override;
    /// Absent: nothing tells where a window comes from.
    std::optional<WindowID> windowOf(const Launch& launch,
                                     const QList<WindowItem>& windows) override;
    QImage icon(const WindowItem& window, int pixels) override;

private:
    WlrWindowServer& m_server;
    ApplicationIcons& m_icons;
    ApplicationLauncher& m_launcher;
};

} // namespace kelpa::wayland
