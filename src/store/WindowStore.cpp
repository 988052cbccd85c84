#include "store/WindowStoreParts.h"

#include "platform/Accessibility.h"
#include "store/board/BoardPersistence.h"
#include "store/board/GoalOrder.h"
#include "text/KelpaCopy.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <iterator>
#include <utility>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// How long after a save that failed it is tried again, should no change come first.
constexpr Scheduler::Duration saveRetryDelay = 5s;

void emitSignals(WindowStore& store, const StoreChanges::Fields& changed)
{
    // In the order of `StoreField`.
    static constexpr auto changeSignals = std::to_array<void (WindowStore::*)()>({
        &WindowStore::windowsChanged,
        &WindowStore::goalsChanged,
        &WindowStore::unassignedTodosChanged,
        &WindowStore::previewsChanged,
        &WindowStore::boardNavigationChanged,
        &WindowStore::todoEditorGoalIDChanged,
        &WindowStore::todoEditorRequestIDChanged,
        &WindowStore::toastMessageChanged,
        &WindowStore::toastOffersUndoChanged,
        &WindowStore::restorationIDChanged,
        &WindowStore::canUndoChanged,
        &WindowStore::canRedoChanged,
        &WindowStore::searchTextChanged,
        &WindowStore::isAccessibilityTrustedChanged,
        &WindowStore::isScreenCaptureTrustedChanged,
        &WindowStore::languageChanged,
        &WindowStore::isAutoSortingGoalsChanged,
        &WindowStore::isHidingGoalsWithoutOpenTodosChanged,
    });
    static_assert(changeSignals.size() == StoreChanges::fieldCount);

    for (std::size_t i = 0; i < changeSignals.size(); ++i) {
        if (changed.test(i))
            std::invoke(changeSignals[i], store);
    }
}

} // namespace

WindowStore::Parts::Parts(WindowStore& store, const Platform& desktop, SettingsStore& storage,
                          Scheduler& clock)
    : platform(desktop), settings(storage), scheduler(clock),
      toast(scheduler, [&store] { store.publishToast(); }),
      looks(platform.windowServer, platform.applications, scheduler,
            [&store](const QList<WindowItem>& windows) { store.finishLook(windows); }),
      previewCaptures(platform.windowServer, scheduler, store.m_windows, store.m_previews,
                      [&store](Previews previews) { store.publishPreviews(std::move(previews)); }),
      bringForwardQueue(platform.applications, platform.accessibility, scheduler),
      launches(
          platform.applications, scheduler, store.m_windows, [&store] { store.refresh(); },
          [&store](GoalID goalID, WindowID windowID) { store.takeNewWindow(goalID, windowID); }),
      tasks(scheduler)
{}

WindowStore::WindowStore(const Platform& platform, SettingsStore& settings, Scheduler& scheduler,
                         Observing observing)
    : m_isAccessibilityTrusted(platform.accessibility.isTrusted()),
      m_isScreenCaptureTrusted(platform.windowServer.isScreenCaptureTrusted()),
      m_changes([this](const StoreChanges::Fields& changed) { emitSignals(*this, changed); }),
      m_parts(std::make_unique<Parts>(*this, platform, settings, scheduler))
{
    loadState();
    if (observing == Observing::started)
        startObserving();
}

WindowStore::~WindowStore() = default;

QList<Goal> WindowStore::visibleGoals() const
{
    return m_isHidingGoalsWithoutOpenTodos ? withOpenTodos(m_goals) : m_goals;
}

void WindowStore::setLanguage(AppLanguage language)
{
    const Update update(m_changes);
    if (!publish(m_language, language, Field::language))
        return;
    publishToast();
    write({{languageKey, rawValue(language)}});
}

void WindowStore::setAutoSortingGoals(bool isAutoSorting)
{
    const Update update(m_changes);
    if (!publish(m_isAutoSortingGoals, isAutoSorting, Field::isAutoSortingGoals))
        return;
    sortGoalsIfNeeded();
    saveStep({{autoSortingGoalsKey, isAutoSorting}});
}

void WindowStore::setHidingGoalsWithoutOpenTodos(bool isHiding)
{
    const Update update(m_changes);
    publish(m_isHidingGoalsWithoutOpenTodos, isHiding, Field::isHidingGoalsWithoutOpenTodos);
    reconcileSelectionWithVisibleGoals();
}

void WindowStore::setSearchText(const QString& text)
{
    const Update update(m_changes);
    if (publish(m_searchText, text, Field::searchText))
        reconcileNavigationWithWindows();
}

void WindowStore::markChanged(Field field)
{
    m_changes.mark(field);
    if (field == Field::windows || field == Field::searchText)
        m_parts->filteredWindows.reset();
    if (field == Field::windows || field == Field::searchText || field == Field::previews)
        m_parts->windowsByGoal.reset();
}

void WindowStore::loadState()
{
    const Update update(m_changes);
    if (!m_parts->settings.isLoaded()) {
        // Written now, an empty board would replace the stored one.
        retrySavingLater();
        return;
    }
    m_parts->isBoardLoaded = true;
    const StoredBoard board = loadBoard(m_parts->settings);
    publish(m_language, board.language.value_or(allAppLanguages.front()), Field::language);
    publish(m_isAutoSortingGoals, board.isAutoSortingGoals.value_or(m_isAutoSortingGoals),
            Field::isAutoSortingGoals);
    showContents(joined(board.contents, {m_goals, m_unassignedTodos, m_assignments}));
    m_parts->history.clear();
    m_parts->toast.withdrawOffer();
    publishHistory();

    std::vector<SettingsEntry> entries = boardEntries(m_goals, m_unassignedTodos);
    if (m_assignments != board.contents.assignments)
        entries.push_back(assignmentsEntry(m_assignments));
    else if (board.assignmentsDocument)
        entries.push_back({assignmentsKey, *board.assignmentsDocument});
    m_parts->savedVersion = version();
    write(entries);
}

void WindowStore::saveState(std::vector<SettingsEntry> settings)
{
    m_parts->savedVersion = version();
    std::vector<SettingsEntry> entries;
    if (m_parts->isBoardLoaded) {
        entries = boardEntries(m_goals, m_unassignedTodos);
        entries.push_back(assignmentsEntry(m_assignments));
    }
    std::ranges::move(settings, std::back_inserter(entries));
    write(entries);
}

void WindowStore::write(const std::vector<SettingsEntry>& entries)
{
    afterWriting(m_parts->settings.write(entries));
}

void WindowStore::finishSaving()
{
    const Update update(m_changes);
    afterWriting(m_parts->settings.flush());
}

void WindowStore::afterWriting(bool isDone)
{
    if (!m_parts->isBoardLoaded && m_parts->settings.isLoaded())
        loadState();
    else if (isDone)
        m_parts->saveRetry.reset();
    else
        retrySavingLater();
}

void WindowStore::retrySavingLater()
{
    m_parts->saveRetry = m_parts->scheduler.after(saveRetryDelay, [this] {
        m_parts->saveRetry.reset();
        finishSaving();
    });
}

void WindowStore::setToastHeld(bool isHeld)
{
    m_parts->toast.setHeld(isHeld);
}

void WindowStore::publishToast()
{
    const Update update(m_changes);
    std::optional<QString> message;
    if (const std::optional<CopyKey> text = m_parts->toast.text())
        message = KelpaCopy::text(*text, m_language);
    publish(m_toastMessage, std::move(message), Field::toastMessage);
    publish(m_toastOffersUndo, m_parts->toast.offersUndo(), Field::toastOffersUndo);
}

} // namespace kelpa
