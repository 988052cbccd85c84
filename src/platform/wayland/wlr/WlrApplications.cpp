#include "platform/wayland/wlr/WlrApplications.h"

#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/wayland/wlr/WlrWindowServer.h"

#include <QCoreApplication>

namespace kelpa::wayland {

ProcessID WlrApplications::currentProcess() const
{
    return static_cast<ProcessID>(QCoreApplication::applicationPid());
}

bool WlrApplications::isRunning(ProcessID process)
{
    return m_server.windowOf(process).has_value();
}

void WlrApplications::requestQuit(ProcessID process)
{
    if (const std::optional<NumberedToplevel> window = m_server.windowOf(process))
        m_server.request(window->window.id, ToplevelAction::close);
}

std::optional<Launch> WlrApplications::launch(LaunchableApplication application)
{
    // These compositors give a new window the focus by themselves.
    return m_launcher.launch(application, {});
}

Reopening WlrApplications::reopen(const FormerWindow& window)
{
    return m_launcher.reopen(window, {});
}

std::optional<QString> WlrApplications::identifierOf(const Launch& launch,
                                                     const std::stop_token& stop)
{
    return m_launcher.identifierOf(launch, stop);
}

std::optional<WindowID> WlrApplications::windowOf(const Launch&, const QList<WindowItem>&)
{
    return std::nullopt;
}

QImage WlrApplications::icon(const WindowItem& window, int pixels)
{
    return m_icons.icon(window, pixels);
}

} // namespace kelpa::wayland
