// Keys of the desktop by a portal on a message bus of its own.
#include "platform/freedesktop/portals/ShortcutsPortalFixture.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>

#include <array>

namespace kelpa::test {
namespace {

TEST_F(ShortcutsPortalTest, Shows_no_dialog_before_the_person_wants_one)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    settle();
    EXPECT_EQ(portal->calls(), QStringList());
}

TEST_F(ShortcutsPortalTest, Gives_the_keys_that_the_person_chooses_and_tells_when_they_are_pressed)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    giveKeys();
    EXPECT_EQ(shortcuts->state().keys, keys);
    EXPECT_EQ(failures, 0);

    const QVariantList arguments = portal->argumentsOf(bindCall);
    ASSERT_EQ(arguments.size(), 4);
    EXPECT_EQ(arguments.at(0).value<QDBusObjectPath>().path(), session);
    const auto argument = arguments.at(1).value<QDBusArgument>();
    ASSERT_EQ(argument.currentSignature(), QStringLiteral("a(sa{sv})"));
    const auto asked = qdbus_cast<QList<PortalShortcut>>(argument);
    ASSERT_EQ(asked.size(), 2);
    const QString description = QStringLiteral("description");
    EXPECT_EQ(asked.at(0).id, QStringLiteral("bring-forward"));
    EXPECT_EQ(asked.at(0).properties.value(description), QStringLiteral("Kelpa aufrufen"));
    EXPECT_EQ(asked.at(1).id, QStringLiteral("new-todo"));
    EXPECT_EQ(asked.at(1).properties.value(description), QStringLiteral("Neue Aufgabe"));

    press(QStringLiteral("new-todo"));
    press(QStringLiteral("bring-forward"), session,
          {{QStringLiteral("activation_token"), QStringLiteral("let-me")}});
    EXPECT_TRUE(QTest::qWaitFor([this] { return pressed.size() == 2; }));
    EXPECT_EQ(pressed, (Pressed{{newTodo, {}}, {bringForward, "let-me"}}));
}

TEST_F(ShortcutsPortalTest, Are_there_at_the_next_start_without_the_person)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    giveKeys();
    EXPECT_TRUE(isChosen());
    end();

    begin();
    giveKeys();
    EXPECT_EQ(shortcuts->state().keys, keys);
    end();

    // Of another board, which would have the same keys.
    board = QStringLiteral("/home/a/other.sqlite");
    begin();
    ASSERT_TRUE(becomes(offered));
    settle();
    EXPECT_EQ(portal->count(create), 0);
}

TEST_F(ShortcutsPortalTest, A_person_who_declines_is_not_asked_again)
{
    const std::array<std::pair<uint, QVariantMap>, 2> declined{std::pair{1U, QVariantMap()},
                                                               std::pair{0U, listOf({})}};
    for (const auto& [code, results] : declined) {
        begin();
        ASSERT_TRUE(becomes(offered));
        shortcuts->choose();
        giveKeys();
        end();
        begin();
        giveSession();
        ASSERT_TRUE(isCalled(bindCall));
        portal->respond(code, results);
        EXPECT_TRUE(isCalled(closeCall)) << "the session is over";
        settle();
        EXPECT_EQ(shortcuts->state().standing, offered);
        EXPECT_EQ(failures, 0) << "it was the person's own choice";
        EXPECT_FALSE(isChosen());
        end();
    }
}

TEST_F(ShortcutsPortalTest, Changed_keys_are_followed_and_a_closed_session_has_none)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    giveKeys();
    const QString changed = QStringLiteral("ShortcutsChanged");
    const Keys one{{newTodo, QStringLiteral("F9")}};
    const auto list = [](const Keys& of) { return listOf(of).value(QStringLiteral("shortcuts")); };
    portal->emitSignal(portalPath, shortcutsInterface, changed,
                       {QVariant::fromValue(QDBusObjectPath(session + u'2')), list({})});
    portal->emitSignal(portalPath, shortcutsInterface, changed,
                       {QVariant::fromValue(QDBusObjectPath(session)), list(one)});
    EXPECT_TRUE(QTest::qWaitFor([&] { return shortcuts->state().keys == one; }));
    const QString closed = QStringLiteral("Closed");
    portal->emitSignal(session, sessionInterface, closed, {QVariantMap()});
    EXPECT_TRUE(becomes(offered));
    press(QStringLiteral("new-todo"));
    settle();
    EXPECT_TRUE(pressed.empty());
    EXPECT_EQ(failures, 0);
    shortcuts->choose();
    giveKeys(2);
}

TEST_F(ShortcutsPortalTest, A_later_choice_shows_the_dialog_again)
{
    portal->version = 2U;
    begin();
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    giveKeys();
    shortcuts->choose();
    ASSERT_TRUE(isCalled(configure));
    EXPECT_EQ(portal->argumentsOf(configure).constFirst().value<QDBusObjectPath>().path(), session);
    EXPECT_EQ(shortcuts->state().standing, given) << "the keys stay meanwhile";
    EXPECT_EQ(portal->count(create), 1);
    end();

    // The first version has no such method.
    portal->version = 1U;
    begin();
    giveKeys();
    shortcuts->choose();
    giveKeys(2);
    EXPECT_EQ(portal->count(configure), 0);
}

TEST_F(ShortcutsPortalTest, A_second_look_that_is_cancelled_keeps_the_keys)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    giveKeys();
    shortcuts->choose();
    giveSession(2);
    ASSERT_TRUE(isCalled(bindCall, 2));
    portal->respond(1, {});
    giveKeys(3);
    EXPECT_EQ(shortcuts->state().keys, keys);
    EXPECT_TRUE(isChosen());
    EXPECT_EQ(failures, 0) << "it was the person's own choice";
    press(QStringLiteral("new-todo"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return pressed.size() == 1; }));

    // One that shows its dialog for that once more, and is cancelled again, is left alone.
    shortcuts->choose();
    giveSession(4);
    ASSERT_TRUE(isCalled(bindCall, 4));
    portal->respond(1, {});
    giveSession(5);
    ASSERT_TRUE(isCalled(bindCall, 5));
    portal->respond(1, {});
    settle();
    EXPECT_EQ(portal->count(create), 5);
    EXPECT_EQ(shortcuts->state().standing, offered);
    EXPECT_FALSE(isChosen());
}

TEST_F(ShortcutsPortalTest, Who_wants_keys_and_gets_none_is_told)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    giveSession();
    ASSERT_TRUE(isCalled(bindCall));
    portal->respond(0, listOf({}));
    EXPECT_TRUE(QTest::qWaitFor([this] { return failures == 1; }));
    settle();
    EXPECT_EQ(shortcuts->state().standing, offered);
    EXPECT_FALSE(isChosen());
}

TEST_F(ShortcutsPortalTest, A_dialog_that_is_shown_again_may_stay_for_long)
{
    portal->version = 2U;
    begin(200ms);
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    giveKeys();
    portal->isHanging = true;
    shortcuts->choose();
    ASSERT_TRUE(isCalled(configure));
    QTest::qWait(500);
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(shortcuts->state().standing, given);
    portal->isHanging = false;
    portal->isRefusing = true;
    shortcuts->choose();
    EXPECT_TRUE(QTest::qWaitFor([this] { return failures == 1; }));
}

TEST_F(ShortcutsPortalTest, Is_told_who_asks_where_no_sandbox_says_it)
{
    identity = PortalIdentity::given;
    begin();
    ASSERT_TRUE(becomes(offered));
    EXPECT_EQ(portal->calls(), QStringList{registerCall});
    EXPECT_EQ(portal->argumentsOf(registerCall).constFirst().toString(),
              QStringLiteral("org.kelpa.Kelpa"));
}

TEST_F(ShortcutsPortalTest, Who_ends_gives_the_keys_back)
{
    begin();
    ASSERT_TRUE(becomes(offered));
    shortcuts->choose();
    giveKeys();
    const QString sender = portal->sender();
    const int changesBefore = changes;
    shortcuts->stop();
    EXPECT_EQ(changes, changesBefore) << "no handler is called any more";
    // The portal closes the sessions of connections that end.
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return !portal->connection().interface()->isServiceRegistered(sender).value(); }));
    press(QStringLiteral("new-todo"));
    settle();
    EXPECT_TRUE(pressed.empty());
    EXPECT_TRUE(isChosen()) << "the next start has them";
}

} // namespace
} // namespace kelpa::test
