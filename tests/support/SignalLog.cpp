#include "support/SignalLog.h"

#include <utility>

namespace kelpa::test {

SignalLog::SignalLog(const WindowStore& store)
{
    const auto listen = [this, &store](auto signal, const char* name) {
        QObject::connect(&store, signal, &m_context, [this, name] { count(name); });
    };
    listen(&WindowStore::windowsChanged, "windows");
    listen(&WindowStore::goalsChanged, "goals");
    listen(&WindowStore::unassignedTodosChanged, "unassignedTodos");
    listen(&WindowStore::lingeringTodoIDChanged, "lingeringTodoID");
    listen(&WindowStore::previewsChanged, "previews");
    listen(&WindowStore::boardNavigationChanged, "boardNavigation");
    listen(&WindowStore::todoEditorGoalIDChanged, "todoEditorGoalID");
    listen(&WindowStore::todoEditorRequestIDChanged, "todoEditorRequestID");
    listen(&WindowStore::toastMessageChanged, "toastMessage");
    listen(&WindowStore::toastOffersUndoChanged, "toastOffersUndo");
    listen(&WindowStore::toastOffersManualOrderChanged, "toastOffersManualOrder");
    listen(&WindowStore::restorationIDChanged, "restorationID");
    listen(&WindowStore::canUndoChanged, "canUndo");
    listen(&WindowStore::canRedoChanged, "canRedo");
    listen(&WindowStore::canGoBackChanged, "canGoBack");
    listen(&WindowStore::searchTextChanged, "searchText");
    listen(&WindowStore::isAccessibilityTrustedChanged, "isAccessibilityTrusted");
    listen(&WindowStore::isScreenCaptureTrustedChanged, "isScreenCaptureTrusted");
    listen(&WindowStore::obstaclesChanged, "obstacles");
    listen(&WindowStore::abilitiesChanged, "abilities");
    listen(&WindowStore::languageChanged, "language");
    listen(&WindowStore::isLanguageChosenChanged, "isLanguageChosen");
    listen(&WindowStore::isAutoSortingGoalsChanged, "isAutoSortingGoals");
    listen(&WindowStore::isHidingGoalsWithoutOpenTodosChanged, "isHidingGoalsWithoutOpenTodos");
    listen(&WindowStore::unsortedFoldChanged, "unsortedFold");
    listen(&WindowStore::isRememberingWindowsChanged, "isRememberingWindows");
    listen(&WindowStore::windowMemoryChanged, "windowMemory");
    listen(&WindowStore::isSavingSlowlyChanged, "isSavingSlowly");
    listen(&WindowStore::pinsChanged, "pins");
    listen(&WindowStore::troubleChanged, "trouble");
}

QMap<QString, int> SignalLog::take()
{
    return std::exchange(m_counts, {});
}

void SignalLog::count(const char* name)
{
    ++m_counts[QString::fromLatin1(name)];
}

} // namespace kelpa::test
