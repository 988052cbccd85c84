// Another session bus for what connects by its address.
#pragma once

#include <QByteArray>

namespace kelpa::test {

/// Puts the session bus elsewhere for as long as it lives.
class OtherBusAddress
{
public:
    explicit OtherBusAddress(const QByteArray& address)
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    }
    OtherBusAddress(const OtherBusAddress&) = delete;
    OtherBusAddress& operator=(const OtherBusAddress&) = delete;
    ~OtherBusAddress() { qputenv("DBUS_SESSION_BUS_ADDRESS", m_before); }

private:
    const QByteArray m_before = qgetenv("DBUS_SESSION_BUS_ADDRESS");
};

} // namespace kelpa::test
