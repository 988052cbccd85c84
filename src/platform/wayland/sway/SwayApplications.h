// The applications of a sway session: sway activates and closes their windows.
#pragma once

#include "platform/freedesktop/session/SessionApplications.h"

namespace kelpa::wayland {

class SwayCommands;

class SwayApplications final : public SessionApplications
{
public:
    /// All outlive this object.
    SwayApplications(SwayCommands& commands, ApplicationIcons& icons, ApplicationLauncher& launcher)
        : SessionApplications(icons, launcher), m_commands(commands)
    {}

    /// Requests its windows to close and never ends the process. Does nothing for this program
    /// itself.
    void requestQuit(ProcessID process) override;

private:
    SwayCommands& m_commands;
};

} // namespace kelpa::wayland
