// The abilities of a desktop whose parts find out as they run what it lacks.
#pragma once

#include "platform/AbilityReport.h"
#include "platform/AbilityWatches.h"

#include <utility>

namespace kelpa {

/// Main thread.
class ChangingAbilities final : public AbilityReport
{
public:
    explicit ChangingAbilities(DesktopAbilities abilities) : m_abilities(std::move(abilities)) {}

    void set(const DesktopAbilities& abilities)
    {
        if (std::exchange(m_abilities, abilities) != abilities)
            m_watches.announce();
    }

    DesktopAbilities abilities() const override { return m_abilities; }
    [[nodiscard]] std::unique_ptr<Subscription>
    watchAbilities(std::function<void()> changed) override
    {
        return m_watches.add(std::move(changed));
    }

private:
    DesktopAbilities m_abilities;
    AbilityWatches m_watches;
};

} // namespace kelpa
