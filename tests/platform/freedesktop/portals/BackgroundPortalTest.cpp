// Autostart by a portal on a message bus of its own.
#include "platform/freedesktop/portals/BackgroundPortal.h"

#include "platform/freedesktop/bus/PrivateBus.h"
#include "platform/freedesktop/portals/StandInPortal.h"
#include "support/OtherBusAddress.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QTest>

#include <array>
#include <future>
#include <memory>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

const QString method = QStringLiteral("RequestBackground");
const QString autostart = QStringLiteral("autostart");
const QString background = QStringLiteral("background");

class BackgroundPortalTest : public testing::Test
{
protected:
    void SetUp() override
    {
        portal = std::make_unique<StandInPortal>();
        ASSERT_TRUE(portal->isOnBus());
    }

    /// The portal is served on this thread.
    void ask(bool isOn)
    {
        answer = std::async(std::launch::async, [=, this] {
            return askBackgroundPortal(
                {.command = {QStringLiteral("/app/bin/kelpa"), QStringLiteral("--hidden")},
                 .isOn = isOn},
                stop.get_token(), limits);
        });
    }
    bool isAsked(int times = 1)
    {
        return QTest::qWaitFor([&] { return portal->count(method) == times; }) &&
               (portal->isHanging ||
                QTest::qWaitFor([this] { return !portal->requestPath().isEmpty(); }));
    }
    bool isAnswered()
    {
        return QTest::qWaitFor([this] { return answer.wait_for(0s) == std::future_status::ready; },
                               10'000);
    }
    bool ends(AutostartOutcome expected) { return isAnswered() && answer.get() == expected; }

    std::unique_ptr<StandInPortal> portal;
    BackgroundLimits limits;
    std::stop_source stop;
    std::future<AutostartOutcome> answer;
};

TEST_F(BackgroundPortalTest, Is_asked_to_start_the_command_without_a_window)
{
    ask(true);
    ASSERT_TRUE(isAsked());
    EXPECT_EQ(portal->argumentsOf(method).constFirst().toString(), QString());
    const QVariantMap options = portal->optionsOf(method);
    EXPECT_EQ(options.value(autostart), QVariant(true));
    EXPECT_EQ(options.value(QStringLiteral("commandline")).toStringList(),
              (QStringList{QStringLiteral("/app/bin/kelpa"), QStringLiteral("--hidden")}));
    EXPECT_EQ(options.value(QStringLiteral("dbus-activatable")), QVariant(false));
    EXPECT_EQ(portal->count(QStringLiteral("Register")), 0) << "the sandbox says who it is";
    EXPECT_FALSE(answer.wait_for(0s) == std::future_status::ready) << "the person has not answered";
    portal->respond(0, {{background, true}, {autostart, true}});
    EXPECT_TRUE(ends(AutostartOutcome::done));
}

TEST_F(BackgroundPortalTest, Answers_for_the_person_or_fails)
{
    struct Case
    {
        bool isOn;
        QVariantList response;
        AutostartOutcome outcome;
    };
    const std::array cases{
        Case{true, {0U, QVariantMap{{autostart, false}}}, AutostartOutcome::refused},
        Case{true, {1U, QVariantMap{{autostart, false}}}, AutostartOutcome::refused},
        Case{true, {1U, QVariantMap{{autostart, true}}}, AutostartOutcome::refused},
        Case{true, {2U, QVariantMap{{autostart, true}}}, AutostartOutcome::failed},
        Case{true, {0U, QVariantMap()}, AutostartOutcome::failed},
        Case{true, {0U, QVariantMap{{autostart, QStringLiteral("yes")}}}, AutostartOutcome::failed},
        Case{true, {QStringLiteral("yes")}, AutostartOutcome::failed},
        Case{false, {0U, QVariantMap{{autostart, false}}}, AutostartOutcome::done},
        Case{false, {1U, QVariantMap{{autostart, false}}}, AutostartOutcome::failed},
        Case{false, {0U, QVariantMap{{autostart, true}}}, AutostartOutcome::failed},
        Case{false, {2U, QVariantMap()}, AutostartOutcome::failed},
    };
    int asked = 0;
    for (const Case& each : cases) {
        ask(each.isOn);
        ASSERT_TRUE(isAsked(++asked));
        EXPECT_EQ(portal->optionsOf(method).value(autostart), QVariant(each.isOn));
        portal->respondWith(each.response);
        EXPECT_TRUE(ends(each.outcome)) << asked;
    }
}

TEST_F(BackgroundPortalTest, An_older_portal_chooses_the_path_of_the_request_itself)
{
    portal->ownPath = QStringLiteral("/org/freedesktop/portal/desktop/request/old");
    ask(true);
    ASSERT_TRUE(isAsked());
    // The path is known to the asker a moment later than to the portal.
    ASSERT_TRUE(QTest::qWaitFor([this] {
        portal->respond(0, {{autostart, true}});
        QTest::qWait(20);
        return answer.wait_for(0s) == std::future_status::ready;
    }));
    EXPECT_TRUE(ends(AutostartOutcome::done));
}

TEST_F(BackgroundPortalTest, One_that_refuses_the_call_or_never_takes_it_fails)
{
    limits.step = 300ms;
    for (bool StandInPortal::*const fault :
         {&StandInPortal::isRefusing, &StandInPortal::isHanging, &StandInPortal::isWrong}) {
        (*portal).*fault = true;
        ask(true);
        EXPECT_TRUE(ends(AutostartOutcome::failed));
        (*portal).*fault = false;
    }
}

TEST_F(BackgroundPortalTest, A_person_who_never_answers_is_not_waited_for_without_end)
{
    limits.person = 200ms;
    ask(true);
    ASSERT_TRUE(isAsked());
    EXPECT_TRUE(ends(AutostartOutcome::failed));
    // The portal closes the requests of connections that end.
    EXPECT_TRUE(QTest::qWaitFor([this] {
        return !portal->connection().interface()->isServiceRegistered(portal->sender()).value();
    }));
}

TEST_F(BackgroundPortalTest, Who_ends_meanwhile_waits_no_longer)
{
    ask(true);
    ASSERT_TRUE(isAsked());
    const auto before = std::chrono::steady_clock::now();
    stop.request_stop();
    EXPECT_TRUE(ends(AutostartOutcome::failed));
    EXPECT_LT(std::chrono::steady_clock::now() - before, 900ms) << "sooner than the next check";
}

TEST_F(BackgroundPortalTest, One_that_goes_or_is_not_there_fails)
{
    ask(true);
    ASSERT_TRUE(isAsked());
    portal->leave();
    EXPECT_TRUE(ends(AutostartOutcome::failed));
    ask(true);
    EXPECT_TRUE(ends(AutostartOutcome::failed));
}

TEST_F(BackgroundPortalTest, A_bus_that_is_missing_or_hangs_fails)
{
    {
        const OtherBusAddress nowhere("unix:path=/dev/null");
        ask(true);
        EXPECT_TRUE(ends(AutostartOutcome::failed));
    }
    PrivateBus bus;
    const OtherBusAddress address(bus.address().toUtf8());
    bus.freeze();
    limits.step = 300ms;
    ask(true);
    EXPECT_TRUE(ends(AutostartOutcome::failed));
    bus.thaw();
}

} // namespace
} // namespace kelpa::test
