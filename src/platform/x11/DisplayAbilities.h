// Reports what Kelpa can do on an X display, as far as that stays the same while the display runs.
#pragma once

#include "platform/AbilityReport.h"
#include "platform/AbilityWatches.h"
#include "platform/Scheduler.h"
#include "platform/x11/DisplayFacts.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <functional>
#include <memory>

namespace kelpa::x11 {

/// Without a window manager or Composite, which may come and go, `DesktopTrust` says so, and not
/// this. Main thread.
class DisplayAbilities final : public AbilityReport
{
public:
    /// `scheduler` outlives this object.
    DisplayAbilities(std::shared_ptr<DisplayConnector> connector, Scheduler& scheduler);

    DesktopAbilities abilities() const override { return m_abilities; }
    /// Asks the display, once for each subscription, in the background.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchAbilities(std::function<void()> changed) override;

private:
    class Watch;

    const std::shared_ptr<DisplayConnector> m_connector;
    Scheduler& m_scheduler;
    DesktopAbilities m_abilities;
    AbilityWatches m_watches;
};

/// What of these abilities cannot change while the display runs.
DesktopAbilities lastingAbilities(const DisplayFacts& facts);

} // namespace kelpa::x11
