// Ends a Kelpa that was started for a call by the session bus, once calls have ceased.
#pragma once

#include "platform/Scheduler.h"

#include <chrono>
#include <functional>

namespace kelpa {

/// Main thread.
class IdleEnding
{
public:
    /// A search that goes on, or a script, calls again within it.
    static constexpr std::chrono::minutes idleLimit{3};

    /// Calls `end` when there was no call for at least `idleLimit` and `mayEnd` allows it, and asks
    /// again later where it does not. `scheduler` outlives this.
    IdleEnding(Scheduler& scheduler, std::function<bool()> mayEnd, std::function<void()> end);

    void noteCall() { m_hasBeenCalled = true; }

private:
    void wait();

    Scheduler& m_scheduler;
    const std::function<bool()> m_mayEnd;
    const std::function<void()> m_end;
    bool m_hasBeenCalled = false;
    TaskHandle m_waiting;
};

} // namespace kelpa
