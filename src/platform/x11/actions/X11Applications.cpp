#include "platform/x11/actions/X11Applications.h"

#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/freedesktop/applications/LaunchedProcess.h"
#include "platform/freedesktop/applications/ProcessStatus.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/x11/actions/EwmhPager.h"
#include "platform/x11/actions/StartupIdLookup.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>
#include <vector>

namespace kelpa::x11 {

X11Applications::X11Applications(QByteArray display, EwmhPager& pager, StartupIdLookup& startupIDs,
                                 ApplicationIcons& icons, ApplicationLauncher& launcher)
    : m_display(std::move(display)), m_pager(pager), m_startupIDs(startupIDs), m_icons(icons),
      m_launcher(launcher)
{}

ProcessID X11Applications::currentProcess() const
{
    return static_cast<ProcessID>(QCoreApplication::applicationPid());
}

bool X11Applications::isRunning(ProcessID process)
{
    return processStatus(process).value_or(ProcessStatus{}).isRunning;
}

void X11Applications::requestActivation(ProcessID process)
{
    m_pager.activateApplication(process);
}

void X11Applications::requestQuit(ProcessID process)
{
    if (process != currentProcess())
        m_pager.closeWindows(process);
}

std::optional<Launch> X11Applications::launch(LaunchableApplication application)
{
    return m_launcher.launch(application, {m_display, nextStartupID()});
}

std::optional<QString> X11Applications::identifierOf(const Launch& launch,
                                                     const std::stop_token& stop)
{
    return m_launcher.identifierOf(launch, stop);
}

std::optional<WindowID> X11Applications::windowOf(const Launch& launch,
                                                  const QList<WindowItem>& windows)
{
    std::vector<WindowID> numbers;
    for (const WindowItem& each : windows)
        numbers.push_back(each.id);
    if (const auto identified = m_startupIDs.firstWith(launch.startupID, numbers))
        return identified;
    const auto found = std::ranges::find_if(windows, [&launch](const WindowItem& each) {
        return cameOf(launch, each.processIdentifier);
    });
    return found == windows.end() ? std::nullopt : std::optional(found->id);
}

QImage X11Applications::icon(const WindowItem& window, int pixels)
{
    return m_icons.icon(window, pixels);
}

QByteArray X11Applications::nextStartupID()
{
    // By the timestamp at its end the window manager sees that the person asked for the new window
    // last, and gives it the focus.
    const QByteArray time = QByteArray::number(m_pager.serverTime().value_or(0));
    return "kelpa-" + QByteArray::number(currentProcess()) + '-' +
           QByteArray::number(++m_launches) + "_TIME" + time;
}

} // namespace kelpa::x11
