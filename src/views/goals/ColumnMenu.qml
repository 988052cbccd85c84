pragma ComponentBehavior: Bound

import Kelpa

/// What can be done with a goal.
AppMenu {
    id: root

    required property BoardController board

    property string columnID

    title: root.board.copy.text(CopyKey.MoreGoalActions)
    onAboutToShow: {
        earlier.enabled = root.board.canMoveColumn(root.columnID, -1);
        later.enabled = root.board.canMoveColumn(root.columnID, 1);
        first.enabled = earlier.enabled;
        last.enabled = later.enabled;
    }

    AppMenuItem {
        text: root.board.copy.text(CopyKey.AddWindowsToGoal)
        symbol: "app-window-plus"
        onTriggered: root.board.windowPicker.open(root.columnID)
    }
    AppMenuItem {
        text: root.board.copy.text(CopyKey.OpenChrome)
        symbol: "globe"
        onTriggered: root.board.openChrome(root.columnID)
    }
    AppMenuItem {
        text: root.board.copy.text(CopyKey.OpenTerminal)
        symbol: "terminal"
        onTriggered: root.board.openTerminal(root.columnID)
    }
    AppMenuItem {
        text: root.board.copy.text(CopyKey.ShowAllWindows)
        symbol: "layers"
        onTriggered: root.board.showAllWindows(root.columnID)
    }
    AppMenuItem {
        text: root.board.copy.text(CopyKey.RenameGoal)
        symbol: "pencil"
        onTriggered: root.board.requestRename(root.columnID)
    }
    AppMenuSeparator {}
    AppMenuItem {
        id: earlier

        text: root.board.copy.text(CopyKey.MoveGoalEarlier)
        symbol: "arrow-up"
        onTriggered: root.board.moveColumn(root.columnID, -1)
    }
    AppMenuItem {
        id: later

        text: root.board.copy.text(CopyKey.MoveGoalLater)
        symbol: "arrow-down"
        onTriggered: root.board.moveColumn(root.columnID, 1)
    }
    AppMenuItem {
        id: first

        text: root.board.copy.text(CopyKey.MoveToTop)
        symbol: "arrow-up-to-line"
        onTriggered: root.board.moveColumnToEnd(root.columnID, -1)
    }
    AppMenuItem {
        id: last

        text: root.board.copy.text(CopyKey.MoveToBottom)
        symbol: "arrow-down-to-line"
        onTriggered: root.board.moveColumnToEnd(root.columnID, 1)
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: root.board.copy.text(CopyKey.DeleteGoal)
        symbol: "trash-2"
        symbolColor: Theme.destructive
        foreground: Theme.destructive
        onTriggered: root.board.deleteGoal(root.columnID)
    }
}
