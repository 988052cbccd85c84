#include "support/desktop/LoopScheduler.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QMetaObject>
#include <QObject>
#include <QTimer>

#include <memory>
#include <thread>

namespace kelpa::test {

namespace {

/// Deletes later, since the object may be handling an event right now.
struct DeleteLater
{
    void operator()(QObject* object) const { object->deleteLater(); }
};

template <class Object>
using Deferred = std::unique_ptr<Object, DeleteLater>;

class TimerWork : public ScheduledWork
{
public:
    TimerWork(Scheduler::Duration interval, bool isSingleShot, const std::function<void()>& work)
    {
        m_timer->setSingleShot(isSingleShot);
        QObject::connect(m_timer.get(), &QTimer::timeout, m_timer.get(), work);
        m_timer->start(interval);
    }

    TimerWork(const TimerWork&) = delete;
    TimerWork& operator=(const TimerWork&) = delete;
    ~TimerWork() override { m_timer->stop(); }
    bool requestStop() override
    {
        m_timer->stop();
        return false;
    }

private:
    Deferred<QTimer> m_timer{std::make_unique<QTimer>().release()};
};

class ThreadWork : public ScheduledWork
{
public:
    explicit ThreadWork(std::function<std::function<void()>(std::stop_token)> work)
        : m_thread([this, work = std::move(work)](const std::stop_token& stop) {
              const std::function<void()> then = work(stop);
              QMetaObject::invokeMethod(m_context.get(), then, Qt::QueuedConnection);
          })
    {}

    ThreadWork(const ThreadWork&) = delete;
    ThreadWork& operator=(const ThreadWork&) = delete;
    ~ThreadWork() override
    {
        m_thread.request_stop();
        m_thread.join();
        QCoreApplication::removePostedEvents(m_context.get());
    }

    bool requestStop() override
    {
        m_thread.request_stop();
        return true;
    }

private:
    Deferred<QObject> m_context{std::make_unique<QObject>().release()};
    std::jthread m_thread;
};

} // namespace

LoopScheduler::Time LoopScheduler::now() const
{
    return Time::clock::now();
}

Date LoopScheduler::calendarTime() const
{
    return Date::fromDateTime(QDateTime::currentDateTimeUtc());
}

TaskHandle LoopScheduler::repeat(Duration interval, std::function<void()> tick)
{
    return std::make_unique<TimerWork>(interval, false, tick);
}

TaskHandle LoopScheduler::after(Duration delay, std::function<void()> work)
{
    return std::make_unique<TimerWork>(delay, true, work);
}

TaskHandle LoopScheduler::startInBackground(BackgroundWork work, WorkPriority /*priority*/)
{
    return std::make_unique<ThreadWork>(std::move(work));
}

TaskHandle LoopScheduler::startAndWait(Duration, BackgroundWork work)
{
    return startInBackground(std::move(work), WorkPriority::normal);
}

} // namespace kelpa::test
