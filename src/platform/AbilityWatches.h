// The subscriptions to a report of changing abilities.
#pragma once

#include "platform/Subscription.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace kelpa {

/// Main thread. Outlives its subscriptions.
class AbilityWatches
{
public:
    AbilityWatches() = default;
    AbilityWatches(const AbilityWatches&) = delete;
    AbilityWatches& operator=(const AbilityWatches&) = delete;

    [[nodiscard]] std::unique_ptr<Subscription> add(std::function<void()> changed)
    {
        return std::make_unique<Watch>(m_all, std::move(changed));
    }
    /// Calls every subscriber; one that ends meanwhile is not called any more.
    void announce() const
    {
        const std::vector<const Watch*> all = m_all;
        for (const Watch* const each : all) {
            if (std::ranges::find(m_all, each) != m_all.end())
                each->call();
        }
    }

private:
    class Watch final : public Subscription
    {
    public:
        Watch(std::vector<const Watch*>& all, std::function<void()> changed)
            : m_all(all), m_changed(std::move(changed))
        {
            m_all.push_back(this);
        }
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;
        ~Watch() override { std::erase(m_all, this); }

        void call() const { m_changed(); }

    private:
        std::vector<const Watch*>& m_all;
        const std::function<void()> m_changed;
    };

    std::vector<const Watch*> m_all;
};

} // namespace kelpa
