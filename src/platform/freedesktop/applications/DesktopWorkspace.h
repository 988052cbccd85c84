// Opening things with the applications that the desktop has for them.
#pragma once

#include "platform/Scheduler.h"
#include "platform/TaskGroup.h"
#include "platform/Workspace.h"

namespace kelpa {

class DesktopWorkspace : public Workspace
{
public:
    /// `scheduler` outlives it.
    explicit DesktopWorkspace(Scheduler& scheduler) : m_tasks(scheduler) {}

    /// There are none: what a display offers is there for every program.
    bool hasPermissionSettings() const override { return false; }
    /// Through xdg-open, which knows each desktop's own way. What no installed application opens is
    /// not opened, and nothing is said of it: xdg-open would try one browser after the other.
    void requestOpen(const QUrl& url) override;

private:
    TaskGroup m_tasks;
};

} // namespace kelpa
