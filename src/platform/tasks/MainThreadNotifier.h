// Tells subscribers on the main thread of something that happens on any other: each notification
// is an event for each of them, so that whoever notifies waits for nobody.
#pragma once

#include "platform/Scheduler.h"
#include "platform/Subscription.h"
#include "platform/tasks/ChangeCoalescer.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <queue>
#include <set>
#include <utility>

namespace kelpa {

/// Whether a subscriber is notified once of what happened before it subscribed.
enum class EarlierEvents : std::uint8_t { notified, ignored };

/// Outlives its subscriptions.
class MainThreadNotifier
{
public:
    /// Calls `handler` from the event loop for each notification, none after the subscription has
    /// ended. Main thread.
    [[nodiscard]] std::unique_ptr<Subscription> subscribe(std::function<void()> handler,
                                                          EarlierEvents earlier)
    {
        auto receiver = std::make_unique<Receiver>(
            *this, [handler = std::move(handler)](Scheduler::Time) { handler(); });
        if (earlier == EarlierEvents::notified) {
            const std::scoped_lock lock(m_mutex);
            receiver->post({});
        }
        return receiver;
    }

    /// As `subscribe`, without earlier events; `handler` receives the time that was notified.
    [[nodiscard]] std::unique_ptr<Subscription>
    subscribeWithTime(std::function<void(Scheduler::Time)> handler)
    {
        return std::make_unique<Receiver>(*this, std::move(handler));
    }

    /// As `subscribe`, coalesced; earlier events are notified. `scheduler` outlives the
    /// subscription. Main thread.
    [[nodiscard]] std::unique_ptr<Subscription> subscribeCoalesced(Scheduler& scheduler,
                                                                   std::function<void()> handler)
    {
        const auto changes = std::make_shared<ChangeCoalescer>(scheduler, std::move(handler));
        changes->noteChange();
        return subscribe([changes] { changes->noteChange(); }, EarlierEvents::ignored);
    }

    /// Any thread; returns at once. `time` is for those who have subscribed with it.
    void notify(Scheduler::Time time = {})
    {
        const std::scoped_lock lock(m_mutex);
        for (Receiver* const receiver : m_receivers)
            receiver->post(time);
    }

private:
    class Receiver final : public QObject, public Subscription
    {
    public:
        Receiver(MainThreadNotifier& notifier, std::function<void(Scheduler::Time)> handler)
            : m_notifier(notifier), m_handler(std::move(handler))
        {
            const std::scoped_lock lock(m_notifier.m_mutex);
            m_notifier.m_receivers.insert(this);
        }

        ~Receiver() override
        {
            const std::scoped_lock lock(m_notifier.m_mutex);
            m_notifier.m_receivers.erase(this);
        }

        /// Whoever calls it holds the notifier's mutex.
        void post(Scheduler::Time time)
        {
            m_times.push(time);
            QCoreApplication::postEvent(this, new QEvent(notification()));
        }

        bool event(QEvent* event) override
        {
            if (event->type() != notification())
                return QObject::event(event);
            m_handler(takeTime());
            return true;
        }

    private:
        Scheduler::Time takeTime()
        {
            const std::scoped_lock lock(m_notifier.m_mutex);
            const Scheduler::Time time = m_times.front();
            m_times.pop();
            return time;
        }

        MainThreadNotifier& m_notifier;
        const std::function<void(Scheduler::Time)> m_handler;
        /// Of the events that were posted, in their order; behind the notifier's mutex, which the
        /// sanitizer of threads sees, as it does not see that of the queue of events.
        std::queue<Scheduler::Time> m_times;
    };

    static QEvent::Type notification()
    {
        static const int type = QEvent::registerEventType();
        return static_cast<QEvent::Type>(type);
    }

    std::mutex m_mutex;
    std::set<Receiver*> m_receivers;
};

} // namespace kelpa
