// Saves what a person changes as steps, and takes steps back. A restored board shows where it
// changed: `RestorationTarget` says which target is selected then.
#pragma once

#include "store/BoardSelection.h"
#include "store/StoreState.h"
#include "store/Toast.h"
#include "store/WindowRecall.h"
#include "store/board/BoardHistory.h"
#include "store/board/BoardSaver.h"

#include <QList>
#include <QSet>

#include <vector>

namespace kelpa {

/// Main thread. Every function is part of an operation of the store.
class UndoSteps
{
public:
    /// All arguments outlive this.
    UndoSteps(StoreState& state, BoardSelection& selection, Toast& toast, BoardSaver& saver,
              WindowRecall& recall);

    /// Publishes the contents, in automatic order where that is on, and reconciles windows,
    /// selection and todo editor with them.
    void show(BoardContents contents);
    /// Forgets all steps; the next one begins at the present board.
    void restart();

    /// Records what the person changed since the last save as a step, and saves.
    void saveStep(std::vector<SettingsEntry> settings = {});
    /// As `saveStep`, with a toast that offers to undo the step.
    void saveAnnounced(ToastText announcement, std::vector<SettingsEntry> settings = {});
    /// Saves changes that are part of no step, and `settings` with them.
    void saveState(std::vector<SettingsEntry> settings = {});

    /// Saves which desktops the pins mean, as far as that has changed: the desktop did it, so that
    /// it is no part of a step.
    void saveDesktopLinks();

    /// Both return the goals whose pins are the same and mean other desktops than before.
    QList<GoalID> undo();
    QList<GoalID> redo();

private:
    /// Shows another version of the board and saves it, in one write. Returns as `undo`.
    QList<GoalID> restore(BoardVersion board);
    QList<GoalID> relinkedGoals(const DesktopLinks& before) const;
    /// Those of the windows whose cards offer them a goal.
    QSet<WindowID> offeredAmong(const QSet<WindowID>& windows) const;
    void showMovedWindows(const QList<WindowItem>& before, const QSet<WindowID>& changedOffers);
    void publishHistory();

    StoreState& m_state;
    BoardSelection& m_selection;
    Toast& m_toast;
    BoardSaver& m_saver;
    WindowRecall& m_recall;
    BoardHistory m_history;
    /// The board as it was saved last, whether or not a person changed it.
    BoardVersion m_savedVersion;
};

} // namespace kelpa
