// Drafts of new todos, by themselves and when the program ends.
#include "views/todos/TodoDrafts.h"

#include "views/todos/TodoFixture.h"

namespace kelpa::test {
namespace {

class TodoDrafting : public TodoFixture
{};

TEST_F(TodoDrafting, A_draft_is_kept_by_list)
{
    todoController().setDraft(first.text(), QStringLiteral("Buy m"));
    EXPECT_EQ(todoController().draft(first.text()), u"Buy m");
    EXPECT_EQ(todoController().draft(second.text()), u"");
    todoController().setDraft(first.text(), QString());
    EXPECT_EQ(todoController().draft(first.text()), u"");
}

TEST_F(TodoDrafting, Drafts_of_closed_fields_are_added_at_the_end)
{
    const GoalID gone = makeGoal(QStringLiteral("Gone"));
    todoController().setDraft(gone.text(), QStringLiteral("For nobody"));
    store().deleteGoal(gone);
    todoController().setDraft(first.text(), QStringLiteral(" Write "));
    todoController().setDraft(second.text(), QStringLiteral("   "));
    todoController().setDraft(unassigned, QStringLiteral("Buy milk"));
    todoController().setDraft(unifiedTodosText, QStringLiteral("Call home"));
    todoController().finishWriting();
    EXPECT_EQ(titles(first), QStringList({QStringLiteral("Read"), QStringLiteral("Write")}));
    EXPECT_EQ(titles(second), QStringList());
    EXPECT_EQ(titles(std::nullopt),
              QStringList({QStringLiteral("Call home"), QStringLiteral("Buy milk")}));
    todoController().finishWriting();
    EXPECT_EQ(titles(first).size(), 2) << "each is added once";
}

TEST_F(TodoDrafting, A_draft_that_was_given_up_is_added_only_if_somebody_goes_on_typing)
{
    todoController().setDraft(first.text(), QStringLiteral("Write"));
    todoController().setDraft(second.text(), QStringLiteral("Walk"));
    todoController().giveUpDraft(first.text());
    todoController().giveUpDraft(second.text());
    todoController().setDraft(second.text(), QStringLiteral("Walk home"));
    todoController().finishWriting();
    EXPECT_EQ(titles(first), QStringList{QStringLiteral("Read")});
    EXPECT_EQ(todoController().draft(first.text()), u"Write");
    EXPECT_EQ(titles(second), QStringList{QStringLiteral("Walk home")});
}

TEST(TodoDraft, A_draft_is_taken_once_and_only_while_it_is_wanted)
{
    const QString list = QStringLiteral("list");
    TodoDrafts drafts;
    drafts.giveUp(list);
    EXPECT_EQ(drafts.takeWanted(list), u"");
    drafts.set(list, QStringLiteral("a"));
    drafts.giveUp(list);
    EXPECT_EQ(drafts.takeWanted(list), u"");
    EXPECT_EQ(drafts.text(list), u"a");
    drafts.set(list, QStringLiteral("ab"));
    EXPECT_EQ(drafts.takeWanted(list), u"ab");
    EXPECT_EQ(drafts.takeWanted(list), u"");
}

} // namespace
} // namespace kelpa::test
