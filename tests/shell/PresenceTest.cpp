#include "shell/Presence.h"

#include "shell/RecordedNotifications.h"
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class PresenceTest : public StoreFixture
{
protected:
    PresenceTest() { store().setLanguage(AppLanguage::english); }

    Presence::Ways ways{.hasDoubleTap = true, .hasName = true};
    RecordedNotifications notifications;
    Presence presence{store(), notifications, KeyNames::withSuper(), [this] { return ways; }};
};

TEST_F(PresenceTest, Stays_where_a_later_start_reaches_it)
{
    EXPECT_TRUE(presence.mayStay());
    ways.hasDoubleTap = false;
    EXPECT_TRUE(presence.mayStay());
    // A start from a launcher would find a Kelpa that it cannot show.
    ways = {.hasDoubleTap = true, .hasName = false};
    EXPECT_FALSE(presence.mayStay());
}

TEST_F(PresenceTest, Ends_where_the_person_has_chosen_that)
{
    store().setClosingQuitting(true);
    EXPECT_FALSE(presence.mayStay());
    EXPECT_TRUE(restartedStore().isClosingQuitting());
}

TEST_F(PresenceTest, Changes_that_are_not_saved_are_asked_about)
{
    settings.isFailing = true;
    makeGoal();
    EXPECT_FALSE(presence.mayStay());
    settings.isFailing = false;
    scheduler.advance(5s);
    EXPECT_TRUE(presence.mayStay());
}

TEST_F(PresenceTest, Says_once_that_it_stays)
{
    presence.noteClosed();
    EXPECT_EQ(notifications.shown,
              QStringLiteral("Kelpa keeps running: Press Super twice, or start "
                             "Kelpa again, to get the board back."));
    EXPECT_EQ(notifications.actionText, QStringLiteral("Quit Kelpa"));
    presence.noteShown();
    EXPECT_EQ(notifications.shown, QString());
    presence.noteClosed();
    EXPECT_EQ(notifications.count, 1);
}

TEST_F(PresenceTest, Names_only_ways_that_there_are)
{
    ways.hasDoubleTap = false;
    presence.noteClosed();
    EXPECT_EQ(notifications.shown,
              QStringLiteral("Kelpa keeps running: Start Kelpa again to get the board back."));
}

TEST_F(PresenceTest, Its_notification_ends_it)
{
    int quits = 0;
    QObject::connect(&presence, &Presence::quitRequested, &presence, [&] { ++quits; });
    presence.noteClosed();
    notifications.act();
    EXPECT_EQ(quits, 1);
}

TEST_F(PresenceTest, What_it_has_said_is_stored)
{
    EXPECT_TRUE(store().explainClosing());
    EXPECT_FALSE(restartedStore().explainClosing());
}

} // namespace
} // namespace kelpa::test
