#include "store/board/BoardHistory.h"

namespace kelpa {

namespace {

std::optional<GoalID> assigned(const Assignments& assignments, const QString& key)
{
    const auto found = assignments.constFind(key);
    return found != assignments.constEnd() ? std::optional(*found) : std::nullopt;
}

} // namespace

bool BoardHistory::note(const BoardVersion& before, const BoardVersion& after)
{
    if (before.contents == after.contents)
        return false;
    m_redoable.clear();
    m_undoable.append(stepTo(before, after));
    if (m_undoable.size() > mostSteps)
        m_undoable.removeFirst();
    return true;
}

void BoardHistory::clear()
{
    m_undoable.clear();
    m_redoable.clear();
}

BoardVersion BoardHistory::undone(const BoardVersion& board)
{
    return taken(m_undoable, m_redoable, board);
}

BoardVersion BoardHistory::redone(const BoardVersion& board)
{
    return taken(m_redoable, m_undoable, board);
}

BoardHistory::Step BoardHistory::stepTo(const BoardVersion& target, const BoardVersion& from)
{
    Step step{target.contents.goals, target.contents.unassignedTodos, {}, std::nullopt};
    const Assignments& wanted = target.contents.assignments;
    const Assignments& present = from.contents.assignments;
    for (const Assignments& keys : {wanted, present}) {
        for (const auto& [key, goalID] : keys.asKeyValueRange()) {
            if (assigned(wanted, key) != assigned(present, key))
                step.assignments.insert(key, assigned(wanted, key));
        }
    }
    if (target.isAutoSortingGoals != from.isAutoSortingGoals)
        step.isAutoSortingGoals = target.isAutoSortingGoals;
    return step;
}

BoardVersion BoardHistory::taken(QList<Step>& from, QList<Step>& to, const BoardVersion& board)
{
    if (from.isEmpty())
        return board;
    const Step step = from.takeLast();
    Step inverse{board.contents.goals, board.contents.unassignedTodos, {}, std::nullopt};
    BoardVersion result{{step.goals, step.unassignedTodos, board.contents.assignments},
                        board.isAutoSortingGoals};
    for (const auto& [key, goalID] : step.assignments.asKeyValueRange()) {
        inverse.assignments.insert(key, assigned(result.contents.assignments, key));
        if (goalID)
            result.contents.assignments.insert(key, *goalID);
        else
            result.contents.assignments.remove(key);
    }
    if (step.isAutoSortingGoals) {
        inverse.isAutoSortingGoals = board.isAutoSortingGoals;
        result.isAutoSortingGoals = *step.isAutoSortingGoals;
    }
    to.append(std::move(inverse));
    return result;
}

} // namespace kelpa
