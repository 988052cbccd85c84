#include "platform/freedesktop/appearance/SettingsPortal.h"

#include "platform/freedesktop/bus/SessionBus.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace kelpa {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");

const QString notFound = QStringLiteral("org.freedesktop.portal.Error.NotFound");

/// The portal's Read wraps its reply in two variants.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
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

SettingsPortal::SettingsPortal(Scheduler& scheduler)
{
    // Connecting blocks, so it happens off the main thread.
    m_connecting = scheduler.inBackground(
        [](const std::stop_token&) { return Bus::connect(); },
        [this](std::shared_ptr<Bus> bus) { startListening(std::move(bus)); });
}

SettingsPortal::~SettingsPortal() = default;

void SettingsPortal::read(const QString& space, const QString& key)
{
    if (m_bus)
        send(space, key);
    else
        m_unsent.emplace_back(space, key);
}

void SettingsPortal::startListening(std::shared_ptr<Bus> bus)
{
    m_bus = std::move(bus);
    // Before the first read, so that no change is missed in between. Without the service's name:
    // with it, Qt would ask the bus for its owner and block.
    m_bus->connection().connect(QString(), portalPath, portalInterface,
                                QStringLiteral("SettingChanged"), this,
                                SLOT(settingChanged(QDBusMessage)));
    for (const auto& [space, key] : std::exchange(m_unsent, {}))
        send(space, key);
}

void SettingsPortal::send(const QString& space, const QString& key)
{
    if (!m_bus->connection().isConnected())
        return;
    QDBusMessage message = QDBusMessage::createMethodCall(portalService, portalPath,
                                                          portalInterface, QStringLiteral("Read"));
    message << space << key;
    auto* const watcher = new QDBusPendingCallWatcher(m_bus->connection().asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, space, key] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        watcher->deleteLater();
        if (reply.isValid())
            Q_EMIT received(space, key, unwrapped(reply.value().variant()));
        else if (reply.error().name() == notFound)
            Q_EMIT received(space, key, {});
    });
}

void SettingsPortal::settingChanged(const QDBusMessage& message)
{
    const QVariantList values = message.arguments();
    if (values.size() == 3)
        Q_EMIT received(values.at(0).toString(), values.at(1).toString(), unwrapped(values.at(2)));
}

} // namespace kelpa
