// Taking back what was done on the board, and doing it again.

#include "store/WindowStoreParts.h"
#include "store/board/BoardPersistence.h"
#include "store/board/GoalOrder.h"
#include "store/board/RestorationTarget.h"

#include <QSet>

#include <algorithm>

namespace kelpa {

void WindowStore::undo()
{
    const Update update(m_changes);
    if (m_parts->history.canUndo())
        restore(m_parts->history.undone(version()));
}

void WindowStore::redo()
{
    const Update update(m_changes);
    if (m_parts->history.canRedo())
        restore(m_parts->history.redone(version()));
}

BoardVersion WindowStore::version() const
{
    return {{m_goals, m_unassignedTodos, m_assignments}, m_isAutoSortingGoals};
}

void WindowStore::restore(BoardVersion board)
{
    std::vector<SettingsEntry> settings;
    if (publish(m_isAutoSortingGoals, board.isAutoSortingGoals, Field::isAutoSortingGoals))
        settings.push_back({autoSortingGoalsKey, board.isAutoSortingGoals});
    const BoardContents before = version().contents;
    const QList<WindowItem> windowsBefore = m_windows;
    const QList<GoalID> shownBefore = visibleGoalIDs();
    showContents(std::move(board.contents));
    // What came back may be far from where the person is, or in a goal that does not show.
    if (const auto changed =
            restorationTarget(before, version().contents, m_boardNavigation.target)) {
        const std::optional<GoalID> goalID = changed->target.goalID();
        if (goalID && !shownBefore.contains(*goalID) && !visibleGoalIDs().contains(*goalID))
            publish(m_isHidingGoalsWithoutOpenTodos, false, Field::isHidingGoalsWithoutOpenTodos);
        if (changed->isPlaceOfWindow)
            showMovedWindows(windowsBefore);
        activateTarget(changed->target, EnterWindowLayer::no);
        m_restoredTodoID = changed->todoID;
        publish(m_restorationID, m_restorationID + 1, Field::restorationID);
    }
    m_parts->toast.withdrawOffer();
    saveState(std::move(settings));
    publishHistory();
}

/// Ends a search that shows none of the windows that are elsewhere now.
void WindowStore::showMovedWindows(const QList<WindowItem>& before)
{
    QSet<WindowID> moved;
    for (const WindowItem& window : m_windows) {
        const auto former = std::ranges::find(before, window.id, &WindowItem::id);
        if (former != before.end() && former->goalID != window.goalID)
            moved.insert(window.id);
    }
    const auto isMoved = [&moved](const WindowItem& window) { return moved.contains(window.id); };
    if (!moved.isEmpty() && std::ranges::none_of(filteredWindows(), isMoved))
        setSearchText({});
}

void WindowStore::showContents(BoardContents contents)
{
    if (m_isAutoSortingGoals)
        contents.goals = automaticallySorted(contents.goals);
    publish(m_goals, std::move(contents.goals), Field::goals);
    publish(m_unassignedTodos, std::move(contents.unassignedTodos), Field::unassignedTodos);
    m_assignments = std::move(contents.assignments);
    reconcileWithBoard();
}

void WindowStore::saveStep(std::vector<SettingsEntry> settings)
{
    if (m_parts->history.note(m_parts->savedVersion, version()))
        m_parts->toast.withdrawOffer();
    saveState(std::move(settings));
    publishHistory();
}

void WindowStore::saveDeletion(CopyKey announcement)
{
    m_parts->history.note(m_parts->savedVersion, version());
    m_parts->toast.show(announcement, Toast::OffersUndo::yes);
    saveState();
    publishHistory();
}

void WindowStore::publishHistory()
{
    publish(m_canUndo, m_parts->history.canUndo(), Field::canUndo);
    publish(m_canRedo, m_parts->history.canRedo(), Field::canRedo);
}
} // namespace kelpa
