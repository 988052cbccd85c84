pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kelpa.Scene
import Kelpa.Board

/// Scrolls the board to the selection and to the item that gets the focus in a card, wherever their
/// cards move. A person who views another part of the board stays there when only the cards move.
Item {
    id: root

    required property BoardController board
    required property WaterfallView targets
    required property BoardView view
    required property SelectionFocus selectionFocus

    readonly property bool isWaiting: selectionScroll.running

    /// Scrolls at once until the selected part of the selected target is in view.
    function showSelection(): void {
        selectionScroll.stop();
        root.targets.pinnedRow = root.board.selectedTarget;
        if (root.targets.pinnedRow < 0)
            return;
        // The target has its current height only once it has an item.
        root.targets.layOut();
        if (root.selectionFocus.isWriting()
                && root.selectionFocus.focusedRow() === root.board.selectedTarget) {
            root.showFocus();
            return;
        }
        const target = root.targets.rowRect(root.targets.pinnedRow);
        const part = root.selectedColumn()?.selectedRect() ?? Qt.rect(0, 0, 0, 0);
        if (part.height > 0)
            root.view.reveal(root.targets.y + target.y + part.y, part.height);
        else
            root.view.reveal(root.targets.y + target.y, target.height);
        root.selectionFocus.focusSelection();
    }
    function selectedColumn(): GoalColumn {
        return root.targets.itemAtRow(root.board.selectedTarget) as GoalColumn;
    }
    function showFocus(): void {
        root.targets.layOut();
        const item = root.Window.activeFocusItem;
        const row = root.selectionFocus.focusedRow();
        // An item that follows the selection is in view with it.
        if (row < 0 || root.selectionFocus.isYielding(item))
            return;
        // Its position once its card, which may be moving, has arrived.
        const top = item.mapToItem(root.targets.itemAtRow(row), 0, 0).y;
        root.view.reveal(root.targets.y + root.targets.rowRect(row).y + top, item.height);
    }
    function isInView(item: Item): bool {
        return item !== null && item.y + item.height > root.view.contentY - root.targets.y
                && item.y < root.view.contentY - root.targets.y + root.view.height;
    }

    Connections {
        target: root.board

        function onSelectionChanged(): void {
            selectionScroll.restart();
        }
        function onSelectionRequested(): void {
            selectionScroll.restart();
        }
        function onChangeRestored(): void {
            selectionScroll.restart();
        }
        function onSelectedTargetMoved(): void {
            const row = root.board.selectedTarget;
            if (row === root.selectionFocus.focusedRow()
                    || root.isInView(root.targets.itemAtRow(row)))
                selectionScroll.restart();
        }
    }
    Connections {
        target: root.board.todos

        function onTodoRequested(): void {
            selectionScroll.restart();
        }
        // A new todo is inserted above the field in which one goes on to write.
        function onEntriesChanged(): void {
            if (root.selectionFocus.isWriting())
                focusScroll.restart();
        }
    }
    Connections {
        target: root.Window.window
        ignoreUnknownSignals: true

        // Keeps the items that the Tab key reaches in view.
        function onActiveFocusItemChanged(): void {
            focusScroll.restart();
        }
    }
    // A held arrow key scrolls once, after its last step.
    Timer {
        id: selectionScroll

        interval: 45
        onTriggered: root.showSelection()
    }
    // Scrolls after the list that contains the item has scrolled to it.
    Timer {
        id: focusScroll

        interval: 0
        onTriggered: root.showFocus()
    }
}
