#include "platform/freedesktop/bus/DesktopNotifications.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

#include <utility>

namespace kelpa {

namespace {

QDBusMessage callOf(const QString& method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.Notifications"),
                                          QStringLiteral("/org/freedesktop/Notifications"),
                                          QStringLiteral("org.freedesktop.Notifications"), method);
}

/// The desktop shows the application's name and icon.
QVariantMap hints()
{
    return {{QStringLiteral("desktop-entry"), QStringLiteral("org.kelpa.Kelpa")}};
}

/// The name of the only button.
const QString actionName = QStringLiteral("act");

QStringList actionsOf(const Notification& notification)
{
    return notification.actionText.isEmpty() ? QStringList()
                                             : QStringList{actionName, notification.actionText};
}

/// The server decides how long it shows.
constexpr int serverTimeout = -1;

} // namespace

/// A connection of its own to the session bus, closed when its last owner drops it.
class DesktopNotifications::Bus
{
public:
    Bus()
    {
        // By its address: the library may know a stand-in as the session bus, and would start a bus
        // without one.
        if (const QByteArray address = sessionBusAddress(); !address.isEmpty())
            m_connection = QDBusConnection::connectToBus(QString::fromLocal8Bit(address), name());
    }
    ~Bus() { QDBusConnection::disconnectFromBus(name()); }
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    const QDBusConnection& connection() const { return m_connection; }

private:
    static QString name() { return QStringLiteral("kelpa-notifications"); }

    QDBusConnection m_connection{QString()};
};

DesktopNotifications::DesktopNotifications(Scheduler& scheduler) : m_scheduler(scheduler) {}

DesktopNotifications::~DesktopNotifications() = default;

void DesktopNotifications::show(const Notification& notification)
{
    m_wanted = notification;
    ++m_wantedCount;
    if (m_bus && !m_bus->connection().isConnected()) {
        // What it has shown went with it. Dropped before the next one takes its name.
        m_bus.reset();
        m_shown = 0;
    }
    if (m_bus)
        send();
    else if (!m_connecting)
        connectToBus();
}

void DesktopNotifications::withdraw()
{
    m_wanted.reset();
    // One that is on its way is closed once its number is known.
    if (m_bus && !m_sent)
        closeShown();
}

void DesktopNotifications::connectToBus()
{
    // Connecting blocks, so it happens off the main thread.
    m_connecting =
        m_scheduler.inBackground([](const std::stop_token&) { return std::make_shared<Bus>(); },
                                 [this](std::shared_ptr<Bus> bus) {
                                     m_connecting.reset();
                                     m_bus = std::move(bus);
                                     followActions();
                                     if (m_wanted)
                                         send();
                                 });
}

void DesktopNotifications::followActions()
{
    // From any sender: naming one would wait for the bus to tell its owner.
    QDBusConnection bus = m_bus->connection();
    bus.connect(QString(), QStringLiteral("/org/freedesktop/Notifications"),
                QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("ActionInvoked"),
                this, SLOT(noteAction(QDBusMessage)));
}

void DesktopNotifications::noteAction(const QDBusMessage& message)
{
    const QVariantList arguments = message.arguments();
    const bool isShown = m_shown != 0 && message.service() == m_server &&
                         message.signature() == QStringLiteral("us") &&
                         arguments.constFirst().toUInt() == m_shown &&
                         arguments.constLast().toString() == actionName;
    if (isShown && m_wanted && m_wanted->act)
        m_wanted->act();
}

void DesktopNotifications::send()
{
    // Before the number of the last one is known, the next would stand beside it.
    if (m_sent || !m_bus->connection().isConnected())
        return;
    m_sent = m_wantedCount;
    QDBusMessage message = callOf(QStringLiteral("Notify"));
    message << QStringLiteral("Kelpa") << m_shown << QStringLiteral("org.kelpa.Kelpa")
            << m_wanted->summary << m_wanted->body << actionsOf(*m_wanted) << hints()
            << serverTimeout;
    auto* const watcher = new QDBusPendingCallWatcher(m_bus->connection().asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<quint32> reply = *watcher;
        watcher->deleteLater();
        const auto sent = std::exchange(m_sent, std::nullopt);
        if (reply.isValid()) {
            m_shown = reply.value();
            m_server = reply.reply().service();
        } else {
            qCDebug(logBus, "no notification was shown");
        }
        // A connection that was lost meanwhile may be on its way back.
        if (!m_bus)
            return;
        // It may have been taken back or replaced meanwhile.
        if (!m_wanted)
            closeShown();
        else if (m_wantedCount != sent)
            send();
    });
}

void DesktopNotifications::closeShown()
{
    const std::uint32_t shown = std::exchange(m_shown, 0);
    if (shown == 0 || !m_bus->connection().isConnected())
        return;
    QDBusMessage message = callOf(QStringLiteral("CloseNotification"));
    message << shown;
    m_bus->connection().asyncCall(message);
}

} // namespace kelpa
