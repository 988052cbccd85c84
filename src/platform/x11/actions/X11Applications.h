// The applications of an X display: the window manager activates and closes their windows, the
// installed desktop entries give their icons and what to launch.
#pragma once

#include "platform/Applications.h"

#include <QByteArray>

#include <atomic>
#include <cstdint>

namespace kelpa {
class ApplicationIcons;
class ApplicationLauncher;
} // namespace kelpa

namespace kelpa::x11 {

class EwmhPager;
class ServerTimeReader;
class StartupIdLookup;

class X11Applications : public Applications
{
public:
    /// `display` is the DISPLAY variable of launched programs; empty leaves that variable as it is.
    /// The others outlive this object.
    X11Applications(QByteArray display, EwmhPager& pager, ServerTimeReader& serverTime,
                    StartupIdLookup& startupIDs, ApplicationIcons& icons,
                    ApplicationLauncher& launcher);

    ProcessID currentProcess() const override;
    /// Whether the process exists and is not a zombie.
    bool isRunning(ProcessID process) override;
    /// Activates its topmost window, unless one of its windows has the focus already.
    void requestActivation(ProcessID process) override;
    /// Requests its windows to close and never ends the process; windows that cannot be asked stay.
    /// Does nothing for this program itself.
    void requestQuit(ProcessID process) override;
    /// Waits for the server's time, but not for a server that hangs.
    std::optional<Launch> launch(LaunchableApplication application) override;
    Reopening reopen(const FormerWindow& window) override;
    std::optional<QString> identifierOf(const Launch& launch, const std::stop_token& stop) override;
    /// By the startup id that the window carries, else by the origin of its
    /// process.
    std::optional<WindowID> windowOf(const Launch& launch,
                                     const QList<WindowItem>& windows) override;
    QImage icon(const WindowItem& window, int pixels) override;

private:
    QByteArray nextStartupID();

    const QByteArray m_display;
    EwmhPager& m_pager;
    ServerTimeReader& m_serverTime;
    StartupIdLookup& m_startupIDs;
    ApplicationIcons& m_icons;
    ApplicationLauncher& m_launcher;
    std::atomic<std::uint32_t> m_launches = 0;
};

} // namespace kelpa::x11
