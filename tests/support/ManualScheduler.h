// A scheduler whose clock advances only when a test says so.
#pragma once

#include "platform/Scheduler.h"

#include <list>
#include <memory>
#include <vector>

namespace kelpa::test {

class ManualScheduler : public Scheduler
{
public:
    ManualScheduler();
    ~ManualScheduler() override;

    Time now() const override;
    Date calendarTime() const override;
    TaskHandle repeat(Duration interval, std::function<void()> tick) override;
    TaskHandle after(Duration delay, std::function<void()> work) override;

    /// Sets the calendar forward, or back by a negative duration, as a person may at any moment.
    void setCalendarForward(Duration duration) { m_calendarOffset += duration; }

    /// Advances the clock and runs everything that becomes due, in order of time. Background work
    /// takes no time unless it is held.
    void advance(Duration duration);

    /// While held, background work stays in flight without having begun, and waiting for it times
    /// out.
    void holdBackgroundWork(bool isHeld) { m_isHoldingBackground = isHeld; }
    /// Lets all background work in flight begin; it hangs until `runBackgroundWork`.
    void hangBackgroundWork();

    /// Finishes all background work in flight.
    void runBackgroundWork();

    /// Work that was cancelled after it had begun is in flight until it is finished.
    int backgroundWorkInFlight() const;
    /// Number of background jobs started so far.
    int backgroundWorkStarted() const { return static_cast<int>(m_startedPriorities.size()); }
    /// Their priorities, in the order in which they were started.
    const std::vector<WorkPriority>& startedPriorities() const { return m_startedPriorities; }
    /// Number of active timers: repeating ones and delays.
    int timersDue() const;

protected:
    TaskHandle startInBackground(BackgroundWork work, WorkPriority priority) override;
    TaskHandle startAndWait(Duration limit, BackgroundWork work) override;

private:
    struct Item;
    class Handle;
    using Items = std::list<std::shared_ptr<Item>>;

    TaskHandle add(std::shared_ptr<Item> item);
    void finish(const std::shared_ptr<Item>& item);
    std::shared_ptr<Item> nextDue(std::chrono::milliseconds until) const;

    std::chrono::milliseconds m_elapsed{0};
    std::chrono::milliseconds m_calendarOffset{0};
    std::shared_ptr<Items> m_items;
    bool m_isHoldingBackground = false;
    std::vector<WorkPriority> m_startedPriorities;
    int m_nextSequence = 0;
};

} // namespace kelpa::test
