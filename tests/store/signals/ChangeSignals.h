// For every operation: which signals fire, how often, and how often something is written. One test,
// in ChangeSignalsTest.cpp, runs the cases of all subjects, each subject in a file of its own.
#pragma once

#include "support/CaseName.h"
#include "support/StoreFixture.h"

#include <functional>

namespace kelpa::test {

/// The board on which every case starts: goals A (two todos, selected) and B (one window), two
/// unassigned todos, windows 1 to 3, in automatic order.
struct Board
{
    WindowStore& store;
    FakeDesktop& desktop;
    ManualScheduler& scheduler;
    GoalID a;
    GoalID b;
    TodoID todoInA;
    TodoID otherTodoInA;
    TodoID looseTodo;
    TodoID otherLooseTodo;
};

struct OperationCase
{
    const char* name;
    std::function<void(Board&)> operation;
    QStringList signalNames;
    int writes;
    /// Brings the board into another state first; may be absent.
    std::function<void(Board&)> preparation = nullptr;
};

class ChangeSignals : public StoreFixture, public testing::WithParamInterface<OperationCase>
{
protected:
    Board board()
    {
        for (const WindowID id : {1U, 2U, 3U})
            desktop.addWindow(id, 100, QStringLiteral("window"));
        store().refresh();
        const GoalID b = makeGoal(QStringLiteral("B"));
        const GoalID a = makeGoal(QStringLiteral("A"));
        const TodoID todoInA = makeTodo(a);
        const TodoID otherTodoInA = makeTodo(a);
        const TodoID looseTodo = makeTodo(std::nullopt);
        const TodoID otherLooseTodo = makeTodo(std::nullopt);
        store().assign(1, b);
        return {store(),      desktop,   scheduler,     a, b, todoInA,
                otherTodoInA, looseTodo, otherLooseTodo};
    }
};

/// What the cases are written with.
namespace operation_cases {

// The signals.
inline const QString goals = QStringLiteral("goals");
inline const QString unassignedTodos = QStringLiteral("unassignedTodos");
inline const QString lingeringTodoID = QStringLiteral("lingeringTodoID");
inline const QString windows = QStringLiteral("windows");
inline const QString boardNavigation = QStringLiteral("boardNavigation");
inline const QString todoEditorGoalID = QStringLiteral("todoEditorGoalID");
inline const QString todoEditorRequestID = QStringLiteral("todoEditorRequestID");
inline const QString toastMessage = QStringLiteral("toastMessage");
inline const QString toastOffersUndo = QStringLiteral("toastOffersUndo");
inline const QString toastOffersManualOrder = QStringLiteral("toastOffersManualOrder");
inline const QString restorationID = QStringLiteral("restorationID");
inline const QString canUndo = QStringLiteral("canUndo");
inline const QString canRedo = QStringLiteral("canRedo");
inline const QString searchText = QStringLiteral("searchText");
inline const QString language = QStringLiteral("language");
inline const QString isLanguageChosen = QStringLiteral("isLanguageChosen");
inline const QString isAutoSortingGoals = QStringLiteral("isAutoSortingGoals");
inline const QString isHiding = QStringLiteral("isHidingGoalsWithoutOpenTodos");

inline const std::optional<GoalID> unassigned;
inline const QString title = QStringLiteral("new title");

// Preparations.
inline void hide(Board& s)
{
    s.store.setHidingGoalsWithoutOpenTodos(true);
}
inline void sortByHand(Board& s)
{
    s.store.setAutoSortingGoals(false);
}

} // namespace operation_cases

} // namespace kelpa::test
