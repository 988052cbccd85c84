// The report of taps that another process has recognised, to who listens to keys.
#pragma once

#include "platform/GlobalKeys.h"
#include "platform/Scheduler.h"

#include <chrono>

namespace kelpa {

/// Reports one tap of Super at that time. Main thread.
inline void reportTap(const GlobalKeyHandlers& handlers, Scheduler::Time time)
{
    const std::chrono::duration<double> timestamp = time.time_since_epoch();
    for (const bool isDown : {true, false}) {
        handlers.modifiersChanged({.commandIsDown = isDown,
                                   .hasOtherModifiers = false,
                                   .timestamp = timestamp.count(),
                                   .inputTime = 0});
    }
}

/// Reports two taps of Super at the scheduler's present moment, since nobody tells when they were.
/// Main thread.
inline void reportDoubleTap(const GlobalKeyHandlers& handlers, const Scheduler& scheduler)
{
    // Whatever was tapped before has no part in it.
    handlers.keyPressed();
    const Scheduler::Time now = scheduler.now();
    reportTap(handlers, now);
    reportTap(handlers, now);
}

} // namespace kelpa
