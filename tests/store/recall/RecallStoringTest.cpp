// What is remembered of windows is stored with the board, forgotten, and switched off.

#include "store/recall/WindowRecallFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

using StoredRecall = WindowRecalls;

TEST_F(StoredRecall,
       What_is_taken_out_or_deleted_with_its_goal_is_forgotten_and_undo_brings_it_back)
{
    work();
    store().assign(1, std::nullopt);
    EXPECT_EQ(storedTitles(), QStringList{letter});
    store().undo();
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
    store().deleteGoal(garden);
    EXPECT_EQ(storedTitles(), QStringList{report});
    store().undo();
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
    close(1);
    store().forgetWindows({1});
    EXPECT_EQ(storedTitles(), QStringList{letter});
    EXPECT_EQ(store().toastMessage(), QStringLiteral("1 window is forgotten"));
    store().undo();
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
    store().forgetWindows({2});
    EXPECT_EQ(goalOf(2), garden) << "is there";
}

TEST_F(StoredRecall, It_is_saved_with_the_board_and_a_title_that_changes_all_the_time_seldom)
{
    work();
    ASSERT_TRUE(stored());
    takeWriteCount();
    for (int i = 0; i < 500; ++i) {
        rename(1, QStringLiteral("Page %1").arg(i));
        scheduler.advance(20ms);
    }
    EXPECT_EQ(takeWriteCount(), 0);
    scheduler.advance(WindowRecall::storingDelay);
    EXPECT_EQ(takeWriteCount(), 1);
    EXPECT_EQ(storedTitles(), (QStringList{QStringLiteral("Page 499"), letter}));
    for (int i = 0; i < 500; ++i) {
        rename(1, QStringLiteral("(%1) Page 499").arg(i));
        scheduler.advance(100ms);
    }
    EXPECT_EQ(takeWriteCount(), 0);
    makeGoal();
    EXPECT_EQ(takeWriteCount(), 1);
}

TEST_F(StoredRecall, Nothing_is_encoded_for_a_change_that_concerns_no_window)
{
    work();
    const QByteArray before = settings.document(windowMemoryKey);
    settings.changedEntryCount = 0;
    makeTodo(taxes);
    EXPECT_EQ(settings.changedEntryCount, 1);
    EXPECT_EQ(settings.document(windowMemoryKey), before);
}

TEST_F(StoredRecall, The_end_of_the_program_stores_what_has_waited)
{
    work();
    rename(1, QStringLiteral("Minutes"));
    open(9, QStringLiteral("Other"));
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
    store().finishSaving();
    EXPECT_EQ(storedTitles(), (QStringList{QStringLiteral("Minutes"), letter}));
    EXPECT_EQ(stored()->newestWindow, 9U);
}

TEST_F(StoredRecall, Switched_off_everything_is_forgotten_and_nothing_remembered)
{
    work();
    EXPECT_TRUE(store().isRememberingWindows());
    store().setRememberingWindows(false);
    EXPECT_EQ(storedTitles(), QStringList());
    close(1);
    store().assign(2, taxes);
    logInAgain();
    EXPECT_FALSE(store().isRememberingWindows());
    open(11, letter);
    open(12, report);
    waitForBurst();
    EXPECT_EQ(goalOf(11), std::nullopt);
    EXPECT_EQ(storedTitles(), QStringList());

    store().setRememberingWindows(true);
    store().assign(11, taxes);
    EXPECT_EQ(storedTitles(), QStringList{letter});
}

TEST_F(StoredRecall, Switching_it_off_can_be_undone_and_done_again)
{
    work();
    close(1);
    open(3, QStringLiteral("Loading"));
    waitForBurst();
    ASSERT_EQ(store().recallOffers(3).size(), 1);
    takeWriteCount();
    store().setRememberingWindows(false);
    EXPECT_EQ(takeWriteCount(), 1);
    EXPECT_EQ(store().toastMessage(),
              QStringLiteral("All windows are forgotten and no longer remembered"));
    EXPECT_TRUE(store().toastOffersUndo());
    EXPECT_TRUE(store().absentWindows(taxes).isEmpty());
    EXPECT_TRUE(store().recallOffers(3).isEmpty());

    store().undo();
    EXPECT_TRUE(store().isRememberingWindows());
    EXPECT_EQ(settings.values.value(rememberingWindowsKey), SettingsValue(true));
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
    EXPECT_EQ(store().absentWindows(taxes).size(), 1);
    EXPECT_EQ(store().recallOffers(3).size(), 1);
    open(4, report);
    waitForBurst();
    EXPECT_EQ(goalOf(4), taxes);

    store().undo();
    store().redo();
    store().undo();
    EXPECT_TRUE(store().isRememberingWindows());
}

TEST_F(StoredRecall, Switched_off_and_on_again_it_begins_with_the_windows_that_are_there)
{
    work();
    close(1);
    store().setRememberingWindows(false);
    store().setRememberingWindows(true);
    EXPECT_EQ(storedTitles(), QStringList{letter});
    EXPECT_TRUE(store().absentWindows(taxes).isEmpty());
    open(3, report);
    waitForBurst();
    EXPECT_EQ(goalOf(3), std::nullopt);
}

TEST_F(StoredRecall, A_memory_that_does_not_decode_is_set_aside_and_begins_anew)
{
    settings.values.insert(windowMemoryKey, QByteArray("{\"version\":2}"));
    work();
    EXPECT_EQ(settings.document(windowMemoryKey + QStringLiteral(".aside")), "{\"version\":2}");
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
}

TEST_F(StoredRecall, A_memory_that_does_not_decode_is_not_set_aside_where_it_is_switched_off)
{
    const QString aside = windowMemoryKey + QStringLiteral(".aside");
    for (const SettingsValue& broken :
         {SettingsValue(QByteArray("{\"title\":")), SettingsValue(QStringLiteral("Report"))}) {
        settings.values.insert(windowMemoryKey, broken);
        settings.values.insert(rememberingWindowsKey, false);
        restartWithoutMemory();
        scheduler.runBackgroundWork();
        EXPECT_FALSE(settings.values.contains(aside));
        EXPECT_EQ(storedTitles(), QStringList());
        EXPECT_TRUE(stored());
    }

    // A person switches it off before it is decoded, and takes that back.
    for (const bool isUndone : {false, true}) {
        settings.values.insert(windowMemoryKey, QByteArray("{\"title\":"));
        settings.values.remove(rememberingWindowsKey);
        restartWithoutMemory();
        store().setRememberingWindows(false);
        if (isUndone)
            store().undo();
        scheduler.runBackgroundWork();
        EXPECT_FALSE(settings.values.contains(aside)) << isUndone;
        EXPECT_TRUE(stored()) << isUndone;
    }
}

TEST_F(StoredRecall, Switched_off_what_was_set_aside_is_emptied_too)
{
    const QString aside = windowMemoryKey + QStringLiteral(".aside");
    settings.values.insert(windowMemoryKey, QByteArray("{\"title\":"));
    work();
    ASSERT_TRUE(settings.values.contains(aside));
    takeWriteCount();
    store().setRememberingWindows(false);
    EXPECT_EQ(settings.document(aside), QByteArray());
    EXPECT_EQ(takeWriteCount(), 1);
}

TEST_F(StoredRecall, A_start_with_it_switched_off_empties_what_was_set_aside_earlier)
{
    const QString aside = windowMemoryKey + QStringLiteral(".aside");
    const QByteArray broken("{\"title\":");
    settings.values.insert(aside, broken);
    restartedStore();
    EXPECT_EQ(settings.document(aside), broken) << "is on";
    settings.values.insert(rememberingWindowsKey, false);
    restartedStore();
    EXPECT_EQ(settings.values.value(aside), SettingsValue(QByteArray()));

    settings.values.remove(aside);
    settings.changedEntryCount = 0;
    restartedStore();
    EXPECT_FALSE(settings.values.contains(aside));
    EXPECT_EQ(settings.changedEntryCount, 0);
}

TEST_F(StoredRecall, A_start_does_not_wait_for_what_is_remembered)
{
    work();
    store().finishSaving();
    desktop.removeWindow(1);
    restartWithoutMemory();
    EXPECT_TRUE(store().absentWindows(taxes).isEmpty());
    makeTodo(taxes);
    EXPECT_EQ(storedTitles(), (QStringList{report, letter})) << "nothing is overwritten";
    scheduler.runBackgroundWork();
    EXPECT_EQ(store().absentWindows(taxes).size(), 1);
    EXPECT_EQ(store().absentWindows(garden).size(), 0);
}

TEST_F(StoredRecall, What_a_person_decides_before_it_is_there_counts)
{
    work();
    store().finishSaving();
    desktop.removeWindow(1);
    restartWithoutMemory();
    open(11, report);
    store().assign(11, garden);
    store().assign(11, std::nullopt);
    store().assign(2, std::nullopt);
    scheduler.runBackgroundWork();
    EXPECT_EQ(storedTitles(), QStringList{report}) << "the letter is in no goal any more";
    waitForBurst();
    EXPECT_EQ(goalOf(11), std::nullopt) << "a person said no";
    EXPECT_EQ(store().absentWindows(taxes).size(), 1);
}

TEST_F(StoredRecall, Switched_off_before_it_is_there_it_is_emptied_and_undo_brings_it_back)
{
    work();
    store().finishSaving();
    restartWithoutMemory();
    store().setRememberingWindows(false);
    EXPECT_EQ(storedTitles(), QStringList()) << "Kelpa may end before it is there";
    scheduler.runBackgroundWork();
    EXPECT_EQ(storedTitles(), QStringList());
    store().undo();
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
}

TEST_F(StoredRecall, What_is_not_to_be_kept_leaves_the_file_with_the_next_start)
{
    work();
    store().finishSaving();
    RememberedWindows before = *stored();
    const RememberedWindow first = before.windows.constFirst();
    RememberedWindow withoutGoal = first;
    withoutGoal.windowID = 7;
    before.windows.append(withoutGoal);
    settings.values.insert(windowMemoryKey, std::get<QByteArray>(windowMemoryEntry(before).value));
    restartWithoutMemory();
    scheduler.runBackgroundWork();
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));

    before.windows = {first, before.windows.at(1)};
    before.windows[1].traits.title = QStringLiteral("Bank — Mozilla Firefox (Private Browsing)");
    desktop.removeWindow(2);
    settings.values.insert(windowMemoryKey, std::get<QByteArray>(windowMemoryEntry(before).value));
    restartWithoutMemory();
    scheduler.runBackgroundWork();
    EXPECT_EQ(storedTitles(), QStringList{report});

    settings.values.insert(rememberingWindowsKey, false);
    restartWithoutMemory();
    scheduler.runBackgroundWork();
    EXPECT_EQ(storedTitles(), QStringList());
}

TEST_F(StoredRecall, The_end_waits_for_what_is_to_leave_the_file)
{
    work();
    store().finishSaving();
    restartWithoutMemory();
    store().deleteGoal(garden);
    EXPECT_EQ(storedTitles(), (QStringList{report, letter}));
    store().finishSaving();
    EXPECT_EQ(storedTitles(), QStringList{report});
}

TEST_F(StoredRecall, A_window_that_turns_out_to_be_private_is_off_the_disk_at_once)
{
    work();
    ASSERT_EQ(storedTitles(), (QStringList{report, letter}));
    rename(1, QStringLiteral("Report — Mozilla Firefox (Private Browsing)"));
    EXPECT_EQ(storedTitles(), QStringList{letter});
    rename(1, QStringLiteral("Bank"));
    makeGoal();
    close(1);
    store().finishSaving();
    EXPECT_EQ(storedTitles(), QStringList{letter});
    EXPECT_TRUE(store().absentWindows(taxes).isEmpty());
}

TEST_F(StoredRecall, Until_the_board_is_loaded_no_memory_is_written)
{
    settings.values.insert(windowMemoryKey, QByteArray("kept"));
    settings.isUnreadable = true;
    makeGoal();
    open(1, report);
    store().assign(1, store().goals().first().id);
    settings.isUnreadable = false;
    EXPECT_EQ(settings.values.value(windowMemoryKey), SettingsValue(QByteArray("kept")));
}

} // namespace
} // namespace kelpa::test
