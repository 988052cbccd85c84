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
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.GoBack)
        isOffered: root.board.goals.canWorkOnGoals && root.board.goals.canGoBack
        symbol: "rotate-ccw"
        keys: ViewSettings.copy.goBackKeys()
        onTriggered: root.board.goals.goBack()
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.Undo)
        symbol: "undo-2"
        keys: ViewSettings.copy.undoKeys()
        enabled: root.board.canUndo
        onTriggered: root.board.undo()
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.Redo)
        symbol: "redo-2"
        keys: ViewSettings.copy.redoKeys()
        enabled: root.board.canRedo
        onTriggered: root.board.redo()
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.RestoreBackup)
        symbol: "history"
        enabled: root.board.backups.isOffered
        onTriggered: root.board.backups.open()
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.ImportMenu)
        symbol: "download"
        onTriggered: root.board.importing.open()
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.ExportMenu)
        symbol: "upload"
        onTriggered: root.board.exporting.open()
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.RememberWindows)
        symbol: root.board.windows.memory.isRemembering ? "check" : ""
        isChoice: true
        isChosen: root.board.windows.memory.isRemembering
        onTriggered: root.board.windows.memory.toggleRemembering()
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.StartWithSession)
        symbol: root.board.presence.startsWithSession ? "check" : ""
        isChoice: true
        isChosen: root.board.presence.startsWithSession
        enabled: root.board.presence.hasSessionStart
        onTriggered: root.board.presence.toggleSessionStart()
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.ClosingQuits)
        symbol: root.board.presence.isClosingQuitting ? "check" : ""
        isChoice: true
        isChosen: root.board.presence.isClosingQuitting
        onTriggered: root.board.presence.toggleClosingQuits()
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.DesktopShortcuts)
        isOffered: root.board.presence.shortcuts.isOffered
        symbol: "keyboard"
        keys: root.board.presence.shortcuts.key
        onTriggered: root.board.presence.shortcuts.choose()
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.KeyboardShortcuts)
        symbol: "keyboard"
        keys: ViewSettings.copy.helpKeys()
        onTriggered: root.board.keysRequested()
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.QuitKelpa)
        symbol: "log-out"
        keys: ViewSettings.copy.quitKeys()
        onTriggered: root.board.presence.requestQuit()
    }
}
