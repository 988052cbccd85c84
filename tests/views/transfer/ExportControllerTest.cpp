#include "views/transfer/ExportController.h"

#include "views/transfer/TransferFixture.h"

namespace kelpa::test {
namespace {

using Outcome = FileAnswer::Outcome;

class Exporting : public TransferFixture
{
protected:
    void start(const QString& path = {})
    {
        exporting.start(path);
        scheduler.runBackgroundWork();
        scheduler.runBackgroundWork();
    }
    QString written(const QString& path) const
    {
        return QString::fromUtf8(files.files.value(path));
    }

    ExportController& exporting = *controller.exporting();
};

TEST(TypedPaths, Begin_in_the_home_folder)
{
    const QString home = QStringLiteral("/home/ada");
    const auto typed = [&home](const char* text) {
        return typedPath(QString::fromUtf8(text), home).toStdString();
    };
    EXPECT_EQ(typed("~/a b.md"), "/home/ada/a b.md");
    EXPECT_EQ(typed("~"), "/home/ada");
    EXPECT_EQ(typed(" lists/a.md\n"), "/home/ada/lists/a.md");
    EXPECT_EQ(typed("/tmp/../srv//a.md"), "/srv/a.md");
    EXPECT_EQ(typed("~eve/a.md"), "/home/ada/~eve/a.md");
    EXPECT_EQ(typed("  "), "");
}

TEST_F(Exporting, What_is_chosen_is_written_where_the_dialog_says)
{
    exporting.open();
    EXPECT_EQ(exporting.contentNames(),
              QStringList({QStringLiteral("The whole board"), QStringLiteral("Garden")}));
    EXPECT_EQ(exporting.formatNames().size(), exporting.formatNotes().size());
    exporting.setFormat(1);
    start();
    ASSERT_TRUE(dialogs.isShown());
    EXPECT_TRUE(exporting.isAsking());
    EXPECT_EQ(dialogs.questions.back().purpose, FileQuestion::Purpose::save);
    EXPECT_EQ(dialogs.questions.back().suggestedName, QStringLiteral("Kelpa.md"));
    const QList<FileQuestion::Filter> filters{
        {QStringLiteral("Markdown"),
         {QStringLiteral("*.md"), QStringLiteral("*.markdown"), QStringLiteral("*.mkd")}},
        {QStringLiteral("All files"), {QStringLiteral("*")}}};
    EXPECT_EQ(dialogs.questions.back().filters, filters);
    dialogs.answer(Outcome::chosen, QStringLiteral("/tmp/board.md"));
    EXPECT_TRUE(exporting.isWriting());
    EXPECT_FALSE(exporting.isEnding());
    scheduler.runBackgroundWork();
    EXPECT_TRUE(exporting.isEnding());
    EXPECT_TRUE(written(QStringLiteral("/tmp/board.md")).contains(QStringLiteral("Dig")));
    EXPECT_EQ(controller.toastMessage(), QStringLiteral("Exported"));
    exporting.close();
    EXPECT_FALSE(exporting.isOpen());
}

TEST_F(Exporting, The_menu_of_a_goal_exports_that_goal)
{
    makeTodo(std::nullopt, QStringLiteral("Loose"));
    controller.goals()->requestExport(garden.text());
    ASSERT_TRUE(exporting.isOpen());
    EXPECT_EQ(exporting.content(), 1);
    exporting.setFormat(2);
    start();
    EXPECT_EQ(dialogs.questions.back().suggestedName, QStringLiteral("Garden.txt"));
    dialogs.answer(Outcome::chosen, QStringLiteral("/tmp/g.txt"));
    scheduler.runBackgroundWork();
    EXPECT_TRUE(written(QStringLiteral("/tmp/g.txt")).contains(QStringLiteral("Dig")));
    EXPECT_FALSE(written(QStringLiteral("/tmp/g.txt")).contains(QStringLiteral("Loose")));
}

TEST_F(Exporting, A_dialog_that_is_cancelled_leaves_the_choice_open)
{
    exporting.open();
    start();
    dialogs.answer(Outcome::cancelled);
    EXPECT_TRUE(exporting.isOpen());
    EXPECT_FALSE(exporting.isAsking());
    EXPECT_FALSE(exporting.needsPath());
    EXPECT_EQ(exporting.problem(), -1);
    EXPECT_TRUE(files.files.isEmpty());
}

TEST_F(Exporting, A_place_on_another_computer_is_refused)
{
    exporting.open();
    start();
    dialogs.answer(Outcome::elsewhere);
    EXPECT_EQ(problemText(exporting.problem()),
              QStringLiteral("That file is not on this computer. Choose one that is."));
    start();
    EXPECT_TRUE(dialogs.isShown()) << "the dialog asks again";
    EXPECT_EQ(exporting.problem(), -1);
}

TEST_F(Exporting, Without_a_dialog_the_path_is_typed)
{
    exporting.open();
    exporting.setFormat(1);
    start();
    dialogs.answer(Outcome::unavailable);
    EXPECT_TRUE(exporting.needsPath());
    EXPECT_EQ(exporting.suggestedPath(), QStringLiteral("~/Kelpa.md"));
    start(QStringLiteral("  "));
    EXPECT_TRUE(files.files.isEmpty());
    start(exporting.suggestedPath());
    EXPECT_TRUE(exporting.isEnding());
    EXPECT_TRUE(written(QStringLiteral("/home/ada/Kelpa.md")).contains(QStringLiteral("Dig")));
    EXPECT_EQ(dialogs.questions.size(), 1);
}

TEST_F(Exporting, A_typed_path_asks_before_it_replaces_a_file)
{
    const QString path = QStringLiteral("/home/ada/old.md");
    files.files.insert(path, "old");
    exporting.open();
    start();
    dialogs.answer(Outcome::unavailable);
    start(QStringLiteral("old.md"));
    EXPECT_TRUE(exporting.asksToReplace());
    EXPECT_EQ(problemText(exporting.problem()),
              QStringLiteral("There is a file of that name already. Replace it?"));
    EXPECT_EQ(written(path), QStringLiteral("old"));
    exporting.forgetProblem();
    EXPECT_FALSE(exporting.asksToReplace());
    start(QStringLiteral("old.md"));
    EXPECT_TRUE(exporting.asksToReplace()) << "typing takes the question back";
    start(QStringLiteral("~/old.md"));
    EXPECT_NE(written(path), QStringLiteral("old"));
    EXPECT_TRUE(exporting.isEnding());
}

TEST_F(Exporting, What_cannot_be_written_is_told_and_can_be_tried_again)
{
    files.isFull = true;
    exporting.open();
    start();
    dialogs.answer(Outcome::chosen, QStringLiteral("/tmp/a.json"));
    scheduler.runBackgroundWork();
    EXPECT_TRUE(exporting.isOpen());
    EXPECT_FALSE(exporting.isEnding());
    EXPECT_EQ(problemText(exporting.problem()),
              QStringLiteral("The file could not be written. What was there is as before."));
    exporting.close();
    exporting.open();
    EXPECT_EQ(exporting.problem(), -1);
}

TEST_F(Exporting, What_cannot_be_written_is_told_although_the_sheet_was_closed)
{
    files.isFull = true;
    exporting.open();
    start();
    dialogs.answer(Outcome::chosen, QStringLiteral("/tmp/a.json"));
    exporting.close();
    controller.importing()->open();
    scheduler.runBackgroundWork();
    EXPECT_EQ(controller.toastMessage(),
              QStringLiteral("The file could not be written. What was there is as before."));
    EXPECT_EQ(controller.importing()->problem(), -1) << "it is not the import's";
}

TEST_F(Exporting, The_end_of_an_earlier_export_leaves_a_later_sheet_open)
{
    for (const bool isFull : {false, true}) {
        files.isFull = isFull;
        exporting.open();
        start();
        dialogs.answer(Outcome::chosen, QStringLiteral("/tmp/a.json"));
        exporting.close();
        exporting.open();
        EXPECT_TRUE(exporting.isWriting());
        scheduler.runBackgroundWork();
        EXPECT_FALSE(exporting.isEnding());
        EXPECT_EQ(exporting.problem(), -1);
        EXPECT_FALSE(exporting.isWriting());
        EXPECT_EQ(controller.toastMessage(),
                  isFull ? QStringLiteral("The file could not be written. What was there is as "
                                          "before.")
                         : QStringLiteral("Exported"));
        // The later sheet's own export ends it.
        files.isFull = false;
        start();
        dialogs.answer(Outcome::chosen, QStringLiteral("/tmp/b.json"));
        scheduler.runBackgroundWork();
        EXPECT_TRUE(exporting.isEnding());
        exporting.close();
    }
}

TEST_F(Exporting, Who_closes_the_sheet_closes_the_dialog)
{
    exporting.open();
    start();
    exporting.close();
    EXPECT_FALSE(dialogs.isShown());
    EXPECT_FALSE(exporting.isOpen());
}

} // namespace
} // namespace kelpa::test
