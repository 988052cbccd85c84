#include "platform/gnome/GnomeApplications.h"

#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/freedesktop/applications/LaunchedProcess.h"
#include "platform/freedesktop/applications/ProcessStatus.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/gnome/GnomeWindowServer.h"
#include "platform/gnome/ShellClient.h"

#include <QCoreApplication>

#include <algorithm>

namespace kelpa::gnome {

ProcessID GnomeApplications::currentProcess() const
{
    return static_cast<ProcessID>(QCoreApplication::applicationPid());
}

bool GnomeApplications::isRunning(ProcessID process)
{
    return processStatus(process).value_or(ProcessStatus{}).isRunning;
}

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

std::optional<Launch> GnomeApplications::launch(LaunchableApplication application)
{
    return m_launcher.launch(application, surroundings({}));
}

Reopening GnomeApplications::reopen(const FormerWindow& window)
{
    return m_launcher.reopen(window, surroundings(window.application));
}

LaunchSurroundings GnomeApplications::surroundings(const QString& desktopEntryID)
{
    const QByteArray token = m_client.token(desktopEntryID);
    if (!token.isEmpty())
        return {.display = {}, .startupID = token, .isActivationToken = true};
    return {.display = {},
            .startupID = "kelpa-" + QByteArray::number(currentProcess()) + '-' +
                         QByteArray::number(++m_launches)};
}

std::optional<QString> GnomeApplications::identifierOf(const Launch& launch,
                                                       const std::stop_token& stop)
{
    return m_launcher.identifierOf(launch, stop);
}

std::optional<WindowID> GnomeApplications::windowOf(const Launch& launch,
                                                    const QList<WindowItem>& windows)
{
    const auto found = std::ranges::find_if(windows, [&launch](const WindowItem& each) {
        return cameOf(launch, each.processIdentifier);
    });
    return found == windows.end() ? std::nullopt : std::optional(found->id);
}

QImage GnomeApplications::icon(const WindowItem& window, int pixels)
{
    return m_icons.icon(window, pixels);
}

} // namespace kelpa::gnome
