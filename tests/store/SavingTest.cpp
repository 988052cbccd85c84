// A disk that takes its time: what waits for it, and what a person is told.

#include "store/board/BoardPersistence.h"
#include "support/BoardBuilders.h"
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class Saving : public StoreFixture
{
protected:
    QList<Goal> storedGoals() const
    {
        const auto stored = settings.values.constFind(goalsKey);
        if (stored == settings.values.constEnd())
            return {};
        return decodeGoals(std::get<QByteArray>(*stored)).value_or(QList<Goal>());
    }

    /// How often "still saving" has changed since the last call.
    int takeChanges() { return takeSignals().value(QStringLiteral("isSavingSlowly")); }
};

TEST_F(Saving, An_operation_continues_and_its_change_reaches_the_disk_later)
{
    store();
    settings.isSlow = true;
    makeGoal(QStringLiteral("A"));
    makeGoal(QStringLiteral("B"));
    store().undo();
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("A")});
    EXPECT_TRUE(storedGoals().isEmpty());
    settings.endSave();
    EXPECT_EQ(storedGoals(), store().goals());
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(Saving, After_a_second_the_board_says_so_until_the_disk_has_everything)
{
    store();
    settings.isSlow = true;
    makeGoal();
    takeSignals();
    scheduler.advance(999ms);
    EXPECT_FALSE(store().isSavingSlowly());
    scheduler.advance(1ms);
    EXPECT_TRUE(store().isSavingSlowly());
    EXPECT_EQ(takeChanges(), 1);

    makeGoal();
    scheduler.advance(60s);
    EXPECT_TRUE(store().isSavingSlowly());
    EXPECT_EQ(takeChanges(), 0);
    settings.endSave();
    EXPECT_FALSE(store().isSavingSlowly());
    EXPECT_EQ(takeChanges(), 1);
}

TEST_F(Saving, The_second_begins_with_the_first_change_that_waits)
{
    store();
    settings.isSlow = true;
    makeGoal();
    scheduler.advance(600ms);
    makeGoal();
    scheduler.advance(400ms);
    EXPECT_TRUE(store().isSavingSlowly());
}

TEST_F(Saving, A_disk_that_takes_half_a_second_each_time_is_not_worth_a_word)
{
    store();
    settings.isSlow = true;
    for (int i = 0; i < 10; ++i) {
        makeGoal();
        scheduler.advance(500ms);
        settings.endSave();
    }
    scheduler.advance(60s);
    EXPECT_EQ(takeChanges(), 0);
}

TEST_F(Saving, What_is_under_way_is_not_tried_again)
{
    store();
    settings.flushCount = 0;
    settings.isSlow = true;
    makeGoal();
    scheduler.advance(60s);
    EXPECT_EQ(settings.flushCount, 0);
}

TEST_F(Saving, An_attempt_that_only_reads_saves_nothing)
{
    settings.isUnreadable = true;
    settings.isSlow = true;
    store();
    scheduler.advance(5s);
    EXPECT_TRUE(settings.isSaving());
    scheduler.advance(60s);
    EXPECT_FALSE(store().isSavingSlowly());
}

TEST_F(Saving, What_the_disk_refuses_after_a_while_is_tried_again_five_seconds_later)
{
    store();
    settings.isSlow = true;
    makeGoal();
    scheduler.advance(3s);
    settings.isFailing = true;
    settings.endSave();
    EXPECT_FALSE(store().isSavingSlowly()) << "nothing is under way";

    settings.isFailing = false;
    settings.isSlow = false;
    scheduler.advance(4999ms);
    EXPECT_TRUE(storedGoals().isEmpty());
    scheduler.advance(1ms);
    EXPECT_EQ(storedGoals(), store().goals());
}

TEST_F(Saving, The_end_of_the_program_waits_for_what_is_under_way_but_not_for_ever)
{
    store();
    settings.isSlow = true;
    makeGoal();
    store().finishSaving();
    EXPECT_EQ(storedGoals(), store().goals());
    EXPECT_EQ(settings.lastLimit, 20s);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(Saving, The_end_of_the_program_waits_once_for_a_disk_that_hangs)
{
    store();
    settings.isSlow = true;
    makeGoal();
    settings.isHanging = true;
    store().finishSaving();
    EXPECT_EQ(settings.finishCount, 1);
    EXPECT_TRUE(settings.isSaving());
}

TEST_F(Saving, What_becomes_of_changes_is_told_without_waiting_for_the_disk)
{
    store();
    EXPECT_EQ(store().save(), SaveProgress::saved);
    settings.isSlow = true;
    makeGoal();
    settings.finishCount = 0;
    EXPECT_EQ(store().save(), SaveProgress::underWay);
    EXPECT_EQ(settings.finishCount, 0) << "nothing waits for it";
    settings.endSave();
    EXPECT_EQ(store().saveProgress(), SaveProgress::saved);
}

TEST_F(Saving, Its_end_is_told_although_a_session_has_saved_meanwhile)
{
    int ended = 0;
    const auto connection =
        QObject::connect(&store(), &WindowStore::savingEnded, [&ended] { ++ended; });
    settings.isSlow = true;
    makeGoal();
    EXPECT_EQ(store().save(), SaveProgress::underWay);
    store().finishSaving();
    EXPECT_EQ(store().saveProgress(), SaveProgress::saved);
    scheduler.advance(0ms);
    EXPECT_EQ(ended, 1);
    QObject::disconnect(connection);
}

TEST_F(Saving, Its_end_is_told_once_and_from_the_event_loop)
{
    int ended = 0;
    const auto connection =
        QObject::connect(&store(), &WindowStore::savingEnded, [&ended] { ++ended; });
    makeGoal();
    scheduler.advance(0ms);
    EXPECT_EQ(ended, 0) << "the change did not wait";
    settings.isSlow = true;
    makeGoal();
    EXPECT_EQ(store().save(), SaveProgress::underWay);
    settings.isFailing = true;
    settings.endSave();
    EXPECT_EQ(ended, 0);
    scheduler.advance(0ms);
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(store().saveProgress(), SaveProgress::refused);
    scheduler.advance(1ms);
    EXPECT_EQ(ended, 1);
    QObject::disconnect(connection);
}

TEST_F(Saving, An_attempt_that_only_reads_does_not_ask_before_closing)
{
    settings.isUnreadable = true;
    settings.isSlow = true;
    store();
    scheduler.advance(5s);
    settings.isHanging = true;
    EXPECT_TRUE(settings.isSaving());
    EXPECT_EQ(store().save(), SaveProgress::saved);
}

TEST_F(Saving, A_slow_save_that_fails_is_never_told_as_saved)
{
    store();
    settings.isSlow = true;
    makeGoal();
    scheduler.advance(1s);
    bool isEverSaved = false;
    const auto look = [this, &isEverSaved] {
        isEverSaved = isEverSaved || !unsavedNotice(store().trouble(), store().isSavingSlowly());
    };
    QObject::connect(&store(), &WindowStore::isSavingSlowlyChanged, look);
    QObject::connect(&store(), &WindowStore::troubleChanged, look);
    settings.isFailing = true;
    settings.endSave();
    EXPECT_TRUE(store().trouble()->hasUnsavedChanges);
    EXPECT_FALSE(store().isSavingSlowly());
    EXPECT_FALSE(isEverSaved);
}

TEST_F(Saving, The_end_without_a_display_emits_nothing_whatever_comes_of_it)
{
    const Goal late = test::goal(QStringLiteral("Stored"));
    settings.values.insert(goalsKey, *encodeGoals({late}));
    settings.isUnreadable = true;
    makeGoal(QStringLiteral("A"));
    takeSignals();
    settings.error = SettingsError::full;
    store().finishSavingInSilence();
    settings.isUnreadable = false;
    store().finishSavingInSilence();
    EXPECT_EQ(storedGoals().size(), 2);
    EXPECT_EQ(store().trouble(), std::nullopt);
    EXPECT_TRUE(takeSignals().isEmpty());
    makeGoal(QStringLiteral("B"));
    EXPECT_FALSE(takeSignals().isEmpty());
}

TEST_F(Saving, A_board_that_takes_long_to_read_is_loaded_when_it_is_there)
{
    const Goal late = test::goal(QStringLiteral("Stored"));
    settings.values.insert(goalsKey, *encodeGoals({late}));
    settings.isUnreadable = true;
    settings.isSlow = true;
    store();
    scheduler.advance(5s);
    EXPECT_TRUE(store().goals().isEmpty());
    settings.isUnreadable = false;
    settings.endSave();
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Stored")});
}

} // namespace
} // namespace kelpa::test
