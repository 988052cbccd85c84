#include "views/transfer/ImportController.h"

#include "views/transfer/TransferFixture.h"

namespace kelpa::test {
namespace {

using Outcome = FileAnswer::Outcome;

class Importing : public TransferFixture
{
protected:
    void SetUp() override
    {
        files.files.insert(list, "# Home\n\n- Paint\n- [x] Sweep\n\nwords\n\n# Work\n\n- Call\n");
    }
    void choose(const QString& path)
    {
        importing.open();
        dialogs.answer(Outcome::chosen, path);
        scheduler.runBackgroundWork();
    }
    QStringList goalTitles()
    {
        QStringList titles;
        for (const Goal& goal : store().goals())
            titles.append(goal.title);
        titles.sort();
        return titles;
    }

    const QString list = QStringLiteral("/lists/home.md");
    ImportController& importing = *controller.importing();
};

TEST_F(Importing, The_file_that_is_chosen_is_shown_and_nothing_happens_yet)
{
    importing.open();
    ASSERT_TRUE(dialogs.isShown());
    EXPECT_EQ(dialogs.questions.back().purpose, FileQuestion::Purpose::open);
    dialogs.answer(Outcome::chosen, list);
    EXPECT_TRUE(importing.isReading());
    EXPECT_FALSE(importing.isRead());
    scheduler.runBackgroundWork();
    ASSERT_TRUE(importing.isRead());
    EXPECT_EQ(importing.fileText(), QStringLiteral("home.md · Markdown"));
    EXPECT_EQ(importing.counts(), QStringLiteral("Goals: 2 · Todos: 3 · Unfinished todos: 2"));
    EXPECT_EQ(importing.goalTitles(),
              QStringList({QStringLiteral("Home"), QStringLiteral("Work")}));
    EXPECT_EQ(importing.goalCounts(), QStringList({QStringLiteral("1"), QStringLiteral("1")}));
    EXPECT_EQ(importing.firstTodos(), QStringList({QStringLiteral("Paint"), QStringLiteral("Sweep"),
                                                   QStringLiteral("Call")}));
    EXPECT_EQ(importing.leftOutText(), QStringLiteral("Lines left out: 1"));
    EXPECT_EQ(importing.leftOut(), QStringList{QStringLiteral("Line 6, not a todo: words")});
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Garden")});
}

TEST_F(Importing, The_dialog_shows_what_can_be_read_and_offers_each_format_and_all_files)
{
    importing.open();
    const QList<FileQuestion::Filter>& filters = dialogs.questions.back().filters;
    ASSERT_EQ(filters.size(), 6);
    EXPECT_EQ(filters[0].name, QStringLiteral("Files that Kelpa reads"));
    for (qsizetype i = 1; i < 5; ++i) {
        for (const QString& pattern : filters[i].patterns)
            EXPECT_TRUE(filters[0].patterns.contains(pattern)) << qPrintable(pattern);
    }
    EXPECT_EQ(filters[3],
              (FileQuestion::Filter{QStringLiteral("todo.txt"), {QStringLiteral("*.txt")}}));
    EXPECT_EQ(filters[5],
              (FileQuestion::Filter{QStringLiteral("All files"), {QStringLiteral("*")}}));
}

TEST_F(Importing, While_the_disk_is_slow_it_says_that_it_saves_and_closing_gives_up)
{
    choose(list);
    settings.isSlow = true;
    makeTodo(garden, QStringLiteral("Typed before"));
    importing.addToBoard();
    EXPECT_TRUE(importing.isSaving());
    EXPECT_TRUE(importing.isImporting());
    EXPECT_FALSE(importing.isEnding());
    importing.close();
    EXPECT_FALSE(importing.isSaving());
    settings.endSave();
    scheduler.advance(std::chrono::seconds(1));
    scheduler.runBackgroundWork();
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Garden")});
}

TEST_F(Importing, Adding_keeps_the_board_and_undo_takes_it_back)
{
    choose(list);
    importing.addToBoard();
    EXPECT_TRUE(importing.isImporting());
    scheduler.runBackgroundWork();
    EXPECT_TRUE(importing.isEnding());
    EXPECT_EQ(goalTitles(), QStringList({QStringLiteral("Garden"), QStringLiteral("Home"),
                                         QStringLiteral("Work")}));
    EXPECT_TRUE(controller.toastOffersUndo());
    importing.close();
    EXPECT_FALSE(importing.isOpen());
    controller.undo();
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Garden")});
}

TEST_F(Importing, Replacing_leaves_only_what_came)
{
    choose(list);
    importing.replaceBoard();
    scheduler.runBackgroundWork();
    EXPECT_EQ(goalTitles(), QStringList({QStringLiteral("Home"), QStringLiteral("Work")}));
}

TEST_F(Importing, A_file_that_is_refused_is_told_and_another_one_can_be_chosen)
{
    files.files.insert(QStringLiteral("/lists/empty.md"), "");
    choose(QStringLiteral("/lists/empty.md"));
    EXPECT_FALSE(importing.isRead());
    EXPECT_EQ(problemText(importing.problem()), QStringLiteral("The file is empty."));
    importing.choose();
    EXPECT_EQ(importing.problem(), -1);
    ASSERT_TRUE(dialogs.isShown());
    dialogs.answer(Outcome::chosen, list);
    scheduler.runBackgroundWork();
    EXPECT_TRUE(importing.isRead());
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Garden")});
}

TEST_F(Importing, A_board_that_cannot_be_kept_first_stays_and_the_preview_with_it)
{
    backups.canKeep = false;
    choose(list);
    importing.replaceBoard();
    scheduler.runBackgroundWork();
    EXPECT_FALSE(importing.isEnding());
    EXPECT_TRUE(importing.isRead());
    EXPECT_EQ(problemText(importing.problem()),
              QStringLiteral("The present board could not be kept as a backup first, so nothing "
                             "was imported."));
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Garden")});
}

TEST_F(Importing, A_dialog_that_is_cancelled_ends_it)
{
    importing.open();
    dialogs.answer(Outcome::cancelled);
    EXPECT_TRUE(importing.isEnding());
    importing.close();
    EXPECT_FALSE(importing.isOpen());
}

TEST_F(Importing, A_file_on_another_computer_is_refused)
{
    importing.open();
    dialogs.answer(Outcome::elsewhere);
    EXPECT_EQ(problemText(importing.problem()),
              QStringLiteral("That file is not on this computer. Choose one that is."));
    EXPECT_FALSE(importing.isEnding());
}

TEST_F(Importing, Without_a_dialog_the_path_is_typed)
{
    files.files.insert(QStringLiteral("/home/ada/todo.txt"), "(A) Call +Work\n");
    importing.open();
    dialogs.answer(Outcome::unavailable);
    EXPECT_TRUE(importing.needsPath());
    importing.readPath(QStringLiteral("  "));
    EXPECT_FALSE(importing.isReading());
    importing.readPath(QStringLiteral("missing.txt"));
    scheduler.runBackgroundWork();
    EXPECT_EQ(problemText(importing.problem()),
              QStringLiteral("The file does not exist or cannot be read."));
    importing.readPath(QStringLiteral("~/todo.txt"));
    scheduler.runBackgroundWork();
    EXPECT_EQ(importing.fileText(), QStringLiteral("todo.txt · todo.txt"));
    // Another path, not a dialog.
    importing.choose();
    EXPECT_FALSE(importing.isRead());
    EXPECT_FALSE(dialogs.isShown());
}

TEST_F(Importing, Who_closes_the_sheet_stops_all_of_it)
{
    importing.open();
    importing.close();
    EXPECT_FALSE(dialogs.isShown());

    choose(list);
    importing.replaceBoard();
    importing.close();
    scheduler.runBackgroundWork();
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Garden")});
    EXPECT_FALSE(importing.isOpen());
}

} // namespace
} // namespace kelpa::test
