// The toolkit's connection to a real session bus.
#include "platform/freedesktop/toolkit/ToolkitBuses.h"

#include "platform/freedesktop/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QTest>

namespace kelpa {
namespace {

TEST(ToolkitBuses, The_toolkit_connects_ahead_while_this_thread_goes_on)
{
    PrivateBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    const QDBusConnection probe =
        QDBusConnection::connectToBus(bus.address(), QStringLiteral("probe"));
    const auto clients = [&probe] {
        const QStringList names = probe.interface()->registeredServiceNames();
        return names.filter(QStringLiteral(":")).size();
    };
    const qsizetype before = clients();
    // It knows of no bus, and so takes none for silent.
    BusWatch watch{BusWatchOptions{}};
    ToolkitBuses buses(watch);
    bus.freeze();
    // Returns though nobody answers.
    buses.connectAhead();
    bus.thaw();
    EXPECT_TRUE(QTest::qWaitFor([&] { return clients() == before + 1; }, 20'000));
}

} // namespace
} // namespace kelpa
