// What the session does for Kelpa when the person wants it to: starts it, and keeps keys for it.
#pragma once

#include "platform/freedesktop/portals/DesktopAutostart.h"
#include "platform/freedesktop/portals/ShortcutsPortal.h"
#include "store/desktop/DesktopShortcuts.h"
#include "store/desktop/SessionStart.h"

#include <QSessionManager>
#include <QString>

namespace kelpa {

class AbilityReport;
class Scheduler;
class WindowStore;

/// The next session restarts the program, from its present path, with this board; without a window
/// when it is hidden.
void setRestartCommand(QSessionManager& session, const QString& boardPath, bool isHidden);

/// Main thread. Background work that has begun refers to the parts, so it ends before they do.
class SessionIntegration
{
public:
    /// `boardPath` is that of the board's file. All references outlive this object.
    SessionIntegration(WindowStore& store, AbilityReport& abilities, Scheduler& scheduler,
                       const QString& boardPath);

    SessionStart& start() { return m_start; }
    DesktopShortcuts& shortcuts() { return m_shortcuts; }

private:
    DesktopAutostart m_autostart;
    SessionStart m_start;
    ShortcutsPortal m_portal;
    DesktopShortcuts m_shortcuts;
};

} // namespace kelpa
