#include "platform/freedesktop/appearance/SettingsPortal.h"

#include "platform/freedesktop/bus/SessionBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QEventLoop>

#include <optional>
#include <utility>

namespace kelpa {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");

const QString busService = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");

/// A setting may be wrapped in several variants.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

/// None where the reply is an error or something else.
std::optional<SettingsBySpace> settingsOf(const QDBusMessage& reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage ||
        reply.signature() != QLatin1String("a{sa{sv}}"))
        return std::nullopt;
    auto settings = qdbus_cast<SettingsBySpace>(reply.arguments().constFirst());
    for (QVariantMap& space : settings) {
        for (QVariant& value : space)
            value = unwrapped(std::move(value));
    }
    return settings;
}

} // namespace

/// A connection of its own to the session bus, closed when its last owner drops it.
class SettingsPortal::Bus
{
public:
    static std::shared_ptr<Bus> connect() { return std::make_shared<Bus>(); }

    // By its address: the toolkit's own session bus may be a stand-in.
    Bus()
        : m_connection(
              QDBusConnection::connectToBus(QString::fromLocal8Bit(sessionBusAddress()), name()))
    {}
    ~Bus() { QDBusConnection::disconnectFromBus(name()); }
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    QDBusConnection& connection() { return m_connection; }

private:
    static QString name() { return QStringLiteral("kelpa-settings-portal"); }

    QDBusConnection m_connection;
};

SettingsPortal::SettingsPortal(Scheduler& scheduler, QStringList spaces)
    : m_scheduler(scheduler), m_spaces(std::move(spaces))
{
    // Connecting blocks, so it happens off the main thread.
    m_connecting = scheduler.inBackground(
        [](const std::stop_token&) { return Bus::connect(); },
        [this](std::shared_ptr<Bus> bus) { startListening(std::move(bus)); });
}

SettingsPortal::~SettingsPortal() = default;

void SettingsPortal::await(Scheduler::Duration limit)
{
    if (m_isAnswered)
        return;
    QEventLoop loop;
    connect(this, &SettingsPortal::answered, &loop, &QEventLoop::quit);
    const TaskHandle end = m_scheduler.after(limit, [&loop] { loop.quit(); });
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void SettingsPortal::startListening(std::shared_ptr<Bus> bus)
{
    m_bus = std::move(bus);
    // Before the first call, so that no change is missed in between. Without the service's name:
    // with it, Qt would ask the bus for its owner and block.
    m_bus->connection().connect(QString(), portalPath, portalInterface,
                                QStringLiteral("SettingChanged"), this,
                                SLOT(settingChanged(QDBusMessage)));
    m_bus->connection().connect(QString(), busPath, busService, QStringLiteral("NameOwnerChanged"),
                                {portalService}, QString(), this, SLOT(ownerChanged(QDBusMessage)));
    read();
}

void SettingsPortal::read()
{
    if (!m_bus)
        return;
    if (!m_bus->connection().isConnected()) {
        finishReading();
        return;
    }
    QDBusMessage message = QDBusMessage::createMethodCall(
        portalService, portalPath, portalInterface, QStringLiteral("ReadAll"));
    message << m_spaces;
    auto* const watcher = new QDBusPendingCallWatcher(m_bus->connection().asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const std::optional<SettingsBySpace> settings = settingsOf(watcher->reply());
        watcher->deleteLater();
        if (settings)
            Q_EMIT received(*settings, SettingsExtent::all);
        finishReading();
    });
}

void SettingsPortal::finishReading()
{
    m_isAnswered = true;
    Q_EMIT answered();
}

void SettingsPortal::settingChanged(const QDBusMessage& message)
{
    const QVariantList values = message.arguments();
    if (values.size() == 3)
        Q_EMIT received(
            {{values.at(0).toString(), {{values.at(1).toString(), unwrapped(values.at(2))}}}},
            SettingsExtent::changes);
}

void SettingsPortal::ownerChanged(const QDBusMessage& message)
{
    // The name, its former owner and its new one. What the former one said stays until the new one
    // has answered.
    const QVariantList values = message.arguments();
    if (message.service() == busService && values.size() == 3 && !values.at(2).toString().isEmpty())
        read();
}

} // namespace kelpa
