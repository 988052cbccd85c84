// The timers and the subscription that keep windows and previews fresh, for as long as it exists.
#pragma once

#include "platform/Scheduler.h"
#include "platform/WindowServer.h"

#include <functional>
#include <memory>

namespace kelpa {

/// Main thread.
class DesktopObservation
{
public:
    /// Called from the event loop.
    struct Handlers
    {
        /// Time for a discovery pass, should the window server not have reported a change.
        std::function<void()> refresh;
        /// Time to capture the next window.
        std::function<void()> refreshPreviews;
        /// The window server reports a change.
        std::function<void()> windowsChanged;
    };

    /// `server` and `scheduler` outlive this.
    DesktopObservation(WindowServer& server, Scheduler& scheduler, Handlers handlers);

private:
    TaskHandle m_refreshTimer;
    TaskHandle m_previewTimer;
    std::unique_ptr<Subscription> m_windowWatch;
};

} // namespace kelpa
