// The abilities of a desktop whose parts find out as they run what it lacks.
#pragma once

#include "platform/AbilityReport.h"

#include <utility>

namespace kelpa {

/// Main thread.
class ChangingAbilities final : public AbilityReport
{
public:
    explicit ChangingAbilities(DesktopAbilities abilities) : m_abilities(std::move(abilities)) {}

    void set(const DesktopAbilities& abilities)
    {
        if (std::exchange(m_abilities, abilities) != abilities && m_changed)
            m_changed();
    }

    DesktopAbilities abilities() const override { return m_abilities; }
    /// One subscription at a time.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchAbilities(std::function<void()> changed) override
    {
        m_changed = std::move(changed);
        return std::make_unique<Watch>(*this);
    }

private:
    class Watch final : public Subscription
    {
    public:
        explicit Watch(ChangingAbilities& report) : m_report(report) {}
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;
        ~Watch() override { m_report.m_changed = {}; }

    private:
        ChangingAbilities& m_report;
    };

    DesktopAbilities m_abilities;
    std::function<void()> m_changed;
};

} // namespace kelpa
