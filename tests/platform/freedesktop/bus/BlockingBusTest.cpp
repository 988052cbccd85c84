#include "platform/freedesktop/bus/BlockingBus.h"

#include "platform/freedesktop/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QDBusConnection>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

constexpr const char* someName = "org.kelpa.Test";

std::string memberOf(GDBusMessage* message)
{
    const char* const member = g_dbus_message_get_member(message);
    return member == nullptr ? std::string() : std::string(member);
}

class BlockingBusTest : public testing::Test
{
public:
    ~BlockingBusTest() override { QDBusConnection::disconnectFromBus(QStringLiteral("owner")); }

protected:
    BusCallOutcome outcomeOf(const BusAddressee& to, const char* method,
                             const char* replyType = "(s)")
    {
        return bus.call(to, method, nullptr, replyType, 300ms).outcome;
    }

    /// A program that has the name takes part from now on.
    void takeName() const
    {
        const QString connection = QStringLiteral("owner");
        QDBusConnection::disconnectFromBus(connection);
        QDBusConnection::connectToBus(daemon.address(), connection)
            .registerService(QString::fromLatin1(someName));
    }

    bool hearsOfNames(int atLeast) const
    {
        const auto end = std::chrono::steady_clock::now() + 20s;
        while (heard < atLeast && std::chrono::steady_clock::now() < end)
            std::this_thread::yield();
        return heard >= atLeast;
    }

    PrivateBus daemon;
    std::atomic<int> heard = 0;
    BlockingBus bus{
        daemon.address().toStdString(),
        {std::string("type='signal',member='NameOwnerChanged',arg0='") + someName + "'"},
        [this](GDBusConnection*, GDBusMessage* message) {
            heard += memberOf(message) == "NameOwnerChanged" ? 1 : 0;
            return false;
        }};
};

TEST_F(BlockingBusTest, What_came_of_a_call_is_told_apart)
{
    EXPECT_EQ(outcomeOf(busItself, "GetId"), BusCallOutcome::answered);
    EXPECT_EQ(outcomeOf(busItself, "NoSuchMethod"), BusCallOutcome::absent);
    EXPECT_EQ(outcomeOf({someName, "/", someName}, "GetId"), BusCallOutcome::absent);
    EXPECT_EQ(outcomeOf({{}, "/", someName}, "GetId"), BusCallOutcome::absent);
    EXPECT_EQ(outcomeOf(busItself, "GetId", "(u)"), BusCallOutcome::refused);
    const BusReply refused = bus.call(busItself, "GetNameOwner", nullptr, "(s)", 300ms);
    EXPECT_EQ(refused.outcome, BusCallOutcome::refused);
    EXPECT_EQ(refused.error, "org.freedesktop.DBus.Error.InvalidArgs");
    EXPECT_EQ(BlockingBus({}, {}, {}).call(busItself, "GetId", nullptr, "(s)", 300ms).outcome,
              BusCallOutcome::silent);
}

TEST_F(BlockingBusTest, A_bus_that_hangs_costs_no_more_than_the_limit)
{
    ASSERT_EQ(outcomeOf(busItself, "GetId"), BusCallOutcome::answered);
    daemon.freeze();
    EXPECT_EQ(outcomeOf(busItself, "GetId"), BusCallOutcome::silent);
    EXPECT_EQ(bus.ownerOf(someName, 100ms), std::nullopt);
    // Nor does a connection that cannot be opened.
    BlockingBus late(daemon.address().toStdString(), {}, {});
    EXPECT_EQ(late.call(busItself, "GetId", nullptr, "(s)", 100ms).outcome, BusCallOutcome::silent);
    daemon.thaw();
    EXPECT_EQ(outcomeOf(busItself, "GetId"), BusCallOutcome::answered);
}

TEST_F(BlockingBusTest, The_owner_of_a_name_is_known_by_its_unique_one)
{
    EXPECT_EQ(bus.ownerOf(someName, 300ms), std::string());
    takeName();
    const std::string unique = bus.ownerOf(someName, 300ms).value_or(std::string());
    EXPECT_TRUE(unique.starts_with(':')) << unique;
    EXPECT_NE(unique, bus.ownName());
}

TEST_F(BlockingBusTest, Signals_are_received_over_the_next_connection_too)
{
    EXPECT_EQ(bus.ownName(), std::string());
    ASSERT_EQ(outcomeOf(busItself, "GetId"), BusCallOutcome::answered);
    takeName();
    ASSERT_TRUE(hearsOfNames(1));
    daemon.stop();
    EXPECT_NE(outcomeOf(busItself, "GetId"), BusCallOutcome::answered);
    daemon.start();
    ASSERT_EQ(outcomeOf(busItself, "GetId"), BusCallOutcome::answered);
    const int before = heard;
    takeName();
    EXPECT_TRUE(hearsOfNames(before + 1));
}

} // namespace
} // namespace kelpa::test
