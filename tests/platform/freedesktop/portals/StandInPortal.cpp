#include "platform/freedesktop/portals/StandInPortal.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace kelpa::test {

namespace {

const QString standInName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString standInPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString connectionName = QStringLiteral("fake-desktop-portal");

} // namespace

StandInPortal::StandInPortal()
    : m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName))
{
    m_connection.registerVirtualObject(standInPath, this, QDBusConnection::SubPath);
    m_isOnBus = m_connection.registerService(standInName);
}

StandInPortal::~StandInPortal()
{
    QDBusConnection::disconnectFromBus(connectionName);
}

void StandInPortal::leave()
{
    m_connection.unregisterService(standInName);
}

void StandInPortal::comeBack()
{
    m_connection.registerService(standInName);
}

QVariantMap StandInPortal::optionsOf(const QString& member) const
{
    return qdbus_cast<QVariantMap>(argumentsOf(member).value(argumentsOf(member).size() - 1));
}

void StandInPortal::respond(uint code, const QVariantMap& results)
{
    respondWith({code, results});
}

void StandInPortal::respondWith(const QVariantList& arguments)
{
    respondAt(m_requestPath, arguments);
}

void StandInPortal::respondAt(const QString& path, const QVariantList& arguments)
{
    emitSignal(path, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"),
               arguments);
}

void StandInPortal::emitSignal(const QString& path, const QString& interface, const QString& name,
                               const QVariantList& arguments)
{
    QDBusMessage signal = QDBusMessage::createSignal(path, interface, name);
    signal.setArguments(arguments);
    m_connection.send(signal);
}

bool StandInPortal::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    if (message.interface() == QStringLiteral("org.freedesktop.DBus.Properties")) {
        connection.send(
            version ? message.createReply(
                          QVariant::fromValue(QDBusVariant(QVariant::fromValue(*version))))
                    : message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("none")));
        return true;
    }
    m_calls.append(message.member());
    m_arguments.insert(message.member(), message.arguments());
    if (message.member() == QStringLiteral("Register") ||
        message.member() == QStringLiteral("Close"))
        connection.send(message.createReply());
    else
        answerRequest(message, connection);
    return true;
}

void StandInPortal::answerRequest(const QDBusMessage& message, const QDBusConnection& connection)
{
    m_sender = message.service();
    if (isHanging)
        return;
    if (isRefusing) {
        connection.send(message.createErrorReply(QDBusError::AccessDenied, QString()));
        return;
    }
    if (isWrong) {
        connection.send(message.createReply(QStringLiteral("later")));
        return;
    }
    m_requestPath = ownPath;
    if (m_requestPath.isEmpty())
        m_requestPath =
            standInPath + QStringLiteral("/request/") + m_sender.mid(1).replace(u'.', u'_') + u'/' +
            optionsOf(message.member()).value(QStringLiteral("handle_token")).toString();
    connection.send(message.createReply(QVariant::fromValue(QDBusObjectPath(m_requestPath))));
}

} // namespace kelpa::test
