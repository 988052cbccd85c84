#include "store/WindowStoreParts.h"

#include "store/board/BoardPersistence.h"
#include "text/KelpaCopy.h"

#include <QSignalBlocker>

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
        &WindowStore::isSavingSlowlyChanged,
        &WindowStore::troubleChanged,
    });
    static_assert(changeSignals.size() == StoreChanges::fieldCount);

    for (std::size_t i = 0; i < changeSignals.size(); ++i) {
        if (changed.test(i))
            std::invoke(changeSignals[i], store);
    }
}

} // namespace

WindowStore::Parts::Parts(WindowStore& owner, StoreState& values, const Platform& desktop,
                          SettingsStore& storage, Scheduler& clock)
    : store(owner), state(values), platform(desktop), settings(storage), scheduler(clock),
      selection(state), toast(scheduler, [this] { publishToast(); }),
      saver(
          settings, scheduler, [this] { loadState(); }, [this] { publishSaving(); }),
      folder(platform.workspace, [this] { publishSaving(); }),
      recall(state, scheduler,
             {.recalled =
                  [this](const QList<RecalledWindow>& windows) { takeRecalledWindows(windows); },
              .store = [this](const std::vector<SettingsEntry>& entries) { saver.write(entries); },
              .changed = [this] { publishMemory(); }}),
      steps(state, selection, toast, saver, recall),
      permissions(platform, [this] { publishPermissions(); }),
      passes(
          platform.windowServer, platform.applications, scheduler,
          [this](const QList<WindowItem>& discovered) {
              if (std::exchange(isPassAhead, false))
                  finishPassAhead(discovered);
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
    m_parts->steps.undo();
}

void WindowStore::redo()
{
    const Update update(m_state.changes);
    m_parts->steps.redo();
}

void WindowStore::restoreBackup(const BoardContents& backup)
{
    const Update update(m_state.changes);
    m_parts->steps.show(restored(m_state.version().contents, backup));
    m_parts->steps.saveAnnounced(CopyKey::BackupRestored);
    refreshInBackground();
}

void WindowStore::setToastHeld(bool isHeld)
{
    m_parts->toast.setHeld(isHeld);
}

void WindowStore::retrySaving()
{
    const Update update(m_state.changes);
    m_parts->saver.retry();
}

bool WindowStore::saveBeforeClosing()
{
    const Update update(m_state.changes);
    m_parts->saver.retryAndWait();
    return !unsavedNotice(m_state.trouble, m_state.isSavingSlowly);
}

void WindowStore::dismissTrouble()
{
    const Update update(m_state.changes);
    m_parts->saver.dismissFileMovedAside();
}

void WindowStore::showStoredFolder()
{
    m_parts->folder.open(m_parts->settings.path());
}

void WindowStore::finishSaving()
{
    m_parts->recall.finish();
    m_parts->saver.finish();
}

void WindowStore::finishSavingInSilence()
{
    const QSignalBlocker silence(this);
    finishSaving();
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
    steps.show(joined(board.contents, state.version().contents));
    steps.restart();
    recall.load(board.rememberedWindows);

    std::vector<SettingsEntry> entries = boardEntries(state.goals, state.unassignedTodos);
    if (state.assignments != board.contents.assignments)
        entries.push_back(assignmentsEntry(state.assignments));
    else if (board.assignmentsDocument)
        entries.push_back({assignmentsKey, *board.assignmentsDocument});
    saver.write(entries);
}

void WindowStore::Parts::publishSaving()
{
    const Update update(state.changes);
    state.assign(state.isSavingSlowly, saver.isSlow(), Field::isSavingSlowly);
    std::optional<TroubleNotice> trouble = troubleNotice(saver.status());
    if (trouble)
        trouble->canShowFolder = folder.canOpen();
    const bool hasBegun = trouble && !state.trouble;
    state.assign(state.trouble, std::move(trouble), Field::trouble);
    if (hasBegun)
        folder.search(settings.path());
}

void WindowStore::Parts::publishMemory()
{
    const Update update(state.changes);
    state.assign(state.recallOffers, recall.offers(), Field::windowMemory);
    state.assign(state.absentWindows, recall.absentWindows(), Field::windowMemory);
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
        else if (const auto* const trouble = std::get_if<ReopeningTrouble>(&*text))
            message = trouble->isDocumentGone
                          ? KelpaCopy::documentIsGone(trouble->name, state.language)
                          : KelpaCopy::applicationIsGone(trouble->name, state.language);
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
