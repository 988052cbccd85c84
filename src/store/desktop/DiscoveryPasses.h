// Looks at the desktop for its windows, one look at a time.
#pragma once

#include "model/WindowItem.h"
#include "platform/Applications.h"
#include "platform/Scheduler.h"
#include "platform/WindowServer.h"

#include <QList>

#include <cstdint>
#include <functional>

namespace kelpa {

/// Main thread; the looks themselves run in the background.
class DiscoveryPasses
{
public:
    enum class MayRead : std::uint8_t { no, yes };
    /// The look that was under way has come to its end and found `windows`.
    using Finished = std::function<void(const QList<WindowItem>& windows)>;

    /// What it is given outlives it; a look may use `server` for as long as `Scheduler` says.
    DiscoveryPasses(WindowServer& server, const Applications& applications, Scheduler& scheduler,
                    Finished finished);

    bool isUnderWay() const { return m_look != nullptr; }
    /// In place of the look under way. What the window server can answer in time is told of on
    /// return; if it takes longer, as soon as it answers.
    void lookNow();
    /// Only while no look is under way. One that may not read the windows finds none.
    void lookInBackground(MayRead mayRead);
    /// No result comes any more of the look under way.
    void cancel();

    /// The desktop has changed, which the look under way may have missed.
    void noteChange() { m_hasMissedChange = isUnderWay(); }
    /// Whether the last look may have missed a change; asked again, it has not.
    bool takeMissedChange();

private:
    void finish(const QList<WindowItem>& windows);

    WindowServer& m_server;
    const Applications& m_applications;
    Scheduler& m_scheduler;
    Finished m_finished;
    TaskHandle m_look;
    bool m_hasMissedChange = false;
};

} // namespace kelpa
