#include "platform/freedesktop/bus/ApplicationService.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/SessionBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

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

/// The reply to a request; absent when there is no such method.
std::optional<QDBusMessage> answer(const QDBusMessage& request)
{
    const QString member = request.member();
    const QString signature = request.signature();
    if ((member == QLatin1String("Activate") && signature == QLatin1String("a{sv}")) ||
        // Kelpa opens no kind of file.
        (member == QLatin1String("Open") && signature == QLatin1String("asa{sv}")))
        return request.createReply();
    if (member == QLatin1String("ActivateAction") && signature == QLatin1String("sava{sv}")) {
        // The desktop entry declares no actions.
        const QString action = request.arguments().constFirst().toString();
        return request.createErrorReply(QDBusError::InvalidArgs,
                                        QStringLiteral("There is no action '%1'").arg(action));
    }
    return std::nullopt;
}

} // namespace

ApplicationService::ApplicationService(QString busName,
                                       std::function<void(const QByteArray&)> activate)
    : m_busName(std::move(busName)), m_activate(std::move(activate))
{}

ApplicationService::~ApplicationService()
{
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
    m_isRegistered =
        m_isRegistered ||
        (bus.isConnected() && bus.registerVirtualObject(QLatin1String(objectOfKelpa), this));
    if (!m_isRegistered)
        return NameClaim::noBus;
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
    const std::optional<QDBusMessage> reply = answer(message);
    if (!reply)
        return false;
    if (reply->type() == QDBusMessage::ReplyMessage)
        m_activate(startupID(message));
    connection.send(*reply);
    return true;
}

} // namespace kelpa
