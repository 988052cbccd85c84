// The applications of a KWin session: KWin activates and closes their windows.
#pragma once

#include "platform/freedesktop/session/SessionApplications.h"

namespace kelpa::kwin {

class KwinWindowServer;

class KwinApplications final : public SessionApplications
{
public:
    /// All outlive this object.
    KwinApplications(KwinWindowServer& server, ApplicationIcons& icons,
                     ApplicationLauncher& launcher)
        : SessionApplications(icons, launcher), m_server(server)
    {}

    /// Requests its windows to close and never ends the process. Does nothing for this program
    /// itself.
    void requestQuit(ProcessID process) override;

private:
    KwinWindowServer& m_server;
};

} // namespace kelpa::kwin
