// Opens URLs and folders with the applications that the desktop has for them.
#pragma once

#include "platform/Scheduler.h"
#include "platform/Workspace.h"
#include "platform/tasks/TaskGroup.h"

namespace kelpa {

class DesktopWorkspace : public Workspace
{
public:
    /// `scheduler` outlives it.
    explicit DesktopWorkspace(Scheduler& scheduler) : m_scheduler(scheduler), m_tasks(scheduler) {}

    /// By the installed applications, at the time of the call.
    [[nodiscard]] TaskHandle findOpener(const QUrl& url,
                                        std::function<void(bool isThere)> found) override;
    /// Runs xdg-open, which knows each desktop's own way. A local file stands for a folder. A URL
    /// that no installed application handles is silently not opened: xdg-open would try one browser
    /// after the other.
    void requestOpen(const QUrl& url) override;

private:
    Scheduler& m_scheduler;
    TaskGroup m_tasks;
};

} // namespace kelpa
