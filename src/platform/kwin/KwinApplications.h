// The applications of a KWin session: KWin activates and closes their windows, the installed
// desktop entries give their icons and what to launch.
#pragma once

#include "platform/Applications.h"

namespace kelpa {
class ApplicationIcons;
class ApplicationLauncher;
} // namespace kelpa

namespace kelpa::kwin {

class KwinWindowServer;

class KwinApplications final : public Applications
{
public:
    /// All outlive this object.
    KwinApplications(KwinWindowServer& server, ApplicationIcons& icons,
                     ApplicationLauncher& launcher)
        : m_server(server), m_icons(icons), m_launcher(launcher)
    {}

    ProcessID currentProcess() const override;
    /// Whether the process exists and is not a zombie.
    bool isRunning(ProcessID process) override;
    /// Nothing: to KWin an application is no more than its windows, each of which comes forward
    /// with the focus.
    void requestActivation(ProcessID) override {}
    /// Requests its windows to close and never ends the process. Does nothing for this program
    /// itself.
    void requestQuit(ProcessID process) override;
    std::optional<Launch> launch(LaunchableApplication application) override;
    Reopening reopen(const FormerWindow& window) override;
    std::optional<QString> identifierOf(const Launch& launch, const std::stop_token& stop) override;
    /// By the origin of its process, or the startup id in its environment.
    std::optional<WindowID> windowOf(const Launch& launch,
                                     const QList<WindowItem>& windows) override;
    QImage icon(const WindowItem& window, int pixels) override;

private:
    /// By it a window is recognised also where its program leaves the session that the launch
    /// began. It is no activation token: KWin gives a new window the focus by itself.
    QByteArray nextStartupID();

    KwinWindowServer& m_server;
    ApplicationIcons& m_icons;
    ApplicationLauncher& m_launcher;
    int m_launches = 0;
};

} // namespace kelpa::kwin
