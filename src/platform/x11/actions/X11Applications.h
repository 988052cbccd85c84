// The applications of an X display: the window manager activates and closes their windows.
#pragma once

#include "platform/freedesktop/session/SessionApplications.h"

#include <QByteArray>

namespace kelpa::x11 {

class EwmhPager;
class ServerTimeReader;
class StartupIdLookup;

class X11Applications : public SessionApplications
{
public:
    /// `display` is the DISPLAY variable of launched programs; empty leaves that variable as it is.
    /// The others outlive this object.
    X11Applications(QByteArray display, EwmhPager& pager, ServerTimeReader& serverTime,
                    StartupIdLookup& startupIDs, ApplicationIcons& icons,
                    ApplicationLauncher& launcher);

    /// Activates its topmost window, unless one of its windows has the focus already.
    void requestActivation(ProcessID process) override;
    /// Requests its windows to close and never ends the process; windows that cannot be asked stay.
    /// Does nothing for this program itself.
    void requestQuit(ProcessID process) override;
    /// By the startup id that the window carries, else by the origin of its process.
    std::optional<WindowID> windowOf(const Launch& launch,
                                     const QList<WindowItem>& windows) override;

private:
    /// Waits for the server's time, but not for a server that hangs.
    LaunchSurroundings surroundings(const QString& desktopEntryID) override;

    const QByteArray m_display;
    EwmhPager& m_pager;
    ServerTimeReader& m_serverTime;
    StartupIdLookup& m_startupIDs;
};

} // namespace kelpa::x11
