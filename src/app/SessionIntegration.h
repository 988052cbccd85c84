// What the session does for Kelpa when the person wants it to: starts it.
#pragma once

#include "platform/freedesktop/portals/DesktopAutostart.h"
#include "store/desktop/SessionStart.h"

#include <QString>

namespace kelpa {

class Scheduler;

/// Main thread. Background work that has begun refers to the parts, so it ends before they do.
class SessionIntegration
{
public:
    /// `boardPath` is that of the board's file. `scheduler` outlives this object.
    SessionIntegration(Scheduler& scheduler, const QString& boardPath);

    SessionStart& start() { return m_start; }

private:
    DesktopAutostart m_autostart;
    SessionStart m_start;
};

} // namespace kelpa
