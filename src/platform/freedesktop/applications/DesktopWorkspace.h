// Opens URLs with the applications that the desktop has for them.
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

    /// There are none: a display offers the same to every program.
    bool hasPermissionSettings() const override { return false; }
    /// Runs xdg-open, which knows each desktop's own way. A URL that no installed application
    /// handles is silently not opened: xdg-open would try one browser after the other.
    void requestOpen(const QUrl& url) override;

private:
    TaskGroup m_tasks;
};

} // namespace kelpa
