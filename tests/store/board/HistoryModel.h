// A model of undo and redo that keeps whole boards, to compare `BoardHistory` with.
#pragma once

#include "store/WindowStore.h"
#include "store/board/BoardHistory.h"
#include "store/board/GoalOrder.h"

#include <QList>

namespace kelpa::test {

/// For a board that only the person changes.
class HistoryModel
{
public:
    static BoardVersion present(const WindowStore& store)
    {
        return {{store.goals(), store.unassignedTodos(), store.assignments()},
                store.isAutoSortingGoals()};
    }

    void record(const BoardVersion& before, const BoardVersion& after)
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
    BoardVersion undo(const BoardVersion& present) { return applyLast(m_past, m_future, present); }
    BoardVersion redo(const BoardVersion& present) { return applyLast(m_future, m_past, present); }

private:
    struct Version
    {
        BoardVersion board;
        bool hasSwitched = false;
    };

    static BoardVersion applyLast(QList<Version>& source, QList<Version>& inverses,
                                  const BoardVersion& present)
    {
        if (source.isEmpty())
            return present;
        Version version = source.takeLast();
        inverses.append({present, version.hasSwitched});
        if (!version.hasSwitched)
            version.board.isAutoSortingGoals = present.isAutoSortingGoals;
        if (version.board.isAutoSortingGoals)
            version.board.contents.goals = automaticallySorted(version.board.contents.goals);
        return version.board;
    }

    QList<Version> m_past;
    QList<Version> m_future;
};

} // namespace kelpa::test
