#include "platform/wayland/sway/SwayApplications.h"

#include "platform/wayland/sway/SwayCommands.h"

namespace kelpa::wayland {

void SwayApplications::requestQuit(ProcessID process)
{
    if (process != currentProcess())
        m_commands.closeAll(process);
}

} // namespace kelpa::wayland
