// A client of the desktop's notification service (org.freedesktop.Notifications).
#pragma once

#include "platform/Notifications.h"
#include "platform/Scheduler.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

namespace kelpa {

/// Main thread; never waits for the service or the bus. Connects with the first notification, and
/// with a later one again after the connection has failed or was lost.
class DesktopNotifications final : public QObject, public Notifications
{
public:
    /// `scheduler` outlives the object.
    explicit DesktopNotifications(Scheduler& scheduler);
    ~DesktopNotifications() override;

    void show(const QString& summary, const QString& body) override;
    void withdraw() override;

private:
    class Bus;
    struct Message
    {
        QString summary;
        QString body;

        friend bool operator==(const Message&, const Message&) = default;
    };

    void connectToBus();
    void send();
    void closeShown();

    Scheduler& m_scheduler;
    /// Absent until there is a connection.
    std::shared_ptr<Bus> m_bus;
    TaskHandle m_connecting;
    /// What is to be shown now; absent for nothing.
    std::optional<Message> m_wanted;
    /// On its way to the service, whose number for it is not known yet.
    std::optional<Message> m_sent;
    /// The service's number of the notification that it shows; 0 for none.
    std::uint32_t m_shown = 0;
};

} // namespace kelpa
