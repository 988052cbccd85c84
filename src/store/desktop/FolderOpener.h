// Shows the folder of a file with the desktop's file manager.
#pragma once

#include "platform/Scheduler.h"

#include <QUrl>

#include <functional>

namespace kelpa {

class Workspace;

/// Main thread.
class FolderOpener
{
public:
    /// `workspace` outlives this. `found` is called when `canOpen` has changed.
    FolderOpener(Workspace& workspace, std::function<void()> found);

    /// Looks for a program that shows folders.
    void search(const QString& file);
    /// Whether the last search has found one.
    bool canOpen() const { return m_canOpen; }
    /// Shows the folder that `file` is in.
    void open(const QString& file);

private:
    Workspace& m_workspace;
    const std::function<void()> m_found;
    bool m_canOpen = false;
    TaskHandle m_search;
};

} // namespace kelpa
