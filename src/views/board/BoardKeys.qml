pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Scene
import Kelpa.Board

/// The keys of the board that are neither the store's nor an item's: they scroll it, rename or move a
/// goal or work on it, and put a window back into its goal or decline that. While a person writes,
/// they are the text field's.
Item {
    id: root

    required property BoardController board
    required property WaterfallView targets
    required property BoardView view
    required property SelectionFocus selectionFocus

    signal renameRequested

    /// The goal that contains the focus, which Alt with an arrow moves; null for none.
    function movedColumn(): Item {
        const column = root.targets.itemAtRow(root.selectionFocus.focusedRow()) as GoalColumn;
        return root.selectionFocus.isWriting || (column?.isUnassigned ?? true) ? null : column;
    }
    /// Brings the selected window forward. An item that a person has reached by Tab takes the key
    /// itself.
    function takeReturn(event: KeyEvent): void {
        event.accepted = root.board.selectedWindow >= 0 && !root.selectionFocus.isWriting;
        // A held key was meant for the search in which it was pressed.
        if (event.accepted && !event.isAutoRepeat)
            root.board.activateSelection();
    }
    /// Alt with the left or right arrow moves the goal that contains the focus by one place, or says
    /// why it does not.
    function takeKey(event: KeyEvent): void {
        const step = event.key === Qt.Key_Left ? -1 : event.key === Qt.Key_Right ? 1 : 0;
        const column = root.movedColumn() as GoalColumn;
        event.accepted = step !== 0 && (event.modifiers & Qt.AltModifier) && column !== null
                && (root.board.isAutoSortingGoals
                    || root.board.goals.moveColumn(column.columnID, step));
        if (event.accepted && root.board.isAutoSortingGoals)
            root.board.explainAutomaticOrder();
    }

    // The board forwards what no item within it has taken.
    Keys.onReturnPressed: event => root.takeReturn(event)
    Keys.onEnterPressed: event => root.takeReturn(event)
    Keys.onPressed: event => root.takeKey(event)

    component BoardKey: Shortcut {
        enabled: !root.selectionFocus.isWriting
    }

    BoardKey {
        sequence: "PgUp"
        onActivated: root.view.turn(-1)
    }
    BoardKey {
        sequence: "PgDown"
        onActivated: root.view.turn(1)
    }
    BoardKey {
        sequence: "Home"
        onActivated: root.view.scrollTo(0)
    }
    BoardKey {
        sequence: "End"
        onActivated: root.view.scrollTo(root.view.end)
    }
    BoardKey {
        sequence: "Ctrl+B"
        onActivated: if (!root.board.windows.memory.putSelectionBack())
            root.board.selectionMenuRequested()
    }
    BoardKey {
        sequence: "Ctrl+Shift+B"
        autoRepeat: false
        onActivated: root.board.windows.memory.declineSelection()
    }
    BoardKey {
        sequence: "Ctrl+G"
        autoRepeat: false
        onActivated: root.board.goals.workOnSelection()
    }
    BoardKey {
        sequence: "Ctrl+Shift+G"
        autoRepeat: false
        onActivated: root.board.goals.goBack()
    }
    Shortcut {
        sequence: "F2"
        enabled: root.board.goals.selectedBreadcrumb >= 0 && !root.selectionFocus.isWriting
        onActivated: root.renameRequested()
    }
}
