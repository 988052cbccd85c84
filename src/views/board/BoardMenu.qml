pragma ComponentBehavior: Bound

import Kelpa

/// What can be done with the board as a whole.
AppMenu {
    id: root

    required property BoardController board

    signal newGoalRequested

    title: root.board.copy.text(CopyKey.Board)

    AppMenuItem {
        text: root.board.copy.text(CopyKey.NewGoal)
        symbol: "plus"
        onTriggered: root.newGoalRequested()
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: root.board.copy.text(CopyKey.Undo)
        symbol: "undo-2"
        enabled: root.board.canUndo
        onTriggered: root.board.undo()
    }
    AppMenuItem {
        text: root.board.copy.text(CopyKey.Redo)
        symbol: "redo-2"
        enabled: root.board.canRedo
        onTriggered: root.board.redo()
    }
}
