// A board of two goals, the first of which has a todo, and the controllers over it.
#pragma once

#include "support/StoreFixture.h"
#include "views/board/BoardController.h"
#include "views/todos/TodoController.h"

#include <memory>

namespace kelpa::test {

class TodoFixture : public StoreFixture
{
protected:
    TodoFixture()
    {
        store().setLanguage(AppLanguage::english);
        store().setAutoSortingGoals(false);
        first = makeGoal(QStringLiteral("First"));
        second = makeGoal(QStringLiteral("Second"));
        todo = makeTodo(first, QStringLiteral("Read"));
        controller = std::make_unique<BoardController>(store());
    }

    TodoController& todoController() { return *controller->todos(); }
    TodoDrops& drops() { return *todoController().drops(); }
    QStringList titles(std::optional<GoalID> in)
    {
        QStringList result;
        for (const TodoItem& each : todos(in))
            result.append(each.title);
        return result;
    }

    GoalID first;
    GoalID second;
    TodoID todo;
    std::unique_ptr<BoardController> controller;
    const QString unassigned = columnText(std::nullopt);
};

} // namespace kelpa::test
