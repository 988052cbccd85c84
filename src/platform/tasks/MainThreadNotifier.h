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
        auto receiver = std::make_unique<Receiver>(*this, std::move(handler));
        if (earlier == EarlierEvents::notified)
            post(receiver.get());
        return receiver;
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

    /// Any thread; returns at once.
    void notify()
    {
        const std::scoped_lock lock(m_mutex);
        for (QObject* const receiver : m_receivers)
            post(receiver);
    }

private:
    class Receiver final : public QObject, public Subscription
    {
    public:
        Receiver(MainThreadNotifier& notifier, std::function<void()> handler)
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

        bool event(QEvent* event) override
        {
            if (event->type() != notification())
                return QObject::event(event);
            m_handler();
            return true;
        }

    private:
        MainThreadNotifier& m_notifier;
        const std::function<void()> m_handler;
    };

    static QEvent::Type notification()
    {
        static const int type = QEvent::registerEventType();
        return static_cast<QEvent::Type>(type);
    }

    static void post(QObject* receiver)
    {
        QCoreApplication::postEvent(receiver, new QEvent(notification()));
    }

    std::mutex m_mutex;
    std::set<QObject*> m_receivers;
};

} // namespace kelpa
