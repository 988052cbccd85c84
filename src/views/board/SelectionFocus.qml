pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Todos
import Kelpa.Windows
import Kelpa.Board

/// Scrolls the board to what the arrow keys have selected, to what the Tab key has reached and to
/// the field in which one types, wherever their cards go, and lets the keyboard's focus follow the
/// selection.
Item {
    id: root

    required property BoardController board
    required property WaterfallView targets
    required property BoardView view
    /// What has the focus while nobody in it has.
    required property Item scope

    readonly property bool isWaiting: selectionScroll.running

    /// Scrolls until the selected target, or the selected window in it, is in view.
    function showSelection(): void {
        root.targets.pinnedRow = root.board.selectedTarget;
        if (root.targets.pinnedRow < 0)
            return;
        // It has its height of now on only once it has an item.
        root.targets.layOut();
        if (root.isWriting() && root.focusedRow() === root.board.selectedTarget) {
            root.showFocus();
            return;
        }
        let wanted = root.targets.rowRect(root.targets.pinnedRow);
        const column = root.selectedColumn();
        if (column !== null && root.board.selectedWindow >= 0) {
            const card = column.windowRect(root.board.selectedWindow);
            wanted = Qt.rect(wanted.x, wanted.y + card.y, card.width, card.height);
        }
        const todo = column === null ? Qt.rect(0, 0, 0, 0)
                                     : column.todoRect(root.board.todos.highlightedTodoID);
        if (todo.height > 0 && root.board.selectedWindow < 0)
            wanted = Qt.rect(wanted.x, wanted.y + todo.y, todo.width, todo.height);
        root.view.reveal(root.targets.y + wanted.y, wanted.height);
        root.focusSelection();
    }
    function selectedColumn(): GoalColumn {
        return root.targets.itemAtRow(root.board.selectedTarget) as GoalColumn;
    }
    function renameSelected(): void {
        root.showSelection();
        const column = root.selectedColumn();
        if (column !== null)
            root.board.goals.requestRename(column.columnID);
    }
    /// Lets the focus follow the selection, so that a screen reader tells of it, unless it is where
    /// a person has put it.
    function focusSelection(): void {
        const column = root.targets.itemAtRow(root.board.selectedTarget);
        const part = (column as GoalColumn)?.selectedPart()
                ?? (column as UnifiedTodoColumn)?.selectedPart() ?? null;
        const holder = root.Window.activeFocusItem;
        if (part === null || holder === part || !root.isFollowing(holder))
            return;
        part.forceActiveFocus();
    }
    /// Whether an item that has the focus gives it up to the selection. While another program has
    /// the keyboard there is none, and who had it has it again afterwards.
    function isFollowing(item: Item): bool {
        if (item === null)
            return false;
        if (item instanceof WindowCard || item instanceof GoalColumn
                || item instanceof UnifiedTodoColumn)
            return true;
        // Nobody has it: it is left to whatever the board stands in.
        return root.isWithin(root.scope, item);
    }
    function isWithin(item: Item, whole: Item): bool {
        for (let each = item; each !== null; each = each.parent)
            if (each === whole)
                return true;
        return false;
    }
    function isWriting(): bool {
        return root.Window.activeFocusItem instanceof TextInputField;
    }
    /// The row of the target in which the focus is; -1 when it is elsewhere.
    function focusedRow(): int {
        return root.targets.rowOf(root.Window.activeFocusItem);
    }

    function showFocus(): void {
        root.targets.layOut();
        const item = root.Window.activeFocusItem;
        const row = root.focusedRow();
        // What follows the selection is in view with it.
        if (row < 0 || root.isFollowing(item))
            return;
        // Where it will be, should its card be on its way.
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
        // A person who was looking at it goes along with it. Who looks elsewhere stays there.
        function onSelectedTargetMoved(): void {
            const row = root.board.selectedTarget;
            if (row === root.focusedRow() || root.isInView(root.targets.itemAtRow(row)))
                selectionScroll.restart();
        }
        // From a field elsewhere on the board, too: its card may close, and nobody would see what
        // is written there.
        function onChangeRestored(): void {
            const row = root.focusedRow();
            if (root.isWriting() && row >= 0 && row !== root.board.selectedTarget) {
                root.board.todos.leaveEditor();
                // The field for a new todo has gone; that of a title is left.
                if (root.isWriting())
                    root.Window.activeFocusItem.focus = false;
            }
            selectionScroll.restart();
        }
        function onSelectionMenuRequested(): void {
            if (root.board.selectedTarget < 0) {
                root.view.openMenu();
                return;
            }
            selectionScroll.stop();
            root.showSelection();
            if (!(root.selectedColumn()?.openSelectionMenu() ?? false))
                root.view.openMenu();
        }
    }
    Connections {
        target: root.board.todos

        function onTodoRequested(): void {
            selectionScroll.restart();
        }
        // What is added stands above the field in which one goes on to write.
        function onEntriesChanged(): void {
            if (root.isWriting())
                focusScroll.restart();
        }
    }
    // A held arrow key scrolls once, after its last step.
    Timer {
        id: selectionScroll

        interval: 45
        onTriggered: root.showSelection()
    }
    // Once whoever gave the focus up has had its way with it.
    Timer {
        id: selectionFocus

        interval: 45
        onTriggered: root.focusSelection()
    }
    // What the Tab key reaches is seen.
    Connections {
        target: root.Window.window
        ignoreUnknownSignals: true

        function onActiveFocusItemChanged(): void {
            focusScroll.restart();
            // Back from a field that is closed, or a menu.
            if (root.board.selectedTarget >= 0 && root.isFollowing(root.Window.activeFocusItem))
                selectionFocus.restart();
        }
    }
    // After the list in which it stands has scrolled to it.
    Timer {
        id: focusScroll

        interval: 0
        onTriggered: root.showFocus()
    }
}
