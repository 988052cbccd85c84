#include "store/WindowStoreParts.h"

#include "store/board/BoardPersistence.h"
#include "text/FormerWindowCopy.h"
#include "text/KelpaCopy.h"
#include "text/TodoCopy.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

namespace kelpa {

namespace {

void emitSignals(WindowStore& store, const StoreChanges::Fields& changed)
{
    // In the order of `StoreField`.
    static constexpr auto changeSignals = std::to_array<void (WindowStore::*)()>({
        &WindowStore::windowsChanged,
        &WindowStore::goalsChanged,
        &WindowStore::unassignedTodosChanged,
        &WindowStore::lingeringTodoIDChanged,
        &WindowStore::previewsChanged,
        &WindowStore::boardNavigationChanged,
        &WindowStore::todoEditorGoalIDChanged,
        &WindowStore::todoEditorRequestIDChanged,
        &WindowStore::toastMessageChanged,
        &WindowStore::toastOffersUndoChanged,
        &WindowStore::toastOffersManualOrderChanged,
        &WindowStore::restorationIDChanged,
        &WindowStore::canUndoChanged,
        &WindowStore::canRedoChanged,
        &WindowStore::canGoBackChanged,
        &WindowStore::searchTextChanged,
        &WindowStore::isAccessibilityTrustedChanged,
        &WindowStore::isScreenCaptureTrustedChanged,
        &WindowStore::obstaclesChanged,
        &WindowStore::abilitiesChanged,
        &WindowStore::languageChanged,
        &WindowStore::isLanguageChosenChanged,
        &WindowStore::isAutoSortingGoalsChanged,
        &WindowStore::isHidingGoalsWithoutOpenTodosChanged,
        &WindowStore::unsortedFoldChanged,
        &WindowStore::isRememberingWindowsChanged,
        &WindowStore::windowMemoryChanged,
        &WindowStore::pinsChanged,
        &WindowStore::isClosingQuittingChanged,
        &WindowStore::isSavingSlowlyChanged,
        &WindowStore::troubleChanged,
    });
    static_assert(changeSignals.size() == StoreChanges::fieldCount);

    for (std::size_t i = 0; i < changeSignals.size(); ++i) {
        if (changed.test(i))
            std::invoke(changeSignals[i], store);
    }
}

QString reopeningText(const ReopeningTrouble& trouble, AppLanguage language)
{
    switch (trouble.kind) {
    case ReopeningTrouble::Kind::notInstalled:
        return KelpaCopy::applicationIsGone(trouble.name, language);
    case ReopeningTrouble::Kind::documentGone:
        return KelpaCopy::documentIsGone(trouble.name, language);
    case ReopeningTrouble::Kind::noNewWindow:
        return KelpaCopy::hasNoNewWindow(trouble.name, language);
    }
    return {};
}

/// Empties what was set aside of the memory: what could not be decoded may name windows all the
/// same.
void appendEmptiedCopies(std::vector<SettingsEntry>& entries, const SettingsStore& settings)
{
    for (const QString& copy : settings.copiesAside(windowMemoryKey))
        entries.push_back({copy, QByteArray()});
}

} // namespace

WindowStore::Parts::Parts(WindowStore& owner, StoreState& values, const Platform& desktop,
                          SettingsStore& storage, Scheduler& clock)
    : store(owner), state(values), platform(desktop), settings(storage), scheduler(clock),
      selection(state), toast(scheduler, [this] { publishToast(); }),
      saver(settings, scheduler,
            {.load = [this] { loadState(); },
             .stateChanged = [this] { publishSaving(); },
             .ended = [this] { Q_EMIT store.savingEnded(); }}),
      folder(platform.workspace, [this] { publishSaving(); }),
      recall(state, scheduler,
             {.recalled =
                  [this](const QList<RecalledWindow>& windows) { takeRecalledWindows(windows); },
              .store = [this](const std::vector<SettingsEntry>& entries) { saver.write(entries); },
              .copyAside = [this] { settings.copyAside(windowMemoryKey); },
              .changed = [this] { publishMemory(); }}),
      steps(state, selection, toast, saver, recall),
      permissions(platform, [this] { publishPermissions(); }),
      passes(
          platform.windowServer, platform.applications, scheduler,
          [this](const WindowDiscoveryBatch& discovered) {
              // Windows that may not be read any more are not gone. Those that may be read only now
              // wait for the next pass: this one has not looked.
              if (std::exchange(isPassAhead, false) || !permissions.granted().screenCapture)
                  publishAndFinishPass(discovered);
              else
                  finishPass(discovered);
          },
          [this](WorkPriority priority) { startPass(priority); }),
      previewCaptures(platform.windowServer, scheduler, state.windows, state.previews,
                      [this](Previews captured, PreviewCaptures::Messages messages) {
                          publishPreviews(std::move(captured), messages);
                      }),
      activations(platform.applications, platform.accessibility, scheduler),
      launches(
          platform.applications, scheduler, state.windows, [this] { store.refresh(); },
          [this](GoalID goalID, WindowID windowID, std::optional<WindowID> remembered) {
              takeLaunchedWindow(goalID, windowID, remembered);
          }),
      quits(scheduler), tasks(scheduler)
{}

WindowStore::WindowStore(const Platform& platform, SettingsStore& settings, Scheduler& scheduler,
                         Observing observing)
    : StoreValues([this](const StoreChanges::Fields& changed) { emitSignals(*this, changed); }),
      m_parts(std::make_unique<Parts>(*this, m_state, platform, settings, scheduler))
{
    // Whatever leads to it: a window that joins its goal, a pin, an undone step, a new desktop.
    for (const auto signal :
         {&WindowStore::windowsChanged, &WindowStore::pinsChanged, &WindowStore::abilitiesChanged})
        connect(this, signal, this, [this] { m_parts->sendToPins(); });
    const Update update(m_state.changes);
    m_parts->publish(m_parts->permissions.granted());
    m_parts->saver.start();
    if (observing == Observing::started)
        startObserving();
}

WindowStore::~WindowStore() = default;

void WindowStore::setLanguage(AppLanguage language)
{
    const Update update(m_state.changes);
    if (!m_state.assign(m_state.language, language, Field::language))
        return;
    m_parts->publishToast();
    m_state.assign(m_state.isLanguageChosen, true, Field::isLanguageChosen);
    m_parts->saver.write({{languageKey, rawValue(language)}});
}

void WindowStore::chooseLanguage(AppLanguage language)
{
    const Update update(m_state.changes);
    setLanguage(language);
    if (m_state.assign(m_state.isLanguageChosen, true, Field::isLanguageChosen))
        m_parts->saver.write({{languageKey, rawValue(language)}});
}

void WindowStore::setClosingQuitting(bool isQuitting)
{
    const Update update(m_state.changes);
    if (m_state.assign(m_state.isClosingQuitting, isQuitting, Field::isClosingQuitting))
        m_parts->saver.write({{closingQuitsKey, isQuitting}});
}

bool WindowStore::explainClosing()
{
    if (std::exchange(m_state.isClosingExplained, true))
        return false;
    const Update update(m_state.changes);
    m_parts->saver.write({{closingExplainedKey, true}});
    return true;
}

void WindowStore::noteSessionStartFailed(AutostartOutcome outcome)
{
    const Update update(m_state.changes);
    m_parts->toast.show(outcome == AutostartOutcome::refused ? CopyKey::SessionStartRefused
                                                             : CopyKey::SessionStartFailed,
                        Toast::Offer::none);
}

void WindowStore::noteShortcutsFailed()
{
    const Update update(m_state.changes);
    m_parts->toast.show(CopyKey::ShortcutsFailed, Toast::Offer::none);
}

void WindowStore::setAutoSortingGoals(bool isAutoSorting)
{
    const Update update(m_state.changes);
    if (!m_state.assign(m_state.isAutoSortingGoals, isAutoSorting, Field::isAutoSortingGoals))
        return;
    m_parts->toast.withdraw(Toast::Offer::manualOrder);
    m_state.sortGoalsIfNeeded();
    m_parts->steps.saveStep({{autoSortingGoalsKey, isAutoSorting}});
}

void WindowStore::setRememberingWindows(bool isRemembering)
{
    const Update update(m_state.changes);
    if (!m_state.assign(m_state.isRememberingWindows, isRemembering, Field::isRememberingWindows))
        return;
    std::vector<SettingsEntry> settings{{rememberingWindowsKey, isRemembering}};
    if (isRemembering) {
        m_parts->recall.startAnew();
        m_parts->steps.saveStep(std::move(settings));
    } else {
        m_parts->recall.stop();
        appendEmptiedCopies(settings, m_parts->settings);
        m_parts->steps.saveAnnounced(CopyKey::WindowsForgotten, std::move(settings));
    }
}

void WindowStore::setHidingGoalsWithoutOpenTodos(bool isHiding)
{
    const Update update(m_state.changes);
    m_state.assign(m_state.isHidingGoalsWithoutOpenTodos, isHiding,
                   Field::isHidingGoalsWithoutOpenTodos);
    m_parts->selection.reconcileSelectionWithVisibleGoals();
}

void WindowStore::setUnsortedFold(UnsortedFold fold)
{
    const Update update(m_state.changes);
    if (!m_state.assign(m_state.unsortedFold, fold, Field::unsortedFold))
        return;
    if (fold == UnsortedFold::folded && m_state.boardNavigation.target.isUnassigned() &&
        selectedWindowIndex() >= foldedWindowCount)
        returnToTargetSelection();
    m_parts->saver.write({{unsortedUnfoldedKey, fold == UnsortedFold::unfolded}});
}

void WindowStore::setSearchText(const QString& text)
{
    const Update update(m_state.changes);
    m_state.assign(m_state.searchText, text, Field::searchText);
}

void WindowStore::showHiddenFindings()
{
    const Update update(m_state.changes);
    if (m_state.findings().hiddenCount == 0)
        return;
    const QSet<GoalID> shownBefore(m_state.findings().goalsWithMatches);
    setHidingGoalsWithoutOpenTodos(false);
    const QSet<GoalID>& found = m_state.findings().goalsWithMatches;
    const auto first = std::ranges::find_if(m_state.goals, [&](const Goal& goal) {
        return found.contains(goal.id) && !shownBefore.contains(goal.id);
    });
    m_parts->selection.activate(TargetSelection::goal(first->id), EnterWindowLayer::yes);
}

void WindowStore::undo()
{
    const Update update(m_state.changes);
    m_parts->pinned.forget(m_parts->steps.undo());
}

void WindowStore::redo()
{
    const Update update(m_state.changes);
    m_parts->pinned.forget(m_parts->steps.redo());
}

BoardContents WindowStore::boardContents() const
{
    return m_state.version().contents;
}

void WindowStore::setToastHeld(bool isHeld)
{
    m_parts->toast.setHeld(isHeld);
}

void WindowStore::Parts::loadState()
{
    const Update update(state.changes);
    const StoredBoard board = loadBoard(settings);
    state.assign(state.language, board.language.value_or(allAppLanguages.front()), Field::language);
    state.assign(state.isLanguageChosen, board.language.has_value(), Field::isLanguageChosen);
    state.assign(state.isAutoSortingGoals,
                 board.isAutoSortingGoals.value_or(state.isAutoSortingGoals),
                 Field::isAutoSortingGoals);
    if (board.isUnsortedUnfolded)
        state.assign(state.unsortedFold,
                     *board.isUnsortedUnfolded ? UnsortedFold::unfolded : UnsortedFold::folded,
                     Field::unsortedFold);
    state.assign(state.isRememberingWindows, board.isRememberingWindows.value_or(true),
                 Field::isRememberingWindows);
    state.assign(state.isClosingQuitting, board.isClosingQuitting.value_or(false),
                 Field::isClosingQuitting);
    state.isClosingExplained = board.isClosingExplained.value_or(false);
    pinned.settle(board.contents.assignments, board.contents.pins);
    state.pinnedDesktops.restore(board.desktopLinks, board.contents.pins);
    steps.show(joined(board.contents, state.version().contents));
    steps.restart();
    recall.load(board.windowMemoryDocument);

    std::vector<SettingsEntry> entries = boardEntries(state.goals, state.unassignedTodos);
    if (state.assignments != board.contents.assignments)
        entries.push_back(assignmentsEntry(state.assignments));
    else if (board.assignmentsDocument)
        entries.push_back({assignmentsKey, *board.assignmentsDocument});
    if (state.pins != board.contents.pins || board.arePinsUnreadable)
        entries.push_back(goalPinsEntry(state.pins));
    if (const DesktopLinks links = state.desktopLinks(); links != board.desktopLinks)
        entries.push_back(desktopLinksEntry(links));
    // An earlier version left it when the memory was switched off.
    if (!state.isRememberingWindows)
        appendEmptiedCopies(entries, settings);
    saver.write(entries);
}

void WindowStore::Parts::publishMemory()
{
    const Update update(state.changes);
    state.assign(state.recallOffers, recall.offers(), Field::windowMemory);
    state.assign(state.absentWindows, recall.absentWindows(), Field::windowMemory);
    state.assign(state.goalsWithClosedWindows, recall.goalsWithClosedWindows(state.absentWindows),
                 Field::windowMemory);
}

void WindowStore::Parts::publishToast()
{
    const Update update(state.changes);
    std::optional<QString> message;
    if (const std::optional<ToastText> text = toast.text()) {
        if (const auto* const returned = std::get_if<ReturnedWindows>(&*text))
            message = KelpaCopy::windowsAreBack(returned->count, state.language);
        else if (const auto* const forgotten = std::get_if<ForgottenWindows>(&*text))
            message = KelpaCopy::windowsAreForgotten(forgotten->count, state.language);
        else if (const auto* const deleted = std::get_if<DeletedTodos>(&*text))
            message = KelpaCopy::completedTodosAreDeleted(deleted->count, state.language);
        else if (const auto* const trouble = std::get_if<ReopeningTrouble>(&*text))
            message = reopeningText(*trouble, state.language);
        else
            message = KelpaCopy::text(std::get<CopyKey>(*text), state.language);
    }
    state.assign(state.toastMessage, std::move(message), Field::toastMessage);
    state.assign(state.toastOffersUndo, toast.offer() == Toast::Offer::undo,
                 Field::toastOffersUndo);
    state.assign(state.toastOffersManualOrder, toast.offer() == Toast::Offer::manualOrder,
                 Field::toastOffersManualOrder);
}

} // namespace kelpa
