#include "platform/gnome/GnomeApplications.h"

#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/gnome/GnomeWindowServer.h"
#include "platform/gnome/ShellClient.h"

namespace kelpa::gnome {

void GnomeApplications::requestQuit(ProcessID process)
{
    const auto windows = m_server.windows();
    if (process == currentProcess() || !windows)
        return;
    for (const NumberedShellWindow& each : *windows) {
        if (each.window.process == process)
            m_client.close(each.window.id);
    }
}

LaunchSurroundings GnomeApplications::surroundings(const QString& desktopEntryID)
{
    const QByteArray token = m_client.token(desktopEntryID);
    if (!token.isEmpty())
        return {.display = {}, .startupID = token, .isActivationToken = true};
    return SessionApplications::surroundings(desktopEntryID);
}

} // namespace kelpa::gnome
