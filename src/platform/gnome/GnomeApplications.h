// The applications of a GNOME session: the Shell closes their windows and lets launched ones come
// forward.
#pragma once

#include "platform/freedesktop/session/SessionApplications.h"

namespace kelpa::gnome {

class GnomeWindowServer;
class ShellClient;

class GnomeApplications final : public SessionApplications
{
public:
    /// All outlive this object.
    GnomeApplications(ShellClient& client, const GnomeWindowServer& server, ApplicationIcons& icons,
                      ApplicationLauncher& launcher)
        : SessionApplications(icons, launcher), m_client(client), m_server(server)
    {}

    /// Requests its windows to close and never ends the process. Does nothing for this program
    /// itself.
    void requestQuit(ProcessID process) override;

private:
    /// With an activation token, without which the Shell keeps a new window in the background while
    /// the person types; or, without the extension, an id by which the window is recognised.
    LaunchSurroundings surroundings(const QString& desktopEntryID) override;

    ShellClient& m_client;
    const GnomeWindowServer& m_server;
};

} // namespace kelpa::gnome
