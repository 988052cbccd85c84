// Runs discovery passes, which find the windows of the desktop, one at a time.
#pragma once

#include "model/WindowItem.h"
#include "platform/Applications.h"
#include "platform/Scheduler.h"
#include "platform/WindowServer.h"
#include "platform/tasks/ExclusiveTask.h"
#include "windows/WindowDiscovery.h"

#include <QList>

#include <cstdint>
#include <functional>
#include <optional>

namespace kelpa {

/// Main thread; the passes themselves run in the background. A pass that the window server delays
/// keeps its place until it returns, also when it was cancelled: the next one only follows it.
class DiscoveryPasses
{
public:
    /// Whether other applications' windows may be read. A pass without access finds none.
    enum class ReadAccess : std::uint8_t { denied, granted };
    /// Receives what the pass found. A cancelled pass does not report.
    using Finished = std::function<void(const WindowDiscoveryBatch& found)>;
    /// Called after a pass has ended during which another one was requested: with normal priority
    /// when `runNow` did.
    using RerunDue = std::function<void(WorkPriority priority)>;

    /// The arguments outlive this; a pass may use `server` for as long as `Scheduler` says.
    DiscoveryPasses(WindowServer& server, const Applications& applications, Scheduler& scheduler,
                    Finished finished, RerunDue rerunDue);

    /// Whether a pass runs, perhaps a cancelled one.
    bool isUnderWay() const { return m_pass.isTaken(); }
    /// Cancels the pass under way, starts another with access, and waits at most 12 ms for it: it
    /// reports before this returns or, if the window server is slower, when it ends. Where the
    /// cancelled pass still runs, the other one is requested as by `requestRerun`.
    void runNow();
    /// Starts a pass; called only while none is under way.
    void runInBackground(ReadAccess access, WorkPriority priority);
    void cancel();
    /// Waits at most `limit` for the pass under way, if there is one: it reports before this
    /// returns or, if the window server is slower, when it ends.
    void waitFor(Scheduler::Duration limit) { m_pass.waitFor(limit); }

    /// The desktop has changed: asks for another pass after the one under way, if there is one,
    /// since it may have missed the change.
    void requestRerun() { m_isRerunRequested = isUnderWay(); }

private:
    void finish(const std::optional<WindowDiscoveryBatch>& batch);

    WindowServer& m_server;
    const Applications& m_applications;
    Finished m_finished;
    RerunDue m_rerunDue;
    ExclusiveTask m_pass;
    bool m_isRerunRequested = false;
    WorkPriority m_rerunPriority = WorkPriority::utility;
};

} // namespace kelpa
