#include "platform/wayland/sway/SwayApplications.h"

#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/freedesktop/applications/LaunchedProcess.h"
#include "platform/freedesktop/applications/ProcessStatus.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/wayland/sway/SwayCommands.h"

#include <QCoreApplication>

#include <algorithm>

namespace kelpa::wayland {

ProcessID SwayApplications::currentProcess() const
{
    return static_cast<ProcessID>(QCoreApplication::applicationPid());
}

bool SwayApplications::isRunning(ProcessID process)
{
    return processStatus(process).value_or(ProcessStatus{}).isRunning;
}

void SwayApplications::requestQuit(ProcessID process)
{
    if (process != currentProcess())
        m_commands.closeAll(process);
}

std::optional<Launch> SwayApplications::launch(LaunchableApplication application)
{
    return m_launcher.launch(application, {.display = {}, .startupID = nextStartupID()});
}

Reopening SwayApplications::reopen(const FormerWindow& window)
{
    return m_launcher.reopen(window, {.display = {}, .startupID = nextStartupID()});
}

QByteArray SwayApplications::nextStartupID()
{
    return "kelpa-" + QByteArray::number(currentProcess()) + '-' + QByteArray::number(++m_launches);
}

std::optional<QString> SwayApplications::identifierOf(const Launch& launch,
                                                      const std::stop_token& stop)
{
    return m_launcher.identifierOf(launch, stop);
}

std::optional<WindowID> SwayApplications::windowOf(const Launch& launch,
                                                   const QList<WindowItem>& windows)
{
    const auto found = std::ranges::find_if(windows, [&launch](const WindowItem& each) {
        return cameOf(launch, each.processIdentifier);
    });
    return found == windows.end() ? std::nullopt : std::optional(found->id);
}

QImage SwayApplications::icon(const WindowItem& window, int pixels)
{
    return m_icons.icon(window, pixels);
}

} // namespace kelpa::wayland
