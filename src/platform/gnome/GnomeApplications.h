// The applications of a GNOME session: the Shell closes their windows and lets launched ones come
// forward, the installed desktop entries give their icons and what to launch.
#pragma once

#include "platform/Applications.h"

namespace kelpa {
class ApplicationIcons;
class ApplicationLauncher;
struct LaunchSurroundings;
} // namespace kelpa

namespace kelpa::gnome {

class GnomeWindowServer;
class ShellClient;

class GnomeApplications final : public Applications
{
public:
    /// All outlive this object.
    GnomeApplications(ShellClient& client, const GnomeWindowServer& server, ApplicationIcons& icons,
                      ApplicationLauncher& launcher)
        : m_client(client), m_server(server), m_icons(icons), m_launcher(launcher)
    {}

    ProcessID currentProcess() const override;
    /// Whether the process exists and is not a zombie.
    bool isRunning(ProcessID process) override;
    /// Nothing: each window comes forward by itself.
    void requestActivation(ProcessID) override {}
    /// Requests its windows to close and never ends the process. Does nothing for this program
    /// itself.
    void requestQuit(ProcessID process) override;
    std::optional<Launch> launch(LaunchableApplication application) override;
    Reopening reopen(const FormerWindow& window) override;
    std::optional<QString> identifierOf(const Launch& launch, const std::stop_token& stop) override;
    /// By the origin of its process, or the startup id in its environment.
    std::optional<WindowID> windowOf(const Launch& launch,
                                     const QList<WindowItem>& windows) override;
    QImage icon(const WindowItem& window, int pixels) override;

private:
    /// With an activation token, without which the Shell keeps a new window in the background while
    /// the person types; or, without the extension, an id by which the window is recognised.
    LaunchSurroundings surroundings(const QString& desktopEntryID);

    ShellClient& m_client;
    const GnomeWindowServer& m_server;
    ApplicationIcons& m_icons;
    ApplicationLauncher& m_launcher;
    int m_launches = 0;
};

} // namespace kelpa::gnome
