pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Board

/// Gives the focus to the item that the arrow keys have selected, so that a screen reader reports
/// it. An item that a person went to keeps the focus: only an item with `yieldsFocus`, or nobody,
/// gives it up.
Item {
    id: root

    required property BoardController board
    required property WaterfallView targets
    /// The item that has the focus while no item within it has.
    required property Item scope

    /// Whether the focus is in a text field, which has the keys of the board for itself.
    readonly property bool isWriting: root.Window.activeFocusItem instanceof TextInputField

    function focusSelection(): void {
        const item = root.targets.itemAtRow(root.board.selectedTarget);
        const column = item as GoalColumn;
        const part = column !== null ? column.selectedPart() : item;
        const holder = root.Window.activeFocusItem;
        if (part !== null && holder !== part && root.isYielding(holder))
            part.forceActiveFocus();
    }
    /// Null, while another program has the keyboard, is nobody: the item that had the focus has it
    /// again afterwards.
    function isYielding(holder: var): bool {
        return holder !== null && (holder.yieldsFocus === true || root.isAroundScope(holder));
    }
    function isAroundScope(item: Item): bool {
        for (let each = root.scope; each !== null; each = each.parent)
            if (each === item)
                return true;
        return false;
    }
    /// The row of the target that contains the focus; -1 when it is elsewhere.
    function focusedRow(): int {
        return root.targets.rowOf(root.Window.activeFocusItem);
    }

    Connections {
        target: root.board

        // The card of a field elsewhere on the board may close, which would hide the text being
        // written.
        function onChangeRestored(): void {
            const row = root.focusedRow();
            if (!root.isWriting || row < 0 || row === root.board.selectedTarget)
                return;
            root.board.todos.leaveEditor();
            // The field for a new todo has gone; that of a title is left.
            if (root.isWriting)
                root.Window.activeFocusItem.focus = false;
        }
    }
    Connections {
        target: root.Window.window
        ignoreUnknownSignals: true

        // The focus comes back from a field that was closed, or from a menu. The item that gives it
        // up may still pass it on by itself: after a field the row gets it, and after a row the next
        // one, once the list has all of its rows.
        function onActiveFocusItemChanged(): void {
            if (root.board.selectedTarget >= 0 && root.isYielding(root.Window.activeFocusItem))
                returning.restart();
        }
    }
    // Runs after everything that was started before the focus moved.
    Timer {
        id: returning

        interval: 0
        onTriggered: root.focusSelection()
    }
}
