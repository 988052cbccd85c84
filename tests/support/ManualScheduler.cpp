#include "support/ManualScheduler.h"

#include <algorithm>
#include <tuple>
#include <vector>

namespace kelpa::test {

namespace {

/// 2026-01-01 00:00:00 UTC.
constexpr double startOfTests = 788'918'400;

} // namespace

struct ManualScheduler::Item
{
    int sequence = 0;
    std::chrono::milliseconds due{0};
    /// Zero for a single shot.
    Duration interval{0};
    std::function<void()> work;
    BackgroundWork background;
    std::stop_source stop;
    bool hasBegun = false;
    bool isFinishing = false;
    bool isCancelled = false;
};

class ManualScheduler::Handle final : public ScheduledWork
{
public:
    Handle(std::shared_ptr<Item> item, const std::shared_ptr<Items>& items,
           ManualScheduler& scheduler)
        : m_item(std::move(item)), m_items(items), m_scheduler(scheduler)
    {}
    ~Handle() override
    {
        m_item->isCancelled = true;
        requestStop();
    }

    bool requestStop() override
    {
        m_item->stop.request_stop();
        if (m_item->hasBegun)
            return true;
        if (const std::shared_ptr<Items> items = m_items.lock())
            items->remove(m_item);
        return false;
    }

    void waitFor(std::chrono::milliseconds /*limit*/) override
    {
        // Outlives this.
        const std::shared_ptr<Item> item = m_item;
        const bool isHeld = m_scheduler.m_isHoldingBackground || item->hasBegun;
        if (item->background && !isHeld)
            m_scheduler.finish(item);
    }

    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

private:
    std::shared_ptr<Item> m_item;
    std::weak_ptr<Items> m_items;
    /// For `waitFor`, which nobody calls after the scheduler is gone.
    ManualScheduler& m_scheduler;
};

ManualScheduler::ManualScheduler() : m_items(std::make_shared<Items>()) {}

ManualScheduler::~ManualScheduler() = default;

ManualScheduler::Time ManualScheduler::now() const
{
    return Time(m_elapsed);
}

Date ManualScheduler::calendarTime() const
{
    return Date{startOfTests + std::chrono::duration<double>(m_elapsed + m_calendarOffset).count()};
}

TaskHandle ManualScheduler::repeat(Duration interval, std::function<void()> tick)
{
    auto item = std::make_shared<Item>();
    item->due = m_elapsed + interval;
    item->interval = interval;
    item->work = std::move(tick);
    return add(std::move(item));
}

TaskHandle ManualScheduler::after(Duration delay, std::function<void()> work)
{
    auto item = std::make_shared<Item>();
    item->due = m_elapsed + delay;
    item->work = std::move(work);
    return add(std::move(item));
}

TaskHandle ManualScheduler::startInBackground(BackgroundWork work, WorkPriority priority)
{
    m_startedPriorities.push_back(priority);
    auto item = std::make_shared<Item>();
    item->due = m_elapsed;
    item->background = std::move(work);
    return add(std::move(item));
}

TaskHandle ManualScheduler::startAndWait(Duration /*limit*/, BackgroundWork work)
{
    if (m_isHoldingBackground)
        return startInBackground(std::move(work), WorkPriority::normal);
    m_startedPriorities.push_back(WorkPriority::normal);
    const std::stop_source stop;
    work(stop.get_token())();
    return nullptr;
}

TaskHandle ManualScheduler::add(std::shared_ptr<Item> item)
{
    item->sequence = m_nextSequence++;
    m_items->push_back(item);
    return std::make_unique<Handle>(std::move(item), m_items, *this);
}

std::shared_ptr<ManualScheduler::Item>
ManualScheduler::nextDue(std::chrono::milliseconds until) const
{
    std::shared_ptr<Item> next;
    for (const std::shared_ptr<Item>& item : *m_items) {
        const bool isHeld = m_isHoldingBackground || item->hasBegun;
        if (item->due > until || (item->background && isHeld))
            continue;
        if (!next || std::tuple(item->due, item->sequence) < std::tuple(next->due, next->sequence))
            next = item;
    }
    return next;
}

void ManualScheduler::advance(Duration duration)
{
    const std::chrono::milliseconds until = m_elapsed + duration;
    while (const std::shared_ptr<Item> item = nextDue(until)) {
        m_elapsed = std::max(m_elapsed, item->due);
        if (item->background) {
            finish(item);
            continue;
        }
        if (item->interval.count() > 0)
            item->due += item->interval;
        else
            m_items->remove(item);
        item->work();
    }
    m_elapsed = until;
}

void ManualScheduler::runBackgroundWork()
{
    std::vector<std::shared_ptr<Item>> inFlight;
    std::ranges::copy_if(*m_items, std::back_inserter(inFlight),
                         [](const auto& item) { return item->background && !item->isFinishing; });
    for (const std::shared_ptr<Item>& item : inFlight)
        finish(item);
}

void ManualScheduler::finish(const std::shared_ptr<Item>& item)
{
    // Cancelled by work that was finished before it.
    if (!item->hasBegun && item->stop.stop_requested())
        return;
    item->hasBegun = true;
    item->isFinishing = true;
    const std::function<void()> completion = item->background(item->stop.get_token());
    m_items->remove(item);
    if (!item->isCancelled)
        completion();
}

void ManualScheduler::hangBackgroundWork()
{
    for (const std::shared_ptr<Item>& item : *m_items)
        item->hasBegun = item->background != nullptr;
}

int ManualScheduler::backgroundWorkInFlight() const
{
    return static_cast<int>(std::ranges::count_if(
        *m_items, [](const auto& item) { return item->background != nullptr; }));
}

int ManualScheduler::timersDue() const
{
    return static_cast<int>(m_items->size()) - backgroundWorkInFlight();
}

} // namespace kelpa::test
