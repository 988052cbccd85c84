// The todo lists of the board follow the store.
#include "views/todos/TodoListModel.h"

#include "support/BoardBuilders.h"
#include "support/StoreFixture.h"
#include "text/KelpaCopy.h"
#include "views/board/BoardColumnModel.h"
#include "views/models/ModelLog.h"
#include "views/todos/TodoController.h"

#include <chrono>
#include <numeric>
#include <utility>

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

TEST_F(TodoLists, A_goal_without_open_todos_counts_those_that_are_completed)
{
    const TodoID first = makeTodo(goalID, QStringLiteral("A"));
    const TodoID second = makeTodo(goalID, QStringLiteral("B"));
    makeTodo(std::nullopt, QStringLiteral("Elsewhere"));
    const auto model = list(goalID.text());
    const auto unified = list(unifiedTodosText);
    const auto unassigned = list(columnText(std::nullopt));
    int changes = 0;
    QObject::connect(model.get(), &TodoListModel::onlyCompletedCountChanged, model.get(),
                     [&changes] { ++changes; });
    EXPECT_EQ(model->onlyCompletedCount(), 0);
    store().setTodoStatus(first, TodoStatus::completed, goalID);
    EXPECT_EQ(model->onlyCompletedCount(), 0);
    store().setTodoStatus(second, TodoStatus::completed, goalID);
    // Once the last of them shows no more.
    scheduler.advance(std::chrono::seconds(10));
    EXPECT_EQ(model->count(), 0);
    EXPECT_EQ(model->onlyCompletedCount(), 2);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(unified->onlyCompletedCount(), 0);
    EXPECT_EQ(unassigned->onlyCompletedCount(), 0);
    store().deleteTodo(first, goalID);
    EXPECT_EQ(model->onlyCompletedCount(), 1);
    makeTodo(goalID, QStringLiteral("C"));
    EXPECT_EQ(model->onlyCompletedCount(), 0);
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

/// A board as an import leaves it: todos of two lists in turns, all behind those that were there.
BoardContents withImported(BoardContents board, int todoCount)
{
    Goal goal = test::goal(QStringLiteral("Imported"));
    std::int64_t order = board.unassignedTodos.size();
    for (const Goal& each : std::as_const(board.goals))
        order += each.todos.size();
    for (int i = 0; i < todoCount; ++i) {
        QList<TodoItem>& list = i % 2 == 0 ? goal.todos : board.unassignedTodos;
        list.append(test::todo(QString::number(i), order++));
    }
    board.goals.append(goal);
    return board;
}

TEST_F(TodoLists, Many_todos_that_come_at_once_are_one_insertion_of_rows_that_nobody_copies)
{
    makeTodo(goalID, QStringLiteral("A"));
    makeTodo(std::nullopt, QStringLiteral("B"));
    const auto model = list(unifiedTodosText);
    ModelLog log(*model);
    store().restoreBackup(withImported(store().boardContents(), 20'000));
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("insert 2-20001")});
    EXPECT_TRUE(model->rows().isSharedWith(controller->entries(unifiedTodosText)));
    EXPECT_TRUE(list(unifiedTodosText)->rows().isSharedWith(model->rows()));
    store().undo();
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("remove 2-20001")});
    EXPECT_TRUE(model->rows().isSharedWith(controller->entries(unifiedTodosText)));
}

TEST_F(TodoLists, Rows_that_are_kept_for_a_state_of_the_board_are_not_those_of_another)
{
    const TodoID id = makeTodo(goalID, QStringLiteral("A"));
    const auto titles = [this] {
        QStringList texts;
        for (const UnifiedTodoEntry& entry : controller->entries(unifiedTodosText))
            texts.append(entry.todo.title + u'@' + entry.goalTitle);
        return texts.join(u' ');
    };
    EXPECT_EQ(titles(), u"A@Taxes");
    store().updateTodo(id, QStringLiteral("B"), goalID);
    EXPECT_EQ(titles(), u"B@Taxes");
    store().renameGoal(goalID, QStringLiteral("T"));
    EXPECT_EQ(titles(), u"B@T");
    makeTodo(std::nullopt, QStringLiteral("C"));
    EXPECT_EQ(titles(), u"B@T C@Unsorted");
    store().setLanguage(AppLanguage::german);
    EXPECT_EQ(titles(),
              QStringLiteral("B@T C@") + KelpaCopy::text(CopyKey::Unsorted, AppLanguage::german));
    store().setSearchText(QStringLiteral("B"));
    EXPECT_EQ(controller->entries(unifiedTodosText).constFirst().match, SearchMatch::found);
    store().setSearchText({});
    EXPECT_EQ(controller->entries(unifiedTodosText).constFirst().match, SearchMatch::notSearched);
    store().setTodoStatus(id, TodoStatus::completed, goalID);
    ASSERT_EQ(store().lingeringTodoID(), id);
    EXPECT_TRUE(titles().startsWith(u"B@T"));
    scheduler.advance(std::chrono::minutes(1));
    EXPECT_FALSE(titles().startsWith(u"B@T"));
}

TEST_F(TodoLists, Rows_are_kept_only_while_a_list_of_all_todos_shows_them)
{
    const TodoID id = makeTodo(goalID, QStringLiteral("A"));
    auto shown = list(unifiedTodosText);
    const QList<UnifiedTodoEntry> rows = controller->entries(unifiedTodosText);
    store().setSearchText(QStringLiteral("B"));
    store().setSearchText({});
    EXPECT_TRUE(rows.isSharedWith(controller->entries(unifiedTodosText)));
    shown.reset();
    for (const char16_t* const title : {u"B", u"C"})
        store().updateTodo(id, QString::fromUtf16(title), goalID);
    EXPECT_TRUE(rows.isDetached());
    // Nor are they computed anew.
    EXPECT_EQ(controller->entries(unifiedTodosText).constFirst().todo.title, u"C");
}

struct NumberRow
{
    int number = 0;
    QString text;

    int key() const { return number; }
    friend bool operator==(const NumberRow&, const NumberRow&) = default;
};

class NumberModel : public RowListModel<NumberRow>
{
public:
    using RowListModel::setRows;

    QVariant data(const QModelIndex& index, int role) const override
    {
        return role == Qt::DisplayRole ? rows().at(index.row()).text : QVariant();
    }
};

QList<NumberRow> numbered(const QList<int>& numbers, const QString& text = {})
{
    QList<NumberRow> rows;
    for (const int number : numbers)
        rows.append({number, text});
    return rows;
}

TEST(RowList, Announces_steps_and_then_the_rows_that_changed_besides)
{
    NumberModel model;
    model.setRows(numbered({1, 2, 3, 4, 5}, QStringLiteral("a")));
    ModelLog log(model);
    QList<NumberRow> next = numbered({9, 5, 2, 8, 3, 7}, QStringLiteral("b"));
    next[2].text = QStringLiteral("a");
    model.setRows(next);
    EXPECT_EQ(model.rows(), next);
    EXPECT_EQ(log.take(),
              (QStringList{QStringLiteral("remove 3-3"), QStringLiteral("remove 0-0"),
                           QStringLiteral("move 2 before 0"), QStringLiteral("insert 0-0"),
                           QStringLiteral("insert 3-3"), QStringLiteral("insert 5-5"),
                           QStringLiteral("change 1-1"), QStringLiteral("change 4-4")}));
}

TEST(RowList, Keeps_rows_in_use_where_the_steps_would_take_longer_than_a_frame)
{
    QList<int> even;
    QList<int> all;
    for (int number = 0; number < 4000; ++number) {
        all.append(number);
        if (number % 2 == 0)
            even.append(number);
    }
    NumberModel model;
    model.setRows(numbered(even));
    const QPersistentModelIndex twenty = model.index(10);
    const QPersistentModelIndex same = model.index(10);
    const QPersistentModelIndex sixty = model.index(30);
    ModelLog log(model);
    model.setRows(numbered(all));
    EXPECT_EQ(log.take(),
              (QStringList{QStringLiteral("remove 31-1999"), QStringLiteral("remove 11-29"),
                           QStringLiteral("remove 0-9"), QStringLiteral("insert 0-19"),
                           QStringLiteral("insert 21-59"), QStringLiteral("insert 61-3999")}));
    EXPECT_EQ(model.rows(), numbered(all));
    EXPECT_EQ(twenty.row(), 20);
    EXPECT_EQ(same.row(), 20);
    EXPECT_EQ(sixty.row(), 60);
    // A few steps are followed in a list of any length, and many in a short one.
    all.move(10, 3000);
    model.setRows(numbered(all));
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("move 10 before 3001")});
    NumberModel small;
    small.setRows(numbered(even.first(200)));
    ModelLog smallLog(small);
    QList<int> first400(400);
    std::iota(first400.begin(), first400.end(), 0);
    small.setRows(numbered(first400));
    EXPECT_EQ(smallLog.take().size(), 200);
}

} // namespace
} // namespace kelpa::test
