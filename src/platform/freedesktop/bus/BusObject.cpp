#include "platform/freedesktop/bus/BusObject.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>

#include <utility>

namespace kelpa {

namespace {

const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString versionProperty = QStringLiteral("Version");

} // namespace

BusObject::BusObject(Description description) : m_description(std::move(description))
{
    qDBusRegisterMetaType<QList<QVariantMap>>();
}

bool BusObject::registerOn(const QString& connection)
{
    if (m_isRegistered)
        return true;
    m_connection = connection;
    m_isRegistered = QDBusConnection(connection).registerVirtualObject(m_description.path, this);
    return m_isRegistered;
}

void BusObject::unregister()
{
    if (m_isRegistered)
        QDBusConnection(m_connection).unregisterObject(m_description.path);
}

void BusObject::emitSignal(const QString& name, const QVariantList& arguments) const
{
    if (!m_isRegistered)
        return;
    QDBusMessage message =
        QDBusMessage::createSignal(m_description.path, m_description.interface, name);
    message.setArguments(arguments);
    QDBusConnection(m_connection).send(message);
}

QString BusObject::introspect(const QString& path) const
{
    Q_UNUSED(path)
    return m_description.introspection;
}

bool BusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    const QString interface = message.interface();
    if (interface == propertiesInterface)
        return handleProperty(message, connection);
    if (!interface.isEmpty() && interface != m_description.interface)
        return false;
    message.setDelayedReply(true);
    const Respond respond = [message, connection](const Answer& answer) {
        if (const auto* const error = std::get_if<BusError>(&answer))
            connection.send(message.createErrorReply(error->name, error->message));
        else
            connection.send(message.createReply(std::get<QVariantList>(answer)));
    };
    if (m_handler)
        m_handler(message.member(), message.arguments(), respond);
    else
        respond(m_unhandled);
    return true;
}

bool BusObject::handleProperty(const QDBusMessage& message, const QDBusConnection& connection) const
{
    const QString member = message.member();
    const QString signature = message.signature();
    const bool isGet = member == u"Get" && signature == u"ss";
    const bool isGetAll = member == u"GetAll" && signature == u"s";
    if (!isGet && !isGetAll)
        return member == u"Set" && signature == u"ssv" &&
               connection.send(message.createErrorReply(
                   QDBusError::PropertyReadOnly, QStringLiteral("The properties are read-only")));
    const QString interface = message.arguments().constFirst().toString();
    if (!interface.isEmpty() && interface != m_description.interface)
        return connection.send(message.createErrorReply(
            QDBusError::UnknownInterface,
            QStringLiteral("There is no interface '%1'").arg(interface.left(80))));
    if (isGetAll) {
        QVariantMap all;
        if (m_description.version)
            all.insert(versionProperty, QVariant::fromValue(*m_description.version));
        return connection.send(message.createReply(QVariant(all)));
    }
    const QString property = message.arguments().constLast().toString();
    if (!m_description.version || property != versionProperty)
        return connection.send(message.createErrorReply(
            QDBusError::UnknownProperty,
            QStringLiteral("There is no property '%1'").arg(property.left(80))));
    return connection.send(message.createReply(
        QVariant::fromValue(QDBusVariant(QVariant::fromValue(*m_description.version)))));
}

} // namespace kelpa
