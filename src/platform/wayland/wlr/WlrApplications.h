// The applications of a compositor that tells no processes: each window stands for its own.
#pragma once

#include "platform/freedesktop/session/SessionApplications.h"

namespace kelpa::wayland {

class WlrWindowServer;

class WlrApplications final : public SessionApplications
{
public:
    /// All outlive this object.
    WlrApplications(WlrWindowServer& server, ApplicationIcons& icons, ApplicationLauncher& launcher)
        : SessionApplications(icons, launcher), m_server(server)
    {}

    /// Whether the window was there in the last pass.
    bool isRunning(ProcessID process) override;
    /// Asks the one window to close.
    void requestQuit(ProcessID process) override;
    /// Absent: nothing tells where a window comes from.
    std::optional<WindowID> windowOf(const Launch& launch,
                                     const QList<WindowItem>& windows) override;

private:
    /// Nothing: no window could be recognised by it.
    LaunchSurroundings surroundings(const QString& desktopEntryID) override;

    WlrWindowServer& m_server;
};

} // namespace kelpa::wayland
