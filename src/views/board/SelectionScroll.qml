pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kelpa.Scene
import Kelpa.Board

/// Scrolls the board to the selection and to the item that gets the focus in a card, wherever their
/// cards move, also in a window that is resized. A person who views another part of the board stays
/// there when only the cards move.
Item {
    id: root

    required property BoardController board
    required property WaterfallView targets
    required property BoardView view
    required property SelectionFocus selectionFocus

    readonly property bool isWaiting: selectionScroll.running
    /// Milliseconds. A held arrow key repeats sooner, so that the board scrolls once, after the last
    /// step.
    readonly property int burstPause: 45

    /// Whether nothing is on its way to the place where it belongs.
    readonly property bool isSettled: !root.isWaiting && !root.targets.isMoving
                                      && !root.view.isScrolling
    /// Whether the selection stays in view while the window is resized, step by step: it has been
    /// there since the board was last settled.
    property bool isKept: false
    /// The height of the view before a step of the resize.
    property real heightBefore: 0

    /// Scrolls to the selection soon.
    function follow(): void {
        root.isKept = false;
        selectionScroll.restart();
    }
    /// Scrolls at once until the selected part of the selected target is in view.
    function showSelection(): void {
        selectionScroll.stop();
        root.targets.pinnedRow = root.board.selectedTarget;
        if (root.targets.pinnedRow < 0)
            return;
        // The target has its current height only once it has an item.
        root.targets.layOut();
        if (root.selectionFocus.isWriting
                && root.selectionFocus.focusedRow() === root.board.selectedTarget) {
            root.showFocus();
            return;
        }
        const place = root.selectedPlace(root.targets.rowRect(root.targets.pinnedRow));
        if (!root.isKept || !root.view.isFilledBy(root.targets.y + place.y, place.height))
            root.view.reveal(root.targets.y + place.y, place.height);
        root.selectionFocus.focusSelection();
    }
    /// A `GoalColumn`; null without one.
    function selectedColumn(): Item {
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
    /// The place of the selected part in the waterfall, of which the selected target has `target`.
    function selectedPlace(target: rect): rect {
        const column = root.selectedColumn() as GoalColumn;
        const part = column?.selectedRect() ?? Qt.rect(0, 0, 0, 0);
        return part.height > 0 ? Qt.rect(target.x, target.y + part.y, target.width, part.height)
                               : target;
    }
    /// Whether the selected part is in view, at least in part, where the view has that height.
    function isSelectionInView(height: real): bool {
        const item = root.targets.itemAtRow(root.board.selectedTarget);
        if (item === null)
            return false;
        const place = root.selectedPlace(Qt.rect(item.x, item.y, item.width, item.height));
        const top = root.view.contentY - root.targets.y;
        return place.y + place.height > top && place.y < top + height;
    }
    /// Called before the cards are laid out for the new size.
    function noteResize(): void {
        if (root.isSettled)
            root.isKept = root.isSelectionInView(root.heightBefore);
        root.heightBefore = root.view.height;
        if (root.isKept)
            selectionScroll.restart();
    }

    // What was selected before the board showed.
    Component.onCompleted: if (root.board.selectedTarget >= 0)
        root.follow()
    onIsSettledChanged: if (root.isSettled)
        root.isKept = false

    Connections {
        target: root.board

        function onSelectionChanged(): void {
            root.follow();
        }
        function onSelectionRequested(): void {
            root.follow();
        }
        function onChangeRestored(): void {
            root.follow();
        }
        function onCameForward(): void {
            forward.restart();
        }
        function onSelectedTargetMoved(): void {
            const row = root.board.selectedTarget;
            if (row === root.selectionFocus.focusedRow()
                    || root.isSelectionInView(root.view.height))
                root.follow();
        }
    }
    Connections {
        target: root.board.todos

        function onTodoRequested(): void {
            root.follow();
        }
        // A new todo is inserted above the field in which one goes on to write.
        function onEntriesChanged(): void {
            if (root.selectionFocus.isWriting)
                focusScroll.restart();
        }
    }
    Connections {
        target: root.view

        function onWidthChanged(): void {
            root.noteResize();
        }
        function onHeightChanged(): void {
            root.noteResize();
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
    Timer {
        id: selectionScroll

        interval: root.burstPause
        onTriggered: {
            root.showSelection();
            root.isKept = true;
        }
    }
    // Runs when the item that had the focus has it again: where something is being written, keys are for
    // that.
    Timer {
        id: forward

        interval: 0
        onTriggered: if (root.board.selectedTarget >= 0 && !root.selectionFocus.isWriting)
            root.follow()
    }
    // Scrolls after the list that contains the item has scrolled to it.
    Timer {
        id: focusScroll

        interval: 0
        onTriggered: root.showFocus()
    }
}
