#include "platform/x11/actions/X11Applications.h"

#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/x11/actions/EwmhPager.h"
#include "platform/x11/actions/ServerTimeReader.h"
#include "platform/x11/actions/StartupIdLookup.h"

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
    : SessionApplications(icons, launcher), m_display(std::move(display)), m_pager(pager),
      m_serverTime(serverTime), m_startupIDs(startupIDs)
{}

void X11Applications::requestActivation(ProcessID process)
{
    m_pager.activateApplication(process);
}

void X11Applications::requestQuit(ProcessID process)
{
    if (process != currentProcess())
        m_pager.closeWindows(process);
}

std::optional<WindowID> X11Applications::windowOf(const Launch& launch,
                                                  const QList<WindowItem>& windows)
{
    std::vector<WindowID> numbers;
    for (const WindowItem& each : windows)
        numbers.push_back(each.id);
    if (const auto identified = m_startupIDs.firstWith(launch.startupID, numbers))
        return identified;
    return SessionApplications::windowOf(launch, windows);
}

LaunchSurroundings X11Applications::surroundings(const QString& /*desktopEntryID*/)
{
    QByteArray id = nextStartupID();
    // By the timestamp at its end the window manager sees that the person asked for the new window
    // last, and gives it the focus. Zero would say that the window is not to have the focus.
    if (const std::optional<std::uint32_t> time = m_serverTime.read(serverTimeLimit))
        id += "_TIME" + QByteArray::number(*time);
    return {.display = m_display, .startupID = id};
}

} // namespace kelpa::x11
