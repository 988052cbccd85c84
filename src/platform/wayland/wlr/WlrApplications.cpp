#include "platform/wayland/wlr/WlrApplications.h"

#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/wayland/wlr/WlrWindowServer.h"

namespace kelpa::wayland {

bool WlrApplications::isRunning(ProcessID process)
{
    return m_server.windowOf(process).has_value();
}

void WlrApplications::requestQuit(ProcessID process)
{
    if (const std::optional<NumberedToplevel> window = m_server.windowOf(process))
        m_server.request(window->window.id, ToplevelAction::close);
}

LaunchSurroundings WlrApplications::surroundings(const QString& /*desktopEntryID*/)
{
    // These compositors give a new window the focus by themselves.
    return {};
}

std::optional<WindowID> WlrApplications::windowOf(const Launch&, const QList<WindowItem>&)
{
    return std::nullopt;
}

} // namespace kelpa::wayland
