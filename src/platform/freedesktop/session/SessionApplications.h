// The applications of a session, whatever shows their windows: the processes tell which of them
// run, and the installed desktop entries give their icons and what to launch. How they come forward
// and quit is the window system's.
#pragma once

#include "platform/Applications.h"

#include <QByteArray>
#include <QString>

#include <atomic>
#include <cstdint>

namespace kelpa {

class ApplicationIcons;
class ApplicationLauncher;
struct LaunchSurroundings;

class SessionApplications : public Applications
{
public:
    /// Both outlive this object.
    SessionApplications(ApplicationIcons& icons, ApplicationLauncher& launcher)
        : m_icons(icons), m_launcher(launcher)
    {}

    ProcessID currentProcess() const override;
    /// Whether the process exists and is not a zombie.
    bool isRunning(ProcessID process) override;
    /// Nothing: to most compositors an application is no more than its windows, each of which comes
    /// forward with the focus.
    void requestActivation(ProcessID) override {}
    std::optional<Launch> launch(LaunchableApplication application) override;
    Reopening reopen(const FormerWindow& window) override;
    std::optional<QString> identifierOf(const Launch& launch, const std::stop_token& stop) override;
    /// By the origin of its process, or the startup id in its environment.
    std::optional<WindowID> windowOf(const Launch& launch,
                                     const QList<WindowItem>& windows) override;
    QImage icon(const WindowItem& window, int pixels) override;

protected:
    /// Of a program that is about to be launched; `desktopEntryID` is empty where it is not known.
    /// By default a new startup id, which is no activation token: most compositors give a new
    /// window the focus by themselves.
    virtual LaunchSurroundings surroundings(const QString& desktopEntryID);

    /// Another one each time. By it a window is recognised also where its program leaves the
    /// session that the launch began.
    QByteArray nextStartupID();

private:
    ApplicationIcons& m_icons;
    ApplicationLauncher& m_launcher;
    std::atomic<std::uint32_t> m_launches = 0;
};

} // namespace kelpa
