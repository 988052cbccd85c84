// The board and its file: what becomes of changes, and boards that come from a backup or a file.
#include "store/WindowStoreParts.h"

#include "store/board/RestorationTarget.h"

#include <QSignalBlocker>

#include <utility>

namespace kelpa {

void WindowStore::retrySaving()
{
    const Update update(m_state.changes);
    m_parts->saver.retry();
}

SaveProgress WindowStore::save()
{
    retrySaving();
    const SaveProgress progress = saveProgress();
    if (progress == SaveProgress::underWay)
        m_parts->saver.awaitEnd();
    return progress;
}

SaveProgress WindowStore::saveProgress() const
{
    return m_parts->saver.progress();
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

void WindowStore::restoreBackup(const BoardContents& backup)
{
    const Update update(m_state.changes);
    const BoardContents before = boardContents();
    m_parts->steps.show(restored(before, backup));
    if (boardContents() == before) {
        // There is no step that the toast could offer to undo.
        m_parts->toast.show(CopyKey::BoardIsSame, Toast::Offer::none);
        return;
    }
    m_parts->steps.saveAnnounced(CopyKey::BackupRestored);
    refreshInBackground();
}

void WindowStore::importBoard(const ImportedBoard& import, ImportMode mode)
{
    importBoard(import, mode,
                preparedImport(boardContents(), import, mode, m_state.isAutoSortingGoals));
}

void WindowStore::importBoard(const ImportedBoard& import, ImportMode mode,
                              const PreparedImport& prepared)
{
    const Update update(m_state.changes);
    const BoardContents before = boardContents();
    const bool isPrepared =
        before == prepared.before && m_state.isAutoSortingGoals == prepared.isAutoSortingGoals;
    m_parts->steps.show(isPrepared ? prepared.after.contents : withImport(before, import, mode));
    if (m_state.version().contents == before) {
        // There is no step that the toast could offer to undo.
        m_parts->toast.show(CopyKey::BoardIsSame, Toast::Offer::none);
        return;
    }
    // A goal that is new may have nothing open, and would not be seen.
    if (!import.goals.isEmpty())
        m_state.assign(m_state.isHidingGoalsWithoutOpenTodos, false,
                       Field::isHidingGoalsWithoutOpenTodos);
    if (const auto changed =
            restorationTarget(before, m_state.version().contents, m_state.boardNavigation.target))
        m_parts->selection.activate(changed->target, EnterWindowLayer::no);
    m_parts->saver.expect(prepared.after);
    m_parts->steps.saveAnnounced(CopyKey::FileImported);
    refreshInBackground();
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

} // namespace kelpa
