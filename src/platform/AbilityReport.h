// What Kelpa can do on the desktop it runs on, as the desktop's parts find out.
#pragma once

#include "platform/DesktopAbilities.h"
#include "platform/Subscription.h"

#include <functional>
#include <memory>
#include <utility>

namespace kelpa {

class AbilityReport
{
public:
    virtual ~AbilityReport() = default;

    /// As last known; an ability counts as given until the desktop is known to lack it. Main
    /// thread; returns at once.
    virtual DesktopAbilities abilities() const = 0;

    /// Calls `changed` on the main thread whenever `abilities` gives something else; there may be
    /// several subscriptions. Null when that never happens. Main thread; returns at once.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchAbilities(std::function<void()> changed) = 0;

    /// Whether `requestAbilities` may give what the desktop lacks; `watchAbilities` reports when
    /// that changes. Main thread; returns at once.
    virtual bool canRequestAbilities() const { return false; }
    /// Requests from the desktop what it lacks, because the person wants it. Main thread; returns
    /// at once.
    virtual void requestAbilities() {}
};

/// Abilities that never change.
class FixedAbilities final : public AbilityReport
{
public:
    explicit FixedAbilities(DesktopAbilities abilities = {}) : m_abilities(std::move(abilities)) {}

    DesktopAbilities abilities() const override { return m_abilities; }
    std::unique_ptr<Subscription> watchAbilities(std::function<void()>) override { return nullptr; }

private:
    const DesktopAbilities m_abilities;
};

} // namespace kelpa
