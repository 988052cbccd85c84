// The applications of an X display: their windows through the window manager, their icons and new
// ones through the installed entries.
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

class StartupIdLookup;
class WindowActor;

class X11Applications : public Applications
{
public:
    /// `display` as in the DISPLAY variable, for what is launched; empty leaves that variable as it
    /// is. The others outlive this object.
    X11Applications(QByteArray display, WindowActor& actor, StartupIdLookup& startupMarks,
                    ApplicationIcons& icons, ApplicationLauncher& launcher);

    ProcessID currentProcess() const override;
    /// Whether there is such a process, other than one that has ended and was not noticed yet.
    bool isRunning(ProcessID process) override;
    /// By its topmost window; nothing when one of its windows has the keyboard already.
    void requestActivation(ProcessID process) override;
    /// Closes windows, never the process; windows that cannot be asked stay. Not this program's
    /// own.
    void requestQuit(ProcessID process) override;
    std::optional<Launch> launch(LaunchableApplication application) override;
    std::optional<QString> identifierOf(const Launch& launch, const std::stop_token& stop) override;
    /// By the startup id that the window carries, else by where its process comes from.
    std::optional<WindowID> windowOf(const Launch& launch,
                                     const QList<WindowItem>& windows) override;
    QImage icon(const WindowItem& window, int pixels) override;

private:
    QByteArray nextStartupID();

    const QByteArray m_display;
    WindowActor& m_actor;
    StartupIdLookup& m_startupMarks;
    ApplicationIcons& m_icons;
    ApplicationLauncher& m_launcher;
    std::atomic<std::uint32_t> m_launches = 0;
};

} // namespace kelpa::x11
