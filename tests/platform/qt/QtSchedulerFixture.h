// A scheduler on an event loop that wakes often enough to notice a deadline.
#pragma once

#include "platform/qt/QtScheduler.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <semaphore>
#include <thread>
#include <vector>

namespace kelpa::test {

using Clock = std::chrono::steady_clock;

inline constexpr std::chrono::seconds eventuallyLimit{20};

/// Runs the event loop until `isMet`, at most until the deadline; whether it was met.
template <class Condition>
bool eventually(Condition isMet)
{
    const auto end = Clock::now() + eventuallyLimit;
    while (!isMet() && Clock::now() < end)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    return isMet();
}

/// Wakes the event loop while `eventually` waits, so that it checks its deadline.
class EventLoopWaker
{
public:
    EventLoopWaker() { m_timer.start(5); }

private:
    QTimer m_timer;
};

/// Runs all events that are due now, repeatedly, since one may cause another.
inline void runDueEvents()
{
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Keeps all threads of a scheduler busy until it is released.
class BusyThreads
{
public:
    explicit BusyThreads(QtScheduler& scheduler)
    {
        m_tasks.reserve(QtScheduler::maxThreads);
        for (int i = 0; i < QtScheduler::maxThreads; ++i) {
            m_tasks.push_back(scheduler.inBackground(
                [this](const std::stop_token&) {
                    ++m_running;
                    m_gate.acquire();
                    return 1;
                },
                [this](int value) { m_ended += value; }));
        }
    }

    bool areAll() const { return m_running == QtScheduler::maxThreads; }
    void release() { m_gate.release(QtScheduler::maxThreads); }
    bool haveEnded() const { return m_ended == QtScheduler::maxThreads; }

private:
    std::counting_semaphore<> m_gate{0};
    std::atomic<int> m_running = 0;
    int m_ended = 0;
    std::vector<TaskHandle> m_tasks;
};

class QtSchedulerTest : public testing::Test
{
protected:
    QtScheduler scheduler;
    EventLoopWaker waker;
    const std::thread::id mainThread = std::this_thread::get_id();
};

} // namespace kelpa::test
