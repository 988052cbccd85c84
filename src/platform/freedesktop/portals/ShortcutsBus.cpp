#include "platform/freedesktop/portals/ShortcutsBus.h"

#include "platform/freedesktop/bus/SessionBus.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QUuid>
#include <QVariant>

namespace kelpa {

namespace {

const QString shortcutsService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString shortcutsPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString busOwnInterface = QStringLiteral("org.freedesktop.DBus");

QDBusMessage callOfPortal(const QString& interface, const QString& method)
{
    return QDBusMessage::createMethodCall(shortcutsService, shortcutsPath, interface, method);
}

} // namespace

QString portalRequestInterface()
{
    return QStringLiteral("org.freedesktop.portal.Request");
}

QString portalSessionInterface()
{
    return QStringLiteral("org.freedesktop.portal.Session");
}

// By its address: the toolkit's own session bus may be a stand-in.
ShortcutsBus::ShortcutsBus()
    : m_name(QStringLiteral("kelpa-shortcuts-") + newPortalToken()),
      m_connection(
          QDBusConnection::connectToBus(QString::fromLocal8Bit(sessionBusAddress()), m_name))
{}

ShortcutsBus::~ShortcutsBus()
{
    QDBusConnection::disconnectFromBus(m_name);
}

QString ShortcutsBus::requestPath(const QString& token) const
{
    return shortcutsPath + QStringLiteral("/request/") +
           m_connection.baseService().mid(1).replace(u'.', u'_') + u'/' + token;
}

void ShortcutsBus::followBus(QObject* receiver, const char* ownerChanged, const char* disconnected)
{
    // From any sender: naming one would wait for the bus to tell its owner.
    m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus"), busOwnInterface,
                         QStringLiteral("NameOwnerChanged"), {shortcutsService}, QString(),
                         receiver, ownerChanged);
    m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                         QStringLiteral("org.freedesktop.DBus.Local"),
                         QStringLiteral("Disconnected"), receiver, disconnected);
}

void ShortcutsBus::followKeys(QObject* receiver, const char* activated, const char* changed)
{
    follow(shortcutsPath, shortcutsInterface, QStringLiteral("Activated"), receiver, activated);
    follow(shortcutsPath, shortcutsInterface, QStringLiteral("ShortcutsChanged"), receiver,
           changed);
}

void ShortcutsBus::follow(const QString& path, const QString& interface, const QString& name,
                          QObject* receiver, const char* slot)
{
    m_connection.connect(QString(), path, interface, name, receiver, slot);
}

void ShortcutsBus::unfollow(const QString& path, const QString& interface, const QString& name,
                            QObject* receiver, const char* slot)
{
    m_connection.disconnect(QString(), path, interface, name, receiver, slot);
}

void ShortcutsBus::close(const QString& path, const QString& interface)
{
    m_connection.send(
        QDBusMessage::createMethodCall(shortcutsService, path, interface, QStringLiteral("Close")));
}

QString newPortalToken()
{
    return QStringLiteral("kelpa") + QUuid::createUuid().toString(QUuid::Id128);
}

QDBusMessage portalRegistration()
{
    QDBusMessage message = callOfPortal(QStringLiteral("org.freedesktop.host.portal.Registry"),
                                        QStringLiteral("Register"));
    message << QStringLiteral("org.kelpa.Kelpa") << QVariantMap();
    return message;
}

QDBusMessage shortcutsVersionQuestion()
{
    QDBusMessage message =
        callOfPortal(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message << shortcutsInterface << QStringLiteral("version");
    return message;
}

QDBusMessage shortcutsCall(const QString& method)
{
    return callOfPortal(shortcutsInterface, method);
}

bool isOwnerChange(const QDBusMessage& signal)
{
    return signal.service() == busOwnInterface && signal.signature() == QStringLiteral("sss");
}

PortalResponse portalResponse(const QDBusMessage& signal)
{
    constexpr uint codeGiven = 0;
    constexpr uint codeCancelled = 1;
    if (signal.signature() != QStringLiteral("ua{sv}"))
        return {};
    const uint code = signal.arguments().constFirst().toUInt();
    return {.outcome = code == codeGiven       ? PortalOutcome::given
                       : code == codeCancelled ? PortalOutcome::cancelled
                                               : PortalOutcome::failed,
            .results = qdbus_cast<QVariantMap>(signal.arguments().constLast())};
}

QString sessionOf(const QVariantMap& results)
{
    // Portals send it as a text, although it is a path.
    const QVariant handle = results.value(QStringLiteral("session_handle"));
    return handle.metaType() == QMetaType::fromType<QDBusObjectPath>()
               ? handle.value<QDBusObjectPath>().path()
               : handle.toString();
}

} // namespace kelpa
