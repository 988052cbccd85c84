#include "platform/freedesktop/session/SessionApplications.h"

#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/freedesktop/applications/LaunchedProcess.h"
#include "platform/freedesktop/applications/ProcessStatus.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"

#include <QCoreApplication>

#include <algorithm>

namespace kelpa {

ProcessID SessionApplications::currentProcess() const
{
    return static_cast<ProcessID>(QCoreApplication::applicationPid());
}

bool SessionApplications::isRunning(ProcessID process)
{
    return processStatus(process).value_or(ProcessStatus{}).isRunning;
}

std::optional<Launch> SessionApplications::launch(LaunchableApplication application)
{
    return m_launcher.launch(application, surroundings({}));
}

Reopening SessionApplications::reopen(const FormerWindow& window)
{
    return m_launcher.reopen(window, surroundings(window.application));
}

LaunchSurroundings SessionApplications::surroundings(const QString& /*desktopEntryID*/)
{
    return {.display = {}, .startupID = nextStartupID()};
}

QByteArray SessionApplications::nextStartupID()
{
    return "kelpa-" + QByteArray::number(currentProcess()) + '-' + QByteArray::number(++m_launches);
}

std::optional<QString> SessionApplications::identifierOf(const Launch& launch,
                                                         const std::stop_token& stop)
{
    return m_launcher.identifierOf(launch, stop);
}

std::optional<WindowID> SessionApplications::windowOf(const Launch& launch,
                                                      const QList<WindowItem>& windows)
{
    const auto found = std::ranges::find_if(windows, [&launch](const WindowItem& each) {
        return cameOf(launch, each.processIdentifier);
    });
    return found == windows.end() ? std::nullopt : std::optional(found->id);
}

QImage SessionApplications::icon(const WindowItem& window, int pixels)
{
    return m_icons.icon(window, pixels);
}

} // namespace kelpa
