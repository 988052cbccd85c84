// What undoing and redoing must lead to, the simple way: by whole boards.
#pragma once

#include "store/WindowStore.h"
#include "store/board/BoardHistory.h"
#include "store/board/GoalOrder.h"

#include <QList>

namespace kelpa::test {

/// For a board that nobody but the person changes.
class HistoryModel
{
public:
    static BoardVersion present(const WindowStore& store)
    {
        return {{store.goals(), store.unassignedTodos(), store.assignments()},
                store.isAutoSortingGoals()};
    }

    void note(const BoardVersion& before, const BoardVersion& after)
    {
        if (before.contents == after.contents)
            return;
        m_future.clear();
        m_past.append({before, before.isAutoSortingGoals != after.isAutoSortingGoals});
        if (m_past.size() > 100)
            m_past.removeFirst();
    }

    void clear()
    {
        m_past.clear();
        m_future.clear();
    }

    bool canUndo() const { return !m_past.isEmpty(); }
    bool canRedo() const { return !m_future.isEmpty(); }
    BoardVersion undone(const BoardVersion& present) { return moved(m_past, m_future, present); }
    BoardVersion redone(const BoardVersion& present) { return moved(m_future, m_past, present); }

private:
    struct Moment
    {
        BoardVersion board;
        bool hasSwitched = false;
    };

    static BoardVersion moved(QList<Moment>& from, QList<Moment>& to, const BoardVersion& present)
    {
        if (from.isEmpty())
            return present;
        Moment moment = from.takeLast();
        to.append({present, moment.hasSwitched});
        if (!moment.hasSwitched)
            moment.board.isAutoSortingGoals = present.isAutoSortingGoals;
        if (moment.board.isAutoSortingGoals)
            moment.board.contents.goals = automaticallySorted(moment.board.contents.goals);
        return moment.board;
    }

    QList<Moment> m_past;
    QList<Moment> m_future;
};

} // namespace kelpa::test
