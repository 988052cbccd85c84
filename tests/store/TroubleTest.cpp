// A board that cannot be saved or read: what the store says of it, and for how long.

#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class Trouble : public StoreFixture
{
protected:
    void fillDisk()
    {
        settings.error = SettingsError::full;
        settings.isFailing = true;
    }
    void freeDisk() { settings.isFailing = false; }

    std::optional<CopyKey> happened()
    {
        const auto& trouble = store().trouble();
        return trouble ? std::optional(trouble->happened) : std::nullopt;
    }
    /// How often the trouble has changed since the last call.
    int takeChanges() { return takeSignals().value(QStringLiteral("trouble")); }
};

TEST_F(Trouble, Of_a_disk_that_takes_everything_there_is_none)
{
    makeGoal();
    EXPECT_EQ(happened(), std::nullopt);
    settings.isSlow = true;
    makeGoal();
    EXPECT_EQ(happened(), std::nullopt) << "the save is under way";
    settings.endSave();
    EXPECT_EQ(takeChanges(), 0);
}

TEST_F(Trouble, A_change_that_is_refused_is_told_at_once_until_it_is_saved)
{
    store();
    fillDisk();
    makeGoal();
    EXPECT_EQ(happened(), CopyKey::DiskFull);
    EXPECT_TRUE(store().trouble()->hasUnsavedChanges);
    EXPECT_EQ(takeChanges(), 1);
    makeGoal();
    scheduler.advance(60s);
    EXPECT_EQ(takeChanges(), 0);
    freeDisk();
    scheduler.advance(5s);
    EXPECT_EQ(happened(), std::nullopt);
    EXPECT_EQ(takeChanges(), 1);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(Trouble, Another_cause_takes_the_place_of_the_first)
{
    store();
    fillDisk();
    makeGoal();
    settings.error = SettingsError::isFolder;
    scheduler.advance(5s);
    EXPECT_EQ(happened(), CopyKey::FileIsFolder);
}

TEST_F(Trouble, Trying_again_does_not_wait_for_the_next_attempt)
{
    store();
    fillDisk();
    makeGoal();
    store().retrySaving();
    EXPECT_EQ(happened(), CopyKey::DiskFull);
    freeDisk();
    store().retrySaving();
    EXPECT_EQ(happened(), std::nullopt);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(Trouble, A_board_that_cannot_be_read_is_told_from_the_start_until_it_can)
{
    settings.error = SettingsError::newer;
    settings.isUnreadable = true;
    EXPECT_EQ(happened(), CopyKey::FileNewer);
    EXPECT_FALSE(store().trouble()->hasUnsavedChanges);
    settings.isUnreadable = false;
    scheduler.advance(5s);
    EXPECT_EQ(happened(), std::nullopt);
}

TEST_F(Trouble, What_is_added_to_a_board_that_cannot_be_read_is_unsaved)
{
    settings.isUnreadable = true;
    const GoalID goalID = makeGoal();
    EXPECT_TRUE(store().trouble()->hasUnsavedChanges);
    EXPECT_EQ(store().save(), SaveProgress::refused);
    settings.isUnreadable = false;
    EXPECT_EQ(store().save(), SaveProgress::saved);
    EXPECT_EQ(happened(), std::nullopt);
    EXPECT_TRUE(restartedStore().goals().first().id == goalID);
}

TEST_F(Trouble, A_file_that_cannot_be_written_is_told_before_anything_is_to_be_written)
{
    settings.error = SettingsError::readOnly;
    settings.isFailing = true;
    EXPECT_EQ(happened(), CopyKey::FileReadOnly);
    settings.isFailing = false;
    scheduler.advance(5s);
    EXPECT_EQ(happened(), std::nullopt);
}

TEST_F(Trouble, Closing_is_asked_about_only_while_changes_would_be_lost)
{
    EXPECT_EQ(store().save(), SaveProgress::saved);
    fillDisk();
    makeGoal();
    EXPECT_EQ(store().save(), SaveProgress::refused);
    freeDisk();
    EXPECT_EQ(store().save(), SaveProgress::saved);
    EXPECT_EQ(happened(), std::nullopt);
}

TEST_F(Trouble, A_file_that_was_moved_aside_is_told_until_the_person_knows)
{
    settings.movedAside = {QStringLiteral("aside"), false};
    EXPECT_EQ(happened(), CopyKey::FileMovedAside);
    makeGoal();
    scheduler.advance(60s);
    EXPECT_EQ(happened(), CopyKey::FileMovedAside);
    EXPECT_EQ(store().save(), SaveProgress::saved);
    takeSignals();
    store().dismissTrouble();
    EXPECT_EQ(happened(), std::nullopt);
    EXPECT_EQ(takeChanges(), 1);
    makeGoal();
    EXPECT_EQ(happened(), std::nullopt);

    settings.movedAside = {QStringLiteral("another"), true};
    makeGoal();
    EXPECT_EQ(store().trouble()->movedAsideName, QStringLiteral("another"));
}

TEST_F(Trouble, The_folder_is_shown_where_a_program_does)
{
    desktop.hasFileManager = false;
    store();
    fillDisk();
    makeGoal();
    EXPECT_FALSE(store().trouble()->canShowFolder);
    freeDisk();
    store().retrySaving();

    desktop.hasFileManager = true;
    fillDisk();
    makeGoal();
    EXPECT_TRUE(store().trouble()->canShowFolder);
    store().showStoredFolder();
    EXPECT_EQ(desktop.openedUrls, QList<QUrl>{QUrl(QStringLiteral("file:///boards"))});
}

} // namespace
} // namespace kelpa::test
