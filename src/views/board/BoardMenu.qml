pragma ComponentBehavior: Bound

import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// The actions on the board as a whole.
AppMenu {
    id: root

    required property BoardController board

    title: ViewSettings.copy.text(CopyKey.Board)

    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.NewGoal)
        symbol: "plus"
        keys: ViewSettings.copy.newGoalKeys()
        onTriggered: root.board.newGoalRequested()
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.Undo)
        symbol: "undo-2"
        enabled: root.board.canUndo
        onTriggered: root.board.undo()
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.Redo)
        symbol: "redo-2"
        enabled: root.board.canRedo
        onTriggered: root.board.redo()
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.RestoreBackup)
        enabled: root.board.backups.isOffered
        onTriggered: root.board.backups.open()
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.RememberWindows)
        symbol: root.board.windows.memory.isRemembering ? "check" : ""
        isChoice: true
        isChosen: root.board.windows.memory.isRemembering
        onTriggered: root.board.windows.memory.toggleRemembering()
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.KeyboardShortcuts)
        keys: ViewSettings.copy.helpKeys()
        onTriggered: root.board.keysRequested()
    }
}
