// A portal of shortcuts that does not do what it should, and signals of others.
#include "platform/freedesktop/portals/ShortcutsPortalFixture.h"

#include "support/OtherBusAddress.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <array>

namespace kelpa::test {
namespace {

TEST_F(ShortcutsPortalTest, Keys_of_others_and_of_other_sessions_do_nothing)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    giveKeys();
    press(QStringLiteral("open-door"));
    press({});
    press(QStringLiteral("new-todo"), session + QStringLiteral("2"));
    const QString activated = QStringLiteral("Activated");
    const QVariantList right{QVariant::fromValue(QDBusObjectPath(session)),
                             QStringLiteral("new-todo"), QVariant::fromValue<qulonglong>(7),
                             QVariantMap()};
    portal->emitSignal(portalPath, shortcutsInterface, activated, {});
    portal->emitSignal(portalPath, shortcutsInterface, activated, right.mid(0, 3));
    portal->emitSignal(portalPath, shortcutsInterface, activated,
                       {session, right.at(1), right.at(2), right.at(3)});
    // Any program of the session may send a signal of that name.
    QDBusConnection stranger =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("stranger"));
    QDBusMessage forged = QDBusMessage::createSignal(portalPath, shortcutsInterface, activated);
    forged.setArguments(right);
    EXPECT_TRUE(stranger.send(forged));
    QTest::qWait(50);
    QDBusConnection::disconnectFromBus(QStringLiteral("stranger"));
    EXPECT_TRUE(pressed.empty());
    press(QStringLiteral("new-todo"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return pressed.size() == 1; }));
}

TEST_F(ShortcutsPortalTest, What_the_portal_does_not_give_is_told)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    const std::array<QVariantList, 6> wrongSessions{
        QVariantList{2U, QVariantMap{{QStringLiteral("session_handle"), session}}},
        QVariantList{1U, QVariantMap{{QStringLiteral("session_handle"), session}}},
        QVariantList{0U, QVariantMap()},
        QVariantList{0U, QVariantMap{{QStringLiteral("session_handle"), 7}}},
        QVariantList{0U, QVariantMap{{QStringLiteral("session_handle"), QStringLiteral("none")}}},
        QVariantList{QStringLiteral("yes")}};
    int asked = 0;
    for (const QVariantList& response : wrongSessions) {
        shortcuts->choose();
        ASSERT_TRUE(isCalled(create, ++asked));
        portal->respondWith(response);
        EXPECT_TRUE(QTest::qWaitFor([&] { return failures == asked; })) << asked;
    }
    EXPECT_EQ(portal->count(bindCall), 0);
    const std::array<QVariantList, 4> wrongKeys{
        QVariantList{2U, listOf(keys)}, QVariantList{0U, QVariantMap()},
        QVariantList{0U, QVariantMap{{QStringLiteral("shortcuts"), QStringLiteral("all")}}},
        QVariantList{QStringLiteral("yes")}};
    int bound = 0;
    for (const QVariantList& response : wrongKeys) {
        shortcuts->choose();
        giveSession(++asked);
        ASSERT_TRUE(isCalled(bindCall, ++bound));
        portal->respondWith(response);
        EXPECT_TRUE(QTest::qWaitFor([&] { return failures == asked; })) << asked;
        EXPECT_EQ(shortcuts->state().standing, offered);
    }
    EXPECT_FALSE(isChosen());
}

TEST_F(ShortcutsPortalTest, One_that_refuses_or_never_takes_a_call_has_failed)
{
    begin(200ms);
    ASSERT_TRUE(becomes(offered));
    int expected = 0;
    for (bool StandInPortal::*const fault :
         {&StandInPortal::isRefusing, &StandInPortal::isHanging, &StandInPortal::isWrong}) {
        (*portal).*fault = true;
        shortcuts->choose();
        EXPECT_EQ(failures, expected) << "nothing waits for the portal";
        ++expected;
        EXPECT_TRUE(QTest::qWaitFor([&] { return failures == expected; })) << expected;
        (*portal).*fault = false;
    }
}

TEST_F(ShortcutsPortalTest, A_session_that_is_never_answered_has_failed)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    ASSERT_TRUE(isCalled(create));
    settle();
    EXPECT_EQ(failures, 0);
    scheduler.advance(10s);
    EXPECT_EQ(failures, 1);
    // It answers after all.
    portal->respond(0, {{QStringLiteral("session_handle"), session}});
    settle();
    EXPECT_EQ(portal->count(bindCall), 0);
}

TEST_F(ShortcutsPortalTest, A_dialog_that_nobody_answers_gives_way_to_the_next)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    giveSession();
    ASSERT_TRUE(isCalled(bindCall));
    const QString first = portal->requestPath();
    scheduler.advance(10min);
    EXPECT_EQ(failures, 0) << "a person may take long";
    shortcuts->choose();
    EXPECT_TRUE(isCalled(closeCall, 2)) << "the dialog and its session";
    giveSession(2);
    ASSERT_TRUE(isCalled(bindCall, 2));
    portal->respondAt(first, {0U, listOf(keys)});
    settle();
    EXPECT_EQ(shortcuts->state().standing, offered) << "an answer to the dialog that is gone";
    portal->respond(0, listOf(keys));
    EXPECT_TRUE(becomes(given));
}

TEST_F(ShortcutsPortalTest, A_portal_that_starts_anew_gives_the_keys_again)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    giveKeys();
    portal->leave();
    EXPECT_TRUE(becomes(absent));
    press(QStringLiteral("new-todo"));
    settle();
    EXPECT_TRUE(pressed.empty());
    shortcuts->choose();
    EXPECT_EQ(failures, 1) << "there is nobody to ask";
    portal->comeBack();
    giveKeys(2);
    EXPECT_EQ(shortcuts->state().keys, keys);
}

TEST_F(ShortcutsPortalTest, A_portal_that_ends_during_the_dialog_has_failed)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    giveSession();
    ASSERT_TRUE(isCalled(bindCall));
    portal->leave();
    EXPECT_TRUE(QTest::qWaitFor([this] { return failures == 1; }));
    portal->comeBack();
    EXPECT_TRUE(becomes(offered));
    settle();
    EXPECT_EQ(portal->count(create), 1) << "the person has not chosen yet";
}

TEST_F(ShortcutsPortalTest, Without_a_portal_of_shortcuts_nothing_is_offered)
{
    portal->version = std::nullopt;
    begin();
    settle();
    EXPECT_EQ(shortcuts->state().standing, absent);
    end();
    portal.reset();
    begin();
    settle();
    EXPECT_EQ(shortcuts->state().standing, absent);
    shortcuts->stop();
    const OtherBusAddress nowhere("unix:path=/dev/null");
    begin();
    settle();
    EXPECT_EQ(shortcuts->state().standing, absent);
    EXPECT_EQ(changes, 0);
}

TEST_F(ShortcutsPortalTest, The_name_of_a_key_is_a_short_text_of_one_line)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    giveSession();
    ASSERT_TRUE(isCalled(bindCall));
    portal->respond(0, listOf({{bringForward, QStringLiteral(" Ctrl\n+K ")},
                               {newTodo, QString(1'000'000, u'K')}}));
    ASSERT_TRUE(becomes(given));
    EXPECT_EQ(shortcuts->state().keys, (Keys{{bringForward, QStringLiteral("Ctrl +K")}}));
}

} // namespace
} // namespace kelpa::test
