#include "platform/freedesktop/bus/ApplicationService.h"

#include "platform/freedesktop/bus/PrimaryInstance.h"
#include "platform/freedesktop/bus/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QTest>

#include <gtest/gtest.h>

#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <future>
#include <vector>

namespace kelpa {
namespace {

using namespace std::chrono_literals;

const QString name = QStringLiteral("org.kelpa.Kelpa.test");

class ApplicationServiceTest : public testing::Test
{
protected:
    void SetUp() override { qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8()); }
    void TearDown() override
    {
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        QDBusConnection::disconnectFromBus(name);
        QDBusConnection::disconnectFromBus(QStringLiteral("another"));
    }

    QDBusConnection another()
    {
        return QDBusConnection::connectToBus(bus.address(), QStringLiteral("another"));
    }

    /// Returns when the bus has noticed.
    void endAnother()
    {
        const QString connection = another().baseService();
        QDBusConnection::disconnectFromBus(QStringLiteral("another"));
        EXPECT_TRUE(QTest::qWaitFor([&] { return !bus.hasOwner(connection); }, 10'000));
    }

    /// Activates as another process does, while this one handles its events.
    InstanceActivation activate(const QByteArray& startupID = {},
                                std::chrono::milliseconds limit = 10s)
    {
        auto answer = std::async(std::launch::async, [=] {
            return activatePrimaryInstance(name.toUtf8(), startupID, limit);
        });
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return answer.wait_for(0s) == std::future_status::ready; }, 20'000));
        return answer.get();
    }

    /// A call of the interface; the error's name, or "ok".
    QString call(const QString& method, const QVariantList& arguments)
    {
        QDBusMessage request =
            QDBusMessage::createMethodCall(name, QStringLiteral("/org/kelpa/Kelpa"),
                                           QStringLiteral("org.freedesktop.Application"), method);
        request.setArguments(arguments);
        const QDBusPendingReply<> reply = another().asyncCall(request);
        EXPECT_TRUE(QTest::qWaitFor([&] { return reply.isFinished(); }, 10'000));
        return reply.isError() ? reply.error().name() : QStringLiteral("ok");
    }

    PrivateBus bus;
    std::vector<QByteArray> requests;
    QStringList actions;
    ApplicationService service{
        name, {QStringLiteral("new-todo")}, [this](const ApplicationRequest& request) {
            requests.push_back(request.startupID);
            actions.append(request.action);
        }};
};

TEST_F(ApplicationServiceTest, A_request_activates_it_with_the_launchers_startup_id)
{
    EXPECT_EQ(service.claim(NameQueue::leave), NameClaim::owned);
    EXPECT_EQ(activate("menu_TIME12"), InstanceActivation::activated);
    EXPECT_EQ(activate(), InstanceActivation::activated);
    EXPECT_EQ(requests, (std::vector<QByteArray>{"menu_TIME12", ""}));
}

TEST_F(ApplicationServiceTest, Every_method_of_the_interface_activates_it)
{
    ASSERT_EQ(service.claim(NameQueue::leave), NameClaim::owned);
    EXPECT_EQ(call(QStringLiteral("Open"),
                   {QStringList{QStringLiteral("file:///a")},
                    QVariantMap{{QStringLiteral("activation-token"), QStringLiteral("token")}}}),
              QStringLiteral("ok"));
    EXPECT_EQ(call(QStringLiteral("Activate"), {QVariantMap()}), QStringLiteral("ok"));
    EXPECT_EQ(requests, (std::vector<QByteArray>{"token", ""}));
}

TEST_F(ApplicationServiceTest, An_action_of_the_desktop_entry_is_reported_by_its_name)
{
    ASSERT_EQ(service.claim(NameQueue::leave), NameClaim::owned);
    EXPECT_EQ(call(QStringLiteral("ActivateAction"),
                   {QStringLiteral("new-todo"), QVariantList(),
                    QVariantMap{{QStringLiteral("activation-token"), QStringLiteral("token")}}}),
              QStringLiteral("ok"));
    EXPECT_EQ(requests, std::vector<QByteArray>{"token"});
    EXPECT_EQ(actions, QStringList{QStringLiteral("new-todo")});
}

TEST_F(ApplicationServiceTest, An_unknown_method_is_refused_and_does_nothing)
{
    ASSERT_EQ(service.claim(NameQueue::leave), NameClaim::owned);
    EXPECT_EQ(call(QStringLiteral("ActivateAction"),
                   {QStringLiteral("show"), QVariantList(), QVariantMap()}),
              QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
    EXPECT_NE(call(QStringLiteral("Activate"), {QStringLiteral("not a map")}),
              QStringLiteral("ok"));
    EXPECT_NE(call(QStringLiteral("Explode"), {}), QStringLiteral("ok"));
    EXPECT_EQ(requests, std::vector<QByteArray>{});
}

TEST_F(ApplicationServiceTest, A_name_that_another_program_owns_stays_with_it)
{
    ASSERT_TRUE(another().registerService(name));
    EXPECT_EQ(service.claim(NameQueue::leave), NameClaim::takenByAnother);
}

TEST_F(ApplicationServiceTest, A_name_that_was_queued_for_is_owned_when_its_owner_ends)
{
    ASSERT_TRUE(another().registerService(name));
    ASSERT_EQ(service.claim(NameQueue::leave), NameClaim::takenByAnother);
    EXPECT_EQ(service.claim(NameQueue::join), NameClaim::takenByAnother);
    endAnother();
    EXPECT_EQ(activate("menu_TIME12"), InstanceActivation::activated);
    EXPECT_EQ(requests, std::vector<QByteArray>{"menu_TIME12"});
}

TEST_F(ApplicationServiceTest, A_name_that_was_not_queued_for_is_nobodys_when_its_owner_ends)
{
    ASSERT_TRUE(another().registerService(name));
    ASSERT_EQ(service.claim(NameQueue::leave), NameClaim::takenByAnother);
    endAnother();
    EXPECT_EQ(activate(), InstanceActivation::notRunning);
}

TEST_F(ApplicationServiceTest, Without_an_owner_of_the_name_no_instance_runs)
{
    EXPECT_EQ(activate(), InstanceActivation::notRunning);
}

TEST_F(ApplicationServiceTest, Without_a_bus_no_instance_is_found_and_no_name_claimed)
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    EXPECT_EQ(service.claim(NameQueue::leave), NameClaim::noBus);
    EXPECT_EQ(activate(), InstanceActivation::notRunning);
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", "/nonexistent");
    EXPECT_EQ(activate(), InstanceActivation::notRunning);
    qunsetenv("XDG_RUNTIME_DIR");
}

TEST_F(ApplicationServiceTest, An_instance_that_does_not_reply_is_waited_for_until_the_limit)
{
    Application hung(bus);
    hung.freeze();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(activatePrimaryInstance(hung.busName().toUtf8(), {}, 300ms),
              InstanceActivation::timedOut);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
}

TEST_F(ApplicationServiceTest, An_instance_that_does_not_reply_is_waited_for_until_the_interruption)
{
    Application hung(bus);
    hung.freeze();
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    auto answer = std::async(std::launch::async, [itsName = hung.busName().toUtf8(), &pipe] {
        return activatePrimaryInstance(itsName, {}, 20s, pipe.at(0));
    });
    ASSERT_EQ(answer.wait_for(200ms), std::future_status::timeout);
    ASSERT_EQ(::write(pipe.at(1), "x", 1), 1);
    EXPECT_EQ(answer.wait_for(10s), std::future_status::ready);
    EXPECT_EQ(answer.get(), InstanceActivation::interrupted);
    ::close(pipe.at(0));
    ::close(pipe.at(1));
}

TEST_F(ApplicationServiceTest, An_instance_that_ends_before_it_replies_is_not_waited_for)
{
    Application dying(bus);
    dying.freeze();
    const QByteArray itsName = dying.busName().toUtf8();
    auto answer = std::async(std::launch::async,
                             [itsName] { return activatePrimaryInstance(itsName, {}, 20s); });
    ASSERT_EQ(answer.wait_for(200ms), std::future_status::timeout);
    ::kill(dying.process(), SIGKILL);
    EXPECT_EQ(answer.get(), InstanceActivation::ended);
}

} // namespace
} // namespace kelpa
