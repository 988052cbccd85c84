// Runs discovery passes, which find the windows of the desktop, one at a time.
#pragma once

#include "model/WindowItem.h"
#include "platform/Applications.h"
#include "platform/Scheduler.h"
#include "platform/WindowServer.h"

#include <QList>

#include <cstdint>
#include <functional>

namespace kelpa {

/// Main thread; the passes themselves run in the background.
class DiscoveryPasses
{
public:
    /// Whether other applications' windows may be read. A pass without access finds none.
    enum class ReadAccess : std::uint8_t { denied, granted };
    /// Receives the windows that the pass found. A cancelled pass does not report.
    using Finished = std::function<void(const QList<WindowItem>& windows)>;

    /// The arguments outlive this; a pass may use `server` for as long as `Scheduler` says.
    DiscoveryPasses(WindowServer& server, const Applications& applications, Scheduler& scheduler,
                    Finished finished);

    bool isUnderWay() const { return m_pass != nullptr; }
    /// Cancels the pass under way, starts another with access, and waits at most 12 ms for it: it
    /// reports before this returns or, if the window server is slower, when it ends.
    void runNow();
    /// Starts a pass; called only while none is under way.
    void runInBackground(ReadAccess access);
    void cancel();

    /// The desktop has changed: asks for another pass after the one under way, if there is one,
    /// since it may have missed the change.
    void requestRerun() { m_isRerunRequested = isUnderWay(); }
    /// Whether another pass was asked for, and resets that.
    bool takeRerunRequest();

private:
    void finish(const QList<WindowItem>& windows);

    WindowServer& m_server;
    const Applications& m_applications;
    Scheduler& m_scheduler;
    Finished m_finished;
    TaskHandle m_pass;
    bool m_isRerunRequested = false;
};

} // namespace kelpa
