// Deleting what is completed in a list.
#include "support/BoardBuilders.h"
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class CompletedTodos : public StoreFixture
{
protected:
    TodoID makeCompleted(std::optional<GoalID> in, const QString& title)
    {
        const TodoID id = makeTodo(in, title);
        store().setTodoStatus(id, TodoStatus::completed, in);
        return id;
    }

    QStringList titles(std::optional<GoalID> in)
    {
        QStringList titles;
        for (const TodoItem& todo : todos(in))
            titles.append(todo.title);
        return titles;
    }
};

TEST_F(CompletedTodos, They_go_from_their_list_alone_in_one_step_that_undo_takes_back)
{
    const GoalID a = makeGoal();
    const GoalID b = makeGoal();
    store().setLanguage(AppLanguage::english);
    makeCompleted(a, QStringLiteral("one"));
    const TodoID begun = makeTodo(a, QStringLiteral("two"));
    store().setTodoStatus(begun, TodoStatus::ing, a);
    makeCompleted(a, QStringLiteral("three"));
    makeTodo(a, QStringLiteral("four"));
    makeCompleted(b, QStringLiteral("elsewhere"));
    makeCompleted(std::nullopt, QStringLiteral("nowhere"));
    const QStringList before = titles(a);
    takeWriteCount();

    store().deleteCompletedTodos(a);
    EXPECT_EQ(titles(a), (QStringList{QStringLiteral("two"), QStringLiteral("four")}));
    EXPECT_EQ(titles(b), QStringList{QStringLiteral("elsewhere")});
    EXPECT_EQ(titles(std::nullopt), QStringList{QStringLiteral("nowhere")});
    EXPECT_EQ(takeWriteCount(), 1);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("2 completed todos deleted"));
    EXPECT_TRUE(store().toastOffersUndo());

    store().undo();
    EXPECT_EQ(titles(a), before);
    store().redo();
    EXPECT_EQ(titles(a), (QStringList{QStringLiteral("two"), QStringLiteral("four")}));

    store().deleteCompletedTodos(std::nullopt);
    EXPECT_EQ(titles(std::nullopt), QStringList());
    EXPECT_EQ(store().toastMessage(), QStringLiteral("1 completed todo deleted"));
    EXPECT_TRUE(store().toastOffersUndo());
}

TEST_F(CompletedTodos, Where_there_are_none_nothing_happens)
{
    const GoalID a = makeGoal();
    makeTodo(a, QStringLiteral("open"));
    scheduler.advance(10s);
    takeSignals();
    takeWriteCount();
    store().deleteCompletedTodos(a);
    store().deleteCompletedTodos(std::nullopt);
    store().deleteCompletedTodos(GoalID::create());
    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_EQ(takeWriteCount(), 0);
    EXPECT_FALSE(store().canRedo());
    EXPECT_EQ(titles(a), QStringList{QStringLiteral("open")});
}

} // namespace
} // namespace kelpa::test
