#include "platform/freedesktop/toolkit/ToolkitBuses.h"

#include <QAccessible>
#include <QDBusConnection>
#include <QString>

namespace kelpa {

namespace {

// The names that the toolkit gives to its connections. Where there is one of that name already, it
// takes that one and does not connect.
const QString sessionConnection = QStringLiteral("qt_default_session_bus");
const QString accessibilityConnection = QStringLiteral("a11y");
const QString inputMethodConnection = QStringLiteral("QIBusProxy");

/// An address at which a connection fails at once.
const QString nowhere = QStringLiteral("unix:path=/dev/null");

} // namespace

Diversion diversionFor(const BusStates& states)
{
    if (states.session == BusState::silent)
        return Diversion::allBuses;
    return states.accessibility == BusState::silent ? Diversion::accessibility : Diversion::nothing;
}

ToolkitBuses::ToolkitBuses(BusWatch& buses)
    : m_buses(buses), m_diversion(diversionFor(buses.await()))
{
    if (buses.states().inputMethod == BusState::silent)
        QDBusConnection::connectToBus(nowhere, inputMethodConnection);
    if (m_diversion == Diversion::nothing)
        return;
    QString standIn = m_buses.standInAddress();
    if (standIn.isEmpty())
        standIn = nowhere;
    if (m_diversion == Diversion::allBuses) {
        // The library below the toolkit reads the variable once and keeps the address.
        setVariable("DBUS_SESSION_BUS_ADDRESS", standIn.toLocal8Bit());
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, sessionConnection);
    } else {
        QDBusConnection::connectToBus(standIn, sessionConnection);
    }
    // The X server may name the bus, too.
    QDBusConnection::connectToBus(nowhere, accessibilityConnection);
    setVariable("AT_SPI_BUS_ADDRESS", std::nullopt);
    setVariable("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", std::nullopt);
}

ToolkitBuses::~ToolkitBuses()
{
    restoreVariables();
}

void ToolkitBuses::connectToolkit()
{
    if (m_diversion == Diversion::nothing)
        return;
    // Asked whether it is active, the toolkit's accessibility bridge is created and connects.
    QAccessible::isActive();
    restoreVariables();
    m_buses.whenAccessibilityAnswers([this] {
        QDBusConnection::disconnectFromBus(accessibilityConnection);
        m_buses.announceAccessibility();
    });
}

void ToolkitBuses::connectAhead()
{
    // The connection has a thread of its own, and is for all threads.
    if (m_diversion == Diversion::nothing)
        m_connecting = std::jthread([] { QDBusConnection::sessionBus(); });
}

void ToolkitBuses::setVariable(const char* name, const std::optional<QByteArray>& value)
{
    m_variables.emplace_back(name, qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name))
                                                                   : std::nullopt);
    if (value)
        qputenv(name, *value);
    else
        qunsetenv(name);
}

void ToolkitBuses::restoreVariables()
{
    for (const auto& [name, value] : std::exchange(m_variables, {})) {
        if (value)
            qputenv(name, *value);
        else
            qunsetenv(name);
    }
}

} // namespace kelpa
