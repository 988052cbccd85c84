#include "platform/kwin/KwinApplications.h"

#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/freedesktop/applications/LaunchedProcess.h"
#include "platform/freedesktop/applications/ProcessStatus.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/kwin/KwinWindowServer.h"

#include <QCoreApplication>

#include <algorithm>

namespace kelpa::kwin {

ProcessID KwinApplications::currentProcess() const
{
    return static_cast<ProcessID>(QCoreApplication::applicationPid());
}

bool KwinApplications::isRunning(ProcessID process)
{
    return processStatus(process).value_or(ProcessStatus{}).isRunning;
}

void KwinApplications::requestQuit(ProcessID process)
{
    if (process != currentProcess())
        m_server.order({.action = KwinAction::close, .process = process});
}

std::optional<Launch> KwinApplications::launch(LaunchableApplication application)
{
    return m_launcher.launch(application, {.display = {}, .startupID = nextStartupID()});
}

Reopening KwinApplications::reopen(const FormerWindow& window)
{
    return m_launcher.reopen(window, {.display = {}, .startupID = nextStartupID()});
}

QByteArray KwinApplications::nextStartupID()
{
    return "kelpa-" + QByteArray::number(currentProcess()) + '-' + QByteArray::number(++m_launches);
}

std::optional<QString> KwinApplications::identifierOf(const Launch& launch,
                                                      const std::stop_token& stop)
{
    return m_launcher.identifierOf(launch, stop);
}

std::optional<WindowID> KwinApplications::windowOf(const Launch& launch,
                                                   const QList<WindowItem>& windows)
{
    const auto found = std::ranges::find_if(windows, [&launch](const WindowItem& each) {
        return cameOf(launch, each.processIdentifier);
    });
    return found == windows.end() ? std::nullopt : std::optional(found->id);
}

QImage KwinApplications::icon(const WindowItem& window, int pixels)
{
    return m_icons.icon(window, pixels);
}

} // namespace kelpa::kwin
