#include "platform/freedesktop/bus/ApplicationService.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/BusObject.h"
#include "platform/freedesktop/bus/SessionBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

#include <algorithm>
#include <optional>
#include <utility>

namespace kelpa {

namespace {

/// Milliseconds.
constexpr int requestTimeout = 1000;

/// The request's platform data, its last argument.
QByteArray startupID(const QDBusMessage& request)
{
    const QList<QVariant> arguments = request.arguments();
    if (arguments.isEmpty())
        return {};
    const auto data = qdbus_cast<QVariantMap>(arguments.constLast());
    for (const auto* const key : {"desktop-startup-id", "activation-token"}) {
        const QString id = data.value(QLatin1String(key)).toString();
        if (!id.isEmpty())
            return id.toUtf8();
    }
    return {};
}

/// Empty for every request but one for an action.
QString actionOf(const QDBusMessage& request)
{
    return request.member() == QLatin1String("ActivateAction")
               ? request.arguments().constFirst().toString()
               : QString();
}

/// The reply to a request; absent when there is no such method.
std::optional<QDBusMessage> answer(const QDBusMessage& request, const QStringList& actions)
{
    const QString member = request.member();
    const QString signature = request.signature();
    if ((member == QLatin1String("Activate") && signature == QLatin1String("a{sv}")) ||
        // Kelpa opens no kind of file.
        (member == QLatin1String("Open") && signature == QLatin1String("asa{sv}")))
        return request.createReply();
    if (member == QLatin1String("ActivateAction") && signature == QLatin1String("sava{sv}")) {
        const QString action = actionOf(request);
        if (actions.contains(action))
            return request.createReply();
        return request.createErrorReply(QDBusError::InvalidArgs,
                                        QStringLiteral("There is no action '%1'").arg(action));
    }
    return std::nullopt;
}

} // namespace

ApplicationService::ApplicationService(QString busName, QStringList actions,
                                       std::function<void(const ApplicationRequest&)> activate,
                                       QList<BusObject*> others)
    : m_busName(std::move(busName)), m_actions(std::move(actions)), m_activate(std::move(activate)),
      m_others(std::move(others))
{}

ApplicationService::~ApplicationService()
{
    for (BusObject* const other : m_others)
        other->unregister();
    // The object goes now, the name only when the process has ended.
    QDBusConnection(m_busName).unregisterObject(QLatin1String(objectOfKelpa));
}

NameClaim ApplicationService::claim(NameQueue queue)
{
    const QByteArray address = sessionBusAddress();
    if (address.isEmpty())
        return NameClaim::noBus;
    QDBusConnection bus = QDBusConnection::connectToBus(QString::fromLocal8Bit(address), m_busName);
    // The object comes first, so that whoever finds the name can call it.
    if (!m_isRegistered)
        m_isRegistered =
            bus.isConnected() && bus.registerVirtualObject(QLatin1String(objectOfKelpa), this) &&
            std::ranges::all_of(m_others,
                                [this](BusObject* other) { return other->registerOn(m_busName); });
    if (!m_isRegistered)
        return NameClaim::noBus;
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                SIGNAL(disconnected()));
    QDBusMessage request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    constexpr uint doNotQueue = 4;
    request << m_busName << (queue == NameQueue::join ? 0U : doNotQueue);
    const QDBusMessage reply = bus.call(request, QDBus::Block, requestTimeout);
    qCDebug(logBus, "claim of %s: %s", qPrintable(m_busName),
            reply.type() == QDBusMessage::ReplyMessage ? "answered"
                                                       : qPrintable(reply.errorName()));
    if (reply.type() != QDBusMessage::ReplyMessage)
        return NameClaim::noBus;
    constexpr uint isQueued = 2;
    constexpr uint exists = 3;
    const uint result = reply.arguments().value(0).toUInt();
    return result == isQueued || result == exists ? NameClaim::takenByAnother : NameClaim::owned;
}

bool ApplicationService::isConnected() const
{
    return m_isRegistered && QDBusConnection(m_busName).isConnected();
}

QString ApplicationService::introspect(const QString& path) const
{
    Q_UNUSED(path)
    return QStringLiteral("<interface name=\"org.freedesktop.Application\">"
                          "<method name=\"Activate\">"
                          "<arg type=\"a{sv}\" name=\"platform_data\" direction=\"in\"/>"
                          "</method>"
                          "<method name=\"Open\">"
                          "<arg type=\"as\" name=\"uris\" direction=\"in\"/>"
                          "<arg type=\"a{sv}\" name=\"platform_data\" direction=\"in\"/>"
                          "</method>"
                          "<method name=\"ActivateAction\">"
                          "<arg type=\"s\" name=\"action_name\" direction=\"in\"/>"
                          "<arg type=\"av\" name=\"parameter\" direction=\"in\"/>"
                          "<arg type=\"a{sv}\" name=\"platform_data\" direction=\"in\"/>"
                          "</method>"
                          "</interface>");
}

bool ApplicationService::handleMessage(const QDBusMessage& message,
                                       const QDBusConnection& connection)
{
    const QString interface = message.interface();
    if (!interface.isEmpty() && interface != QLatin1String("org.freedesktop.Application"))
        return false;
    const std::optional<QDBusMessage> reply = answer(message, m_actions);
    if (!reply)
        return false;
    if (reply->type() == QDBusMessage::ReplyMessage)
        m_activate({startupID(message), actionOf(message)});
    connection.send(*reply);
    return true;
}

} // namespace kelpa
