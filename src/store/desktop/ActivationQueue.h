// Activates windows of other applications, one request after the other.
#pragma once

#include "model/WindowItem.h"
#include "platform/Accessibility.h"
#include "platform/Applications.h"
#include "platform/tasks/TaskQueue.h"
#include "windows/PinnedWindows.h"
#include "windows/WorkContext.h"

#include <QList>

#include <functional>

namespace kelpa {

/// Main thread; the activations themselves run in the background.
class ActivationQueue
{
public:
    /// The arguments outlive this; an activation may use `applications` and `accessibility` for as
    /// long as `Scheduler` says.
    ActivationQueue(Applications& applications, Accessibility& accessibility, Scheduler& scheduler);

    /// Activates all of them, the last one topmost, after those that were enqueued before.
    void enqueue(const QList<WindowItem>& windows);
    /// Carries the requests out likewise, and calls `sent` when all have been sent.
    void enqueue(const WindowArrangement& arrangement, std::function<void()> sent = {});
    /// Sends the windows to virtual desktops likewise.
    void enqueue(const QList<DesktopMove>& moves);
    /// All requests have been sent.
    bool isIdle() const { return m_queue.isIdle(); }

private:
    Applications& m_applications;
    Accessibility& m_accessibility;
    TaskQueue m_queue;
};

} // namespace kelpa
