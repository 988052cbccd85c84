// The rail's entries.
#include "views/goals/BreadcrumbModel.h"

#include "support/StoreFixture.h"
#include "views/models/ColumnID.h"
#include "views/models/ModelLog.h"

namespace kelpa::test {
namespace {

class Breadcrumbs : public StoreFixture
{
protected:
    Breadcrumbs() { store().setAutoSortingGoals(false); }

    const TodoItem& todo(int place) { return store().goals().front().todos.at(place); }
};

TEST_F(Breadcrumbs, A_title_has_the_number_of_open_todos_before_it_without_a_space)
{
    const GoalID id = makeGoal(QStringLiteral("Taxes"));
    const BreadcrumbModel model(store());
    EXPECT_EQ(texts(model, "title"), QStringList{QStringLiteral("(0)Taxes")});
    store().addTodo(QStringLiteral("Collect"), id);
    store().addTodo(QStringLiteral("File"), id);
    EXPECT_EQ(texts(model, "title"), QStringList{QStringLiteral("(2)Taxes")});
}

TEST_F(Breadcrumbs, A_todo_in_progress_is_counted_and_a_completed_one_is_not)
{
    const GoalID id = makeGoal(QStringLiteral("Taxes"));
    store().addTodo(QStringLiteral("Collect"), id);
    const BreadcrumbModel model(store());
    store().toggleTodo(todo(0).id, id);
    EXPECT_EQ(texts(model, "title"), QStringList{QStringLiteral("(1)Taxes")});
    store().toggleTodo(todo(0).id, id);
    EXPECT_EQ(texts(model, "title"), QStringList{QStringLiteral("(0)Taxes")});
}

TEST_F(Breadcrumbs, The_selected_goal_says_so)
{
    const GoalID id = makeGoal(QStringLiteral("Taxes"));
    makeGoal(QStringLiteral("Garden"));
    const BreadcrumbModel model(store());
    store().activateTarget(TargetSelection::goal(id), EnterWindowLayer::no);
    QStringList selected;
    for (int row = 0; row < model.rowCount(); ++row) {
        if (value(model, row, "isSelected").toBool())
            selected.append(value(model, row, "columnID").toString());
    }
    EXPECT_EQ(selected, QStringList{columnText(id)});
}

TEST_F(Breadcrumbs, Hidden_goals_have_no_entry)
{
    const GoalID open = makeGoal(QStringLiteral("Taxes"));
    store().addTodo(QStringLiteral("File"), open);
    makeGoal(QStringLiteral("Garden"));
    const BreadcrumbModel model(store());
    EXPECT_EQ(model.count(), 2);
    store().setHidingGoalsWithoutOpenTodos(true);
    EXPECT_EQ(texts(model, "title"), QStringList{QStringLiteral("(1)Taxes")});
}

} // namespace
} // namespace kelpa::test
