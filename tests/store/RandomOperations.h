// A store on which operations are done by chance, and the checks of its invariants.
#pragma once

#include "store/board/BoardModel.h"
#include "store/board/HistoryModel.h"
#include "support/Seed.h"
#include "support/StoreFixture.h"

#include <random>

namespace kelpa::test {

class RandomOperations : public StoreFixture
{
protected:
    int below(int bound) { return std::uniform_int_distribution(0, bound - 1)(m_random); }
    bool chance(int oneIn) { return below(oneIn) == 0; }

    /// Mostly a goal of the board, now and then one that it does not know.
    GoalID anyGoal()
    {
        const QList<Goal>& goals = store().goals();
        if (goals.isEmpty() || chance(20))
            return GoalID::create();
        return goals[below(static_cast<int>(goals.size()))].id;
    }

    std::optional<GoalID> anyList() { return chance(3) ? std::nullopt : std::optional(anyGoal()); }

    struct Place
    {
        TodoID id;
        std::optional<GoalID> list;
    };

    Place anyTodo()
    {
        QList<Place> places;
        for (const Goal& each : store().goals()) {
            for (const TodoItem& item : each.todos)
                places.append({item.id, each.id});
        }
        for (const TodoItem& item : store().unassignedTodos())
            places.append({item.id, std::nullopt});
        if (places.isEmpty() || chance(20))
            return {TodoID::create(), anyList()};
        return places[below(static_cast<int>(places.size()))];
    }

    QString anyTitle()
    {
        static const QStringList titles{QStringLiteral("a"),        QStringLiteral("  b "),
                                        QStringLiteral(" "),        QStringLiteral("日本語"),
                                        QStringLiteral("👍🏽"), QStringLiteral("\"\\\n")};
        return titles[below(static_cast<int>(titles.size()))];
    }

    WindowID anyWindow() { return static_cast<WindowID>(1 + below(14)); }

    void changeDesktop()
    {
        const WindowID id = anyWindow();
        if (desktop.onScreen.contains(id))
            desktop.removeWindow(id);
        else
            // Each window shows something of its own, so that none is taken for another one.
            desktop.addWindow(id, 100 + below(4),
                              QStringLiteral("%1 of window %2").arg(anyTitle()).arg(id));
    }

    /// One operation, chosen by chance; gives its name.
    std::string operate();

    /// The goal that the store has and the model does not know yet; a failure unless there is one
    /// exactly where it is expected.
    std::optional<BoardModel::ModelGoal> addedGoal(bool isExpected);

    /// Of a list whose completed todos are about to be deleted.
    void forgetCompleted(const QList<TodoItem>& todos);

    /// Expects the board to be this one, which is from here on what the test expects.
    void expectBoard(const BoardVersion& board);
    /// Back as far as it goes, and forth again.
    void checkHistory();
    void checkMovedBefore(TodoID moved, TodoID target);
    void checkTodos();
    void checkGoals();
    void checkNavigation();
    void checkAssignments();
    void checkSavedState();
    /// The board and its steps are those of the plain model.
    void checkModel();

    /// The expected contents, which the test tracks beside the store.
    QSet<TodoID> m_todos;
    Assignments m_assignments;
    HistoryModel m_history;
    BoardModel m_model;
    BoardVersion m_before;

    const std::uint64_t m_seed = seed();
    std::mt19937_64 m_random{m_seed};
};

} // namespace kelpa::test
