#include "store/board/BoardHistory.h"

namespace kelpa {

namespace {

std::optional<GoalID> assigned(const Assignments& assignments, const QString& key)
{
    const auto found = assignments.constFind(key);
    return found != assignments.constEnd() ? std::optional(*found) : std::nullopt;
}

std::optional<DesktopLink> linked(const DesktopLinks& links, GoalID goalID)
{
    const auto found = links.constFind(goalID);
    return found != links.constEnd() ? std::optional(*found) : std::nullopt;
}

} // namespace

bool BoardHistory::record(const BoardVersion& before, const BoardVersion& after)
{
    if (before.contents == after.contents &&
        before.isRememberingWindows == after.isRememberingWindows &&
        before.answeredOffers == after.answeredOffers && before.desktopLinks == after.desktopLinks)
        return false;
    m_redoable.clear();
    m_undoable.append(stepBetween(after, before));
    if (m_undoable.size() > maxSteps)
        m_undoable.removeFirst();
    return true;
}

void BoardHistory::clear()
{
    m_undoable.clear();
    m_redoable.clear();
}

BoardVersion BoardHistory::undo(const BoardVersion& board)
{
    return applyLast(m_undoable, m_redoable, board);
}

BoardVersion BoardHistory::redo(const BoardVersion& board)
{
    return applyLast(m_redoable, m_undoable, board);
}

BoardHistory::Step BoardHistory::stepBetween(const BoardVersion& from, const BoardVersion& to)
{
    Step step;
    step.goals = to.contents.goals;
    step.unassignedTodos = to.contents.unassignedTodos;
    step.pins = to.contents.pins;
    const Assignments& wanted = to.contents.assignments;
    const Assignments& present = from.contents.assignments;
    for (const Assignments& keys : {wanted, present}) {
        for (const auto& [key, goalID] : keys.asKeyValueRange()) {
            if (assigned(wanted, key) != assigned(present, key))
                step.assignments.insert(key, assigned(wanted, key));
        }
    }
    if (to.isAutoSortingGoals != from.isAutoSortingGoals)
        step.isAutoSortingGoals = to.isAutoSortingGoals;
    if (to.isRememberingWindows != from.isRememberingWindows)
        step.isRememberingWindows = to.isRememberingWindows;
    for (const WindowID windowID : to.answeredOffers - from.answeredOffers)
        step.answeredOffers.insert(windowID, true);
    for (const WindowID windowID : from.answeredOffers - to.answeredOffers)
        step.answeredOffers.insert(windowID, false);
    for (const DesktopLinks& links : {to.desktopLinks, from.desktopLinks}) {
        for (const GoalID goalID : links.keys()) {
            if (linked(to.desktopLinks, goalID) != linked(from.desktopLinks, goalID))
                step.desktopLinks.insert(goalID, linked(to.desktopLinks, goalID));
        }
    }
    return step;
}

BoardVersion BoardHistory::applyLast(QList<Step>& source, QList<Step>& inverses,
                                     const BoardVersion& board)
{
    if (source.isEmpty())
        return board;
    const Step step = source.takeLast();
    Step inverse;
    inverse.goals = board.contents.goals;
    inverse.unassignedTodos = board.contents.unassignedTodos;
    inverse.pins = board.contents.pins;
    BoardVersion result{{step.goals, step.unassignedTodos, board.contents.assignments, step.pins},
                        board.isAutoSortingGoals,
                        board.isRememberingWindows,
                        board.answeredOffers,
                        board.desktopLinks};
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
    if (step.isRememberingWindows) {
        inverse.isRememberingWindows = board.isRememberingWindows;
        result.isRememberingWindows = *step.isRememberingWindows;
    }
    for (const auto& [windowID, isAnswered] : step.answeredOffers.asKeyValueRange()) {
        inverse.answeredOffers.insert(windowID, board.answeredOffers.contains(windowID));
        if (isAnswered)
            result.answeredOffers.insert(windowID);
        else
            result.answeredOffers.remove(windowID);
    }
    for (const auto& [goalID, link] : step.desktopLinks.asKeyValueRange()) {
        inverse.desktopLinks.insert(goalID, linked(board.desktopLinks, goalID));
        if (link)
            result.desktopLinks.insert(goalID, *link);
        else
            result.desktopLinks.remove(goalID);
    }
    inverses.append(std::move(inverse));
    return result;
}

} // namespace kelpa
