#include "platform/x11/actions/X11Applications.h"

#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/freedesktop/applications/LaunchedProcess.h"
#include "platform/freedesktop/applications/ProcessStatus.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/x11/actions/EwmhPager.h"
#include "platform/x11/actions/ServerTimeReader.h"
#include "platform/x11/actions/StartupIdLookup.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace kelpa::x11 {

namespace {

/// How long a launch waits for the server's time: a server that answers at all does so within a
/// few milliseconds, and a person who waits longer than this for the program notices.
constexpr std::chrono::milliseconds serverTimeLimit{100};

} // namespace

X11Applications::X11Applications(QByteArray display, EwmhPager& pager, ServerTimeReader& serverTime,
                                 StartupIdLookup& startupIDs, ApplicationIcons& icons,
                                 ApplicationLauncher& launcher)
    : m_display(std::move(display)), m_pager(pager), m_serverTime(serverTime),
      m_startupIDs(startupIDs), m_icons(icons), m_launcher(launcher)
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

Reopening X11Applications::reopen(const FormerWindow& window)
{
    return m_launcher.reopen(window, {m_display, nextStartupID()});
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
    QByteArray id =
        "kelpa-" + QByteArray::number(currentProcess()) + '-' + QByteArray::number(++m_launches);
    // By the timestamp at its end the window manager sees that the person asked for the new window
    // last, and gives it the focus. Zero would say that the window is not to have the focus.
    if (const std::optional<std::uint32_t> time = m_serverTime.read(serverTimeLimit))
        id += "_TIME" + QByteArray::number(*time);
    return id;
}

} // namespace kelpa::x11
