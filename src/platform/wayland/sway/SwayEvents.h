// Receives sway's events about windows, on the main thread and without ever waiting for sway, and
// reports them coalesced.
#pragma once

#include "platform/Scheduler.h"
#include "platform/Subscription.h"
#include "platform/tasks/ChangeCoalescer.h"
#include "platform/wayland/sway/SwayConnection.h"

#include <QByteArray>
#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace kelpa::wayland {

/// Main thread. Connects in the background, and again some time after the connection was lost;
/// `changed` is called after each connection, since events before it were missed.
class SwayEvents final : public Subscription
{
public:
    SwayEvents(Scheduler& scheduler, QByteArray socketPath, std::function<void()> changed);
    ~SwayEvents() override;

private:
    void connect();
    void connected(std::unique_ptr<SwayConnection> connection);
    void process();
    void lost();

    Scheduler& m_scheduler;
    const QByteArray m_socketPath;
    ChangeCoalescer m_changes;

    std::unique_ptr<SwayConnection> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    TaskHandle m_connecting;
    /// Handles the events that were left to the next turn of the main thread.
    TaskHandle m_continuing;
};

} // namespace kelpa::wayland
