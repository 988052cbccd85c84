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
    const DesktopLinks storedLinks = std::exchange(m_savedVersion, m_state.version()).desktopLinks;
    // In one write with the pins, which mean other desktops by links of earlier ones.
    if (m_saver.isLoaded() && m_savedVersion.desktopLinks != storedLinks)
        settings.push_back(desktopLinksEntry(m_savedVersion.desktopLinks));
    std::ranges::move(m_recall.entriesToSave(), std::back_inserter(settings));
    m_saver.save(m_savedVersion.contents, std::move(settings));
}

void UndoSteps::saveDesktopLinks()
{
    DesktopLinks links = m_state.desktopLinks();
    if (links == m_savedVersion.desktopLinks)
        return;
    m_savedVersion.desktopLinks = std::move(links);
    // Before that they would replace those of the stored board.
    if (m_saver.isLoaded())
        m_saver.write({desktopLinksEntry(m_savedVersion.desktopLinks)});
}

QList<GoalID> UndoSteps::undo()
{
    return m_history.canUndo() ? restore(m_history.undo(m_state.version())) : QList<GoalID>();
}

QList<GoalID> UndoSteps::redo()
{
    return m_history.canRedo() ? restore(m_history.redo(m_state.version())) : QList<GoalID>();
}

QList<GoalID> UndoSteps::relinkedGoals(const DesktopLinks& before) const
{
    const DesktopLinks links = m_state.desktopLinks();
    QList<GoalID> goals;
    for (const Goal& goal : std::as_const(m_state.goals)) {
        const auto link = links.constFind(goal.id);
        const auto former = before.constFind(goal.id);
        if (link != links.constEnd() && former != before.constEnd() && link->pin == former->pin &&
            link->desktop != former->desktop)
            goals.append(goal.id);
    }
    return goals;
}

QList<GoalID> UndoSteps::restore(BoardVersion board)
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
    const BoardVersion presentVersion = m_state.version();
    const BoardContents& before = presentVersion.contents;
    const QSet<WindowID> answered = (m_state.answeredOffers - board.answeredOffers) +
                                    (board.answeredOffers - m_state.answeredOffers);
    const QSet<WindowID> offeredBefore = offeredAmong(answered);
    m_state.answeredOffers = std::move(board.answeredOffers);
    const QList<WindowItem> windowsBefore = m_state.windows;
    const QList<GoalID> visibleBefore = m_state.visibleGoalIDs();
    m_state.pinnedDesktops.restore(board.desktopLinks, board.contents.pins);
    show(std::move(board.contents));
    // The change may be far from where the person is, or in a goal that is hidden.
    std::optional<RestorationTarget> changed =
        restorationTarget(before, m_state.version().contents, m_state.boardNavigation.target);
    const QSet<WindowID> offered = offeredAmong(answered);
    const QSet<WindowID> changedOffers = (offered - offeredBefore) + (offeredBefore - offered);
    // Only the offer on a card differs. A window that was offered a goal may be gone by now.
    if (before == m_state.version().contents && !changedOffers.isEmpty())
        changed = {.target = TargetSelection::unassigned(), .isPlaceOfWindow = true};
    QList<GoalID> relinked = relinkedGoals(presentVersion.desktopLinks);
    if (!relinked.isEmpty()) {
        m_state.markChanged(StoreField::pins);
        if (!changed)
            changed = {.target = TargetSelection::goal(relinked.constFirst())};
    }
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
    return relinked;
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
