pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Todos

/// The rows of a list of todos, scrolled where they do not fit. Has items only for the rows that
/// show, and moves the focus on when the row that has it is removed.
Flickable {
    id: root

    required property TodoController todos
    required property BoardDragSource dragSource
    required property TodoListModel listModel
    /// The todo whose title is edited; empty for none.
    required property string editedTodoID
    required property int rowHeight
    /// The part of the view that is visible, in its own coordinates.
    required property real visibleFrom
    required property real visibleTo

    readonly property real rowsWidth: lines.width
    readonly property real rowsHeight: lines.implicitHeight
    /// The lower end, in the view's coordinates, of the rows that have the keyboard or a field; 0 for
    /// none.
    readonly property real keyboardEnd: Math.max(
        root.endOf(root.keyboardRow), root.editedTodoID.length > 0 ? root.endOf(root.editedRow) : 0)
    /// The row that a person has reached by keyboard, and the row whose title is edited, or was last.
    property TodoRow keyboardRow: null
    property TodoRow editedRow: null

    /// Points above and below the visible part that have rows, so that the Tab key reaches them.
    readonly property real margin: root.interactive && !ViewSettings.isStarting ? 2 * root.rowHeight : 0

    signal menuRequested(todoID: string, columnID: string, row: Item, place: rect)
    signal editRequested(todoID: string)
    signal editEnded
    /// The last row, which had the focus, is gone.
    signal focusReturned

    function endOf(row: Item): real {
        return row === null ? 0 : row.y + row.height - root.contentY;
    }
    /// Scrolls as little as is needed.
    function reveal(row: int): void {
        const rect = lines.rowRect(row);
        root.contentY = Math.max(0, Math.min(rect.y, Math.max(root.contentY,
                                                              rect.bottom - root.height)));
    }
    function revealTodo(todoID: string): void {
        root.reveal(root.listModel.rowOf(todoID));
    }
    /// Moves nothing beyond the first and the last row.
    function scrollBy(step: real): void {
        root.contentY = Math.max(0, Math.min(root.contentY + step,
                                             root.contentHeight - root.height));
    }
    function layOut(): void {
        lines.layOut();
    }
    /// The rectangle of the todo's row in the coordinates of the view; empty when it has no row.
    function rowRect(todoID: string): rect {
        const row = root.listModel.rowOf(todoID);
        const rect = row < 0 ? Qt.rect(0, 0, 0, 0) : lines.rowRect(row);
        return Qt.rect(rect.x, rect.y - root.contentY, rect.width, rect.height);
    }
    /// Focuses the row at `place` or, where the list is shorter, the last row.
    function focusRow(place: int): void {
        const row = Math.min(place, root.listModel.count - 1);
        if (row >= 0)
            root.reveal(row);
        lines.layOut();
        const item = lines.itemAtRow(row) as TodoRow;
        if (item !== null)
            item.takeKeyboard();
        else
            root.focusReturned();
    }

    boundsBehavior: Flickable.StopAtBounds
    contentHeight: lines.implicitHeight
    clip: root.interactive
    // Most lists never scroll, and have no bar.
    onInteractiveChanged: if (root.interactive && T.ScrollBar.vertical === null)
        T.ScrollBar.vertical = scrollBarType.createObject(root) as AppScrollBar

    WaterfallView {
        id: lines

        // The scroll bar does not cover the handles.
        width: root.width - (root.interactive ? Theme.small : 0)
        height: implicitHeight
        fixedColumnCount: 1
        fixedItemHeight: root.rowHeight
        visibleFrom: root.contentY - root.margin + Math.max(0, root.visibleFrom)
        visibleTo: root.contentY + root.margin + Math.min(root.height, root.visibleTo)
        motionTime: Theme.mediumTime
        model: root.listModel
        onItemShown: item => (item as TodoRow).takeRequest()
        onFocusedRowRemoved: (place, item) => {
            if ((item as TodoRow).hasKeyboard)
                focusing.startFor(place);
        }

        WaterfallDelegate {
            TodoRow {
                id: row

                todos: root.todos
                dragSource: root.dragSource
                listID: root.listModel.listID
                isEdited: root.editedTodoID === row.todoID
                onHasKeyboardChanged: {
                    if (row.hasKeyboard)
                        root.keyboardRow = row;
                    else if (root.keyboardRow === row)
                        root.keyboardRow = null;
                }
                onActiveFocusChanged: if (row.activeFocus && root.interactive)
                    root.revealTodo(row.todoID)
                onMenuRequested: (item, place) => {
                    root.menuRequested(row.todoID, row.columnID, item, place);
                }
                onEditRequested: {
                    root.editedRow = row;
                    root.editRequested(row.todoID);
                }
                onEditEnded: if (row.isEdited)
                    root.editEnded()
                onMoveRequested: isUp => {
                    if (root.todos.moveInList(row.todoID, row.listID, isUp ? -1 : 1))
                        root.revealTodo(row.todoID);
                }
            }
        }
    }
    Component {
        id: scrollBarType

        AppScrollBar {}
    }
    // Runs when the list has all of its rows again.
    Timer {
        id: focusing

        property int place: 0

        function startFor(row: int): void {
            focusing.place = row;
            focusing.restart();
        }

        interval: 0
        onTriggered: root.focusRow(focusing.place)
    }
}
