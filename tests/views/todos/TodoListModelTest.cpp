// The todo lists of the board follow the store.
#include "views/todos/TodoListModel.h"

#include "support/StoreFixture.h"
#include "text/KelpaCopy.h"
#include "views/board/BoardColumnModel.h"
#include "views/models/ModelLog.h"
#include "views/todos/TodoController.h"

namespace kelpa::test {
namespace {

class TodoLists : public StoreFixture
{
protected:
    TodoLists()
    {
        store().setLanguage(AppLanguage::english);
        store().setAutoSortingGoals(false);
        goalID = makeGoal(QStringLiteral("Taxes"));
        controller = std::make_unique<TodoController>(store());
    }

    std::unique_ptr<TodoListModel> list(const QString& listID)
    {
        auto model = std::make_unique<TodoListModel>();
        model->setTodos(controller.get());
        model->setListID(listID);
        return model;
    }

    GoalID goalID;
    std::unique_ptr<TodoController> controller;
};

TEST_F(TodoLists, A_row_tells_what_it_shows)
{
    const TodoID id = makeTodo(goalID, QStringLiteral("Sort receipts"));
    const auto model = list(unifiedTodosText);
    ASSERT_EQ(model->rowCount(), 1);
    EXPECT_EQ(value(*model, 0, "todoID").toString(), id.text());
    EXPECT_EQ(value(*model, 0, "columnID").toString(), goalID.text());
    EXPECT_EQ(value(*model, 0, "title").toString(), QStringLiteral("Sort receipts"));
    EXPECT_EQ(value(*model, 0, "status").toString(), QStringLiteral("todo"));
    EXPECT_EQ(value(*model, 0, "statusSymbol").toString(), QStringLiteral("circle"));
    EXPECT_FALSE(value(*model, 0, "isDone").toBool());
    EXPECT_EQ(value(*model, 0, "goalTitle").toString(), QStringLiteral("Taxes"));
}

TEST_F(TodoLists, A_new_todo_is_one_inserted_row)
{
    makeTodo(goalID, QStringLiteral("A"));
    const auto model = list(goalID.text());
    ModelLog log(*model);
    makeTodo(goalID, QStringLiteral("B"));
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("insert 1-1")});
    EXPECT_EQ(model->count(), 2);
}

TEST_F(TodoLists, A_toggled_todo_changes_its_row_alone)
{
    makeTodo(goalID, QStringLiteral("A"));
    const TodoID id = makeTodo(goalID, QStringLiteral("B"));
    const auto model = list(goalID.text());
    ModelLog log(*model);
    store().toggleTodo(id, goalID);
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("change 1-1")});
    EXPECT_EQ(value(*model, 1, "status").toString(), QStringLiteral("ing"));
}

TEST_F(TodoLists, A_list_says_nothing_when_another_list_changes)
{
    makeTodo(goalID, QStringLiteral("A"));
    const GoalID other = makeGoal(QStringLiteral("Other"));
    const auto model = list(goalID.text());
    ModelLog log(*model);
    makeTodo(other, QStringLiteral("B"));
    makeTodo(std::nullopt, QStringLiteral("C"));
    EXPECT_EQ(log.take(), QStringList());
}

TEST_F(TodoLists, The_goal_of_an_unassigned_todo_is_called_as_the_language_calls_it)
{
    makeTodo(std::nullopt, QStringLiteral("A"));
    const auto model = list(unifiedTodosText);
    EXPECT_EQ(texts(*model, "goalTitle"), QStringList{QStringLiteral("Unsorted")});
    store().setLanguage(AppLanguage::german);
    EXPECT_EQ(texts(*model, "goalTitle"),
              QStringList{KelpaCopy::text(CopyKey::Unsorted, AppLanguage::german)});
}

TEST_F(TodoLists, A_list_of_a_goal_that_is_deleted_is_empty)
{
    makeTodo(goalID, QStringLiteral("A"));
    const auto model = list(goalID.text());
    store().deleteGoal(goalID);
    EXPECT_EQ(model->rowCount(), 0);
    EXPECT_EQ(list(QStringLiteral("nothing"))->rowCount(), 0);
}

} // namespace
} // namespace kelpa::test
