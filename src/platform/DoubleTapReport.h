// The report of a double tap that another process has recognised, to who listens to keys.
#pragma once

#include "platform/GlobalKeys.h"
#include "platform/Scheduler.h"

#include <chrono>

namespace kelpa {

/// Reports two taps of Super at the scheduler's present moment, since nobody tells when they were.
/// Main thread.
inline void reportDoubleTap(const GlobalKeyHandlers& handlers, const Scheduler& scheduler)
{
    const std::chrono::duration<double> now = scheduler.now().time_since_epoch();
    // Whatever was tapped before has no part in it.
    handlers.keyPressed();
    for (const bool isDown : {true, false, true, false}) {
        handlers.modifiersChanged({.commandIsDown = isDown,
                                   .hasOtherModifiers = false,
                                   .timestamp = now.count(),
                                   .inputTime = 0});
    }
}

} // namespace kelpa
