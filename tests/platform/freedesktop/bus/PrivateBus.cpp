#include "platform/freedesktop/bus/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QVariant>

#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <stdexcept>

namespace kelpa {

namespace {

constexpr int busPatience = 10'000;

QString readLine(QProcess& process)
{
    while (!process.canReadLine()) {
        if (!process.waitForReadyRead(busPatience)) {
            throw std::runtime_error("a test program said nothing");
        }
    }
    return QString::fromUtf8(process.readLine()).trimmed();
}

/// Stops a child and waits until it is stopped: it may answer between the signal and that.
void stopChild(const QProcess& child)
{
    const auto process = static_cast<pid_t>(child.processId());
    ::kill(process, SIGSTOP);
    siginfo_t state{};
    while (::waitid(P_PID, static_cast<id_t>(process), &state, WSTOPPED | WEXITED | WNOWAIT) != 0 &&
           errno == EINTR) {
    }
}

} // namespace

PrivateBus::PrivateBus()
{
    configure({});
    // Without the unique id of the bus, which a later bus at the same address does not have.
    m_address = QStringLiteral("unix:path=") + m_directory.filePath(QStringLiteral("socket"));
    start();
}

void PrivateBus::configure(const QByteArray& rules)
{
    QFile configuration(m_directory.filePath(QStringLiteral("bus.conf")));
    if (!configuration.open(QIODevice::WriteOnly)) {
        throw std::runtime_error("the bus's configuration could not be written");
    }
    configuration.write(
        "<busconfig><type>session</type><listen>unix:path=" +
        m_directory.filePath(QStringLiteral("socket")).toUtf8() +
        "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
        "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/>"
        "<allow own=\"*\"/>" +
        rules + "</policy></busconfig>");
}

void PrivateBus::refuse(const QByteArray& method)
{
    configure(method.isEmpty() ? QByteArray()
                               : "<deny send_destination=\"org.freedesktop.DBus\" "
                                 "send_interface=\"org.freedesktop.DBus\" send_member=\"" +
                                     method + "\"/>");
    const QString name = QStringLiteral("configurer of ") + m_address;
    const QDBusMessage reply = QDBusConnection::connectToBus(m_address, name)
                                   .interface()
                                   ->call(QStringLiteral("ReloadConfig"));
    QDBusConnection::disconnectFromBus(name);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        throw std::runtime_error("the bus's configuration could not be read again");
    }
}

void PrivateBus::start()
{
    m_daemon.start(
        QStringLiteral("dbus-daemon"),
        {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
         QStringLiteral("--config-file=") + m_directory.filePath(QStringLiteral("bus.conf"))});
    // It prints its address once it listens.
    readLine(m_daemon);
}

bool PrivateBus::hasOwner(const QString& name)
{
    const QString connectionName = QStringLiteral("owners on ") + m_address;
    const QDBusConnection connection = QDBusConnection::connectToBus(m_address, connectionName);
    const bool isOwned = connection.interface()->isServiceRegistered(name);
    QDBusConnection::disconnectFromBus(connectionName);
    return isOwned;
}

PrivateBus::~PrivateBus()
{
    stop();
}

void PrivateBus::freeze()
{
    stopChild(m_daemon);
}

void PrivateBus::thaw()
{
    ::kill(static_cast<pid_t>(m_daemon.processId()), SIGCONT);
}

void PrivateBus::stop()
{
    m_daemon.kill();
    m_daemon.waitForFinished(busPatience);
}

Registry::Registry(const PrivateBus& bus)
    : m_connectionName(QStringLiteral("registry of ") + bus.address())
{
    registerBusTypes();
    QDBusConnection connection = QDBusConnection::connectToBus(bus.address(), m_connectionName);
    if (!connection.registerVirtualObject(accessibleRoot(), this) ||
        !connection.registerService(QStringLiteral("org.a11y.atspi.Registry"))) {
        throw std::runtime_error("the registry is not on the bus");
    }
}

Registry::~Registry()
{
    QDBusConnection::disconnectFromBus(m_connectionName);
}

QString Registry::introspect(const QString& /*path*/) const
{
    return {};
}

bool Registry::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    ++asked;
    if (isSilent) {
        return true;
    }
    BusObjects objects;
    for (const QString& name : applications) {
        objects.append({name, QDBusObjectPath(accessibleRoot())});
    }
    connection.send(message.createReply(QVariant::fromValue(objects)));
    return true;
}

Launcher::Launcher(const PrivateBus& session)
    : m_connectionName(QStringLiteral("launcher on ") + session.address())
{
    QDBusConnection connection = QDBusConnection::connectToBus(session.address(), m_connectionName);
    if (!connection.registerVirtualObject(QStringLiteral("/org/a11y/bus"), this) ||
        !connection.registerService(QStringLiteral("org.a11y.Bus"))) {
        throw std::runtime_error("the launcher is not on the bus");
    }
}

Launcher::~Launcher()
{
    QDBusConnection::disconnectFromBus(m_connectionName);
}

QString Launcher::introspect(const QString& /*path*/) const
{
    return {};
}

bool Launcher::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    if (!isSilent) {
        connection.send(message.createReply(busAddress));
    }
    return true;
}

Application::Application(const PrivateBus& bus)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(KELPA_ACCESSIBILITY_PEER), {bus.address()});
    m_busName = readLine(m_process);
}

Application::~Application()
{
    kill(static_cast<pid_t>(m_process.processId()), SIGCONT);
    m_process.kill();
    m_process.waitForFinished(busPatience);
}

void Application::behave(const QJsonObject& behaviour)
{
    m_process.write(QJsonDocument(behaviour).toJson(QJsonDocument::Compact) + '\n');
    QString line;
    while ((line = readLine(m_process)) != QStringLiteral("ready")) {
        m_calls.append(line);
    }
}

int Application::called(const QString& method)
{
    m_process.waitForReadyRead(0);
    while (m_process.canReadLine()) {
        m_calls.append(readLine(m_process));
    }
    return static_cast<int>(m_calls.count(method));
}

void Application::freeze()
{
    stopChild(m_process);
}

QJsonObject documentOfPeer(const QString& key, const QString& location, const QString& name, int x,
                           int y, int width, int height)
{
    return {{QStringLiteral("attributes"), QJsonObject{{key, location}}},
            {QStringLiteral("name"), name},
            {QStringLiteral("extents"), QJsonArray{x, y, width, height}}};
}

} // namespace kelpa
