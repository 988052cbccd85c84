#include "store/UndoSteps.h"

#include "store/board/BoardPersistence.h"
#include "store/board/GoalOrder.h"
#include "store/board/RestorationTarget.h"

#include <QSet>

#include <algorithm>
#include <iterator>
#include <utility>

namespace kelpa {

UndoSteps::UndoSteps(StoreState& state, BoardSelection& selection, Toast& toast, BoardSaver& saver,
                     WindowRecall& recall)
    : m_state(state), m_selection(selection), m_toast(toast), m_saver(saver), m_recall(recall)
{}

void UndoSteps::show(BoardContents contents)
{
    if (m_state.isAutoSortingGoals)
        contents.goals = automaticallySorted(contents.goals);
    m_state.assign(m_state.goals, std::move(contents.goals), StoreField::goals);
    m_state.assign(m_state.unassignedTodos, std::move(contents.unassignedTodos),
                   StoreField::unassignedTodos);
    m_state.assignments = std::move(contents.assignments);
    m_state.assign(m_state.pins, std::move(contents.pins), StoreField::pins);
    m_state.assignWindows(m_state.windows);
    m_selection.reconcileWithGoals();
}

void UndoSteps::restart()
{
    m_history.clear();
    m_toast.withdraw(Toast::Offer::undo);
    publishHistory();
    m_savedVersion = m_state.version();
}

void UndoSteps::saveStep(std::vector<SettingsEntry> settings)
{
    if (m_history.record(m_savedVersion, m_state.version()))
        m_toast.withdraw(Toast::Offer::undo);
    saveState(std::move(settings));
    publishHistory();
}

void UndoSteps::saveAnnounced(ToastText announcement, std::vector<SettingsEntry> settings)
{
    m_history.record(m_savedVersion, m_state.version());
    m_toast.show(std::move(announcement), Toast::Offer::undo);
    saveState(std::move(settings));
    publishHistory();
}

void UndoSteps::saveState(std::vector<SettingsEntry> settings)
{
    m_savedVersion = m_state.version();
    std::ranges::move(m_recall.entriesToSave(), std::back_inserter(settings));
    m_saver.save(m_savedVersion.contents, std::move(settings));
}

void UndoSteps::undo()
{
    if (m_history.canUndo())
        restore(m_history.undo(m_state.version()));
}

void UndoSteps::redo()
{
    if (m_history.canRedo())
        restore(m_history.redo(m_state.version()));
}

void UndoSteps::restore(BoardVersion board)
{
    std::vector<SettingsEntry> settings;
    if (m_state.assign(m_state.isAutoSortingGoals, board.isAutoSortingGoals,
                       StoreField::isAutoSortingGoals))
        settings.push_back({autoSortingGoalsKey, board.isAutoSortingGoals});
    if (m_state.assign(m_state.isRememberingWindows, board.isRememberingWindows,
                       StoreField::isRememberingWindows)) {
        settings.push_back({rememberingWindowsKey, board.isRememberingWindows});
        m_recall.noteSwitch();
    }
    const BoardContents before = m_state.version().contents;
    const QSet<WindowID> answered = (m_state.answeredOffers - board.answeredOffers) +
                                    (board.answeredOffers - m_state.answeredOffers);
    const QSet<WindowID> offeredBefore = offeredAmong(answered);
    m_state.answeredOffers = std::move(board.answeredOffers);
    const QList<WindowItem> windowsBefore = m_state.windows;
    const QList<GoalID> visibleBefore = m_state.visibleGoalIDs();
    show(std::move(board.contents));
    // The change may be far from where the person is, or in a goal that is hidden.
    std::optional<RestorationTarget> changed =
        restorationTarget(before, m_state.version().contents, m_state.boardNavigation.target);
    const QSet<WindowID> offered = offeredAmong(answered);
    const QSet<WindowID> changedOffers = (offered - offeredBefore) + (offeredBefore - offered);
    // Only the offer on a card differs. A window that was offered a goal may be gone by now.
    if (before == m_state.version().contents && !changedOffers.isEmpty())
        changed = {.target = TargetSelection::unassigned(), .isPlaceOfWindow = true};
    if (changed) {
        const std::optional<GoalID> goalID = changed->target.goalID();
        if (goalID && !visibleBefore.contains(*goalID) && !m_state.isVisible(*goalID))
            m_state.assign(m_state.isHidingGoalsWithoutOpenTodos, false,
                           StoreField::isHidingGoalsWithoutOpenTodos);
        if (changed->isPlaceOfWindow)
            showMovedWindows(windowsBefore, changedOffers);
        m_selection.activate(changed->target, EnterWindowLayer::no);
        m_state.restoredTodoID = changed->todoID;
        m_state.assign(m_state.restorationID, m_state.restorationID + 1, StoreField::restorationID);
    }
    m_toast.withdraw(Toast::Offer::undo);
    saveState(std::move(settings));
    publishHistory();
}

QSet<WindowID> UndoSteps::offeredAmong(const QSet<WindowID>& windows) const
{
    // Most steps answer no offer, and all offers are many.
    if (windows.isEmpty())
        return {};
    const QList<WindowID> offered = m_recall.offers().keys();
    return QSet<WindowID>(offered.cbegin(), offered.cend()) & windows;
}

/// Ends a search that matches none of the windows that moved or whose offers have changed.
void UndoSteps::showMovedWindows(const QList<WindowItem>& before,
                                 const QSet<WindowID>& changedOffers)
{
    QSet<WindowID> moved = changedOffers;
    for (const WindowItem& window : std::as_const(m_state.windows)) {
        const WindowItem* const former = windowWith(window.id, before);
        if (former != nullptr && former->goalID != window.goalID)
            moved.insert(window.id);
    }
    const auto isMoved = [&moved](const WindowItem& window) { return moved.contains(window.id); };
    if (moved.isEmpty() || std::ranges::any_of(m_state.filteredWindows(), isMoved))
        return;
    m_state.assign(m_state.searchText, QString(), StoreField::searchText);
}

void UndoSteps::publishHistory()
{
    m_state.assign(m_state.canUndo, m_history.canUndo(), StoreField::canUndo);
    m_state.assign(m_state.canRedo, m_history.canRedo(), StoreField::canRedo);
}

} // namespace kelpa
