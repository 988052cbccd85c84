#include "shell/UnsavedNotifier.h"

#include "shell/RecordedNotifications.h"
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class UnsavedNotification : public StoreFixture
{
protected:
    UnsavedNotification() { store().setLanguage(AppLanguage::english); }

    void fillDisk()
    {
        settings.error = SettingsError::full;
        settings.isFailing = true;
    }

    const QString message = QStringLiteral("Your changes are not saved: The disk is full");
    RecordedNotifications notifications;
    UnsavedNotifier notifier{store(), notifications};
};

TEST_F(UnsavedNotification, Shows_while_changes_wait_and_the_board_is_hidden)
{
    notifier.setBoardSeen(false);
    makeGoal();
    EXPECT_EQ(notifications.shown, QString());
    fillDisk();
    makeGoal();
    EXPECT_EQ(notifications.shown, message);
    settings.isFailing = false;
    scheduler.advance(5s);
    EXPECT_EQ(notifications.shown, QString());
    EXPECT_EQ(notifications.count, 1);
}

TEST_F(UnsavedNotification, Shows_nothing_while_the_board_says_it)
{
    fillDisk();
    makeGoal();
    EXPECT_EQ(notifications.shown, QString());
    notifier.setBoardSeen(false);
    EXPECT_EQ(notifications.shown, message);
    notifier.setBoardSeen(true);
    EXPECT_EQ(notifications.shown, QString());
}

TEST_F(UnsavedNotification, Comes_once_for_each_trouble)
{
    notifier.setBoardSeen(false);
    fillDisk();
    makeGoal();
    scheduler.advance(60s);
    notifier.setBoardSeen(true);
    notifier.setBoardSeen(false);
    EXPECT_EQ(notifications.count, 1);
    settings.isFailing = false;
    scheduler.advance(5s);
    settings.isFailing = true;
    makeGoal();
    EXPECT_EQ(notifications.count, 2);
}

TEST_F(UnsavedNotification, Tells_of_a_disk_that_hangs_and_then_of_what_it_reports)
{
    notifier.setBoardSeen(false);
    settings.isSlow = true;
    makeGoal();
    EXPECT_EQ(notifications.count, 0) << "no disk is that fast";
    scheduler.advance(1s);
    EXPECT_EQ(notifications.shown, QStringLiteral("Your changes are still being saved: The disk is "
                                                  "slow or does not reply"));
    fillDisk();
    settings.endSave();
    EXPECT_EQ(notifications.shown, message);
    settings.isFailing = false;
    settings.isSlow = false;
    scheduler.advance(5s);
    EXPECT_EQ(notifications.shown, QString());
    EXPECT_EQ(notifications.count, 2);
}

TEST_F(UnsavedNotification, Needs_changes_that_wait)
{
    settings.error = SettingsError::newer;
    settings.isUnreadable = true;
    restartedStore();
    UnsavedNotifier restarted(store(), notifications);
    restarted.setBoardSeen(false);
    scheduler.advance(60s);
    EXPECT_EQ(notifications.count, 0);
}

} // namespace
} // namespace kelpa::test
