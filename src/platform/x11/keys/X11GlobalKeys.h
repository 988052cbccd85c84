// The keys of an X display, received whichever window has the focus.
#pragma once

#include "platform/GlobalKeys.h"
#include "platform/Scheduler.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <memory>

namespace kelpa::x11 {

/// Keys come from raw events of XInput 2, modifiers from the XKB extension. Neither takes an event
/// from another client, and both arrive while another client has grabbed the keyboard. Where one of
/// the two extensions is missing, or the keyboard has no Super key, the keys are not available.
class X11GlobalKeys : public GlobalKeys
{
public:
    /// `scheduler` outlives this object and its subscriptions.
    X11GlobalKeys(std::shared_ptr<DisplayConnector> connector, Scheduler& scheduler);

    [[nodiscard]] std::unique_ptr<Subscription> watchKeys(GlobalKeyHandlers handlers) override;

private:
    const std::shared_ptr<DisplayConnector> m_connector;
    Scheduler& m_scheduler;
};

} // namespace kelpa::x11
