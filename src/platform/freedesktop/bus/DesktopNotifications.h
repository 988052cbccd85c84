// A client of the desktop's notification service (org.freedesktop.Notifications).
#pragma once

#include "platform/Notifications.h"
#include "platform/Scheduler.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

class QDBusMessage;

namespace kelpa {

/// Main thread; never waits for the service or the bus. Connects with the first notification, and
/// with a later one again after the connection has failed or was lost.
class DesktopNotifications final : public QObject, public Notifications
{
    Q_OBJECT

public:
    /// `scheduler` outlives the object.
    explicit DesktopNotifications(Scheduler& scheduler);
    ~DesktopNotifications() override;

    void show(const Notification& notification) override;
    void withdraw() override;

private Q_SLOTS:
    /// A button of a notification, of this program's or of another's, has been pressed.
    void noteAction(const QDBusMessage& message);

private:
    class Bus;
    void connectToBus();
    void followActions();
    void send();
    void closeShown();

    Scheduler& m_scheduler;
    /// Absent until there is a connection.
    std::shared_ptr<Bus> m_bus;
    TaskHandle m_connecting;
    /// What is to be shown now; absent for nothing.
    std::optional<Notification> m_wanted;
    /// Counts what has been wanted.
    std::uint64_t m_wantedCount = 0;
    /// Which of them is on its way to the service, whose number for it is not known yet.
    std::optional<std::uint64_t> m_sent;
    /// The service's number of the notification that it shows; 0 for none.
    std::uint32_t m_shown = 0;
    /// The service's unique name on the bus when it said so.
    QString m_server;
};

} // namespace kelpa
