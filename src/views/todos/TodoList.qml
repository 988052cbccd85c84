pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Todos

/// The todos of a column or of the whole board, and below them the field for a new one.
Item {
    id: root

    required property TodoController todos
    required property BoardDragSource dragSource
    required property string listID
    /// Points; what does not fit is scrolled.
    property real maximumHeight: Infinity
    /// The part of the list that can be seen, in its own coordinates.
    property real visibleFrom: 0
    property real visibleTo: root.height
    /// Points below the list where its todos are taken, too, and come to stand at its end.
    property real roomBelow: 0

    property string editedTodoID
    /// Of the field that this list opens for itself; that of a goal is opened by the store.
    property bool isOwnEditorOpen: false
    /// Whether the keyboard goes back to where it came from when the field for a new todo closes.
    property bool isKeyboardAwaited: false

    readonly property TodoListModel listModel: TodoListModel {
        todos: root.todos
        listID: root.listID
        // What is gone is not being edited any more.
        onCountChanged: if (root.listModel.rowOf(root.editedTodoID) < 0)
            root.editedTodoID = ""
    }
    /// Whether something is being written, which is not to be lost.
    readonly property bool isWriting: root.isEditorOpen || root.editedTodoID.length > 0
    readonly property bool isEditorOpen: root.isOwnEditorOpen
                                         || root.todos.editorColumnID === root.listID
    readonly property int rowHeight: Theme.todoHeight
                                     + (root.listID === root.todos.unifiedListID ? 12 : 0)
    readonly property real wantedHeight: Math.max(rows.contentHeight, empty.height)
                                         + (root.isEditorOpen ? Theme.todoHeight : 0)

    signal menuRequested(todoID: string, columnID: string, row: Item, position: point)
    /// The keyboard was in the list, which has no place for it any more.
    signal keyboardReturned

    function openEditor(isByKeyboard: bool): void {
        root.isKeyboardAwaited = isByKeyboard;
        root.isOwnEditorOpen = true;
        root.focusEditor();
    }
    function focusEditor(): void {
        if (adding.count > 0)
            (adding.itemAt(0) as TodoField).take();
    }
    /// The keyboard goes back to where it came from, unless it has gone elsewhere by itself.
    function closeEditor(returnsKeyboard: bool): void {
        const isAwaited = returnsKeyboard && root.isKeyboardAwaited;
        if (root.isOwnEditorOpen)
            root.isOwnEditorOpen = false;
        // By now it may be another goal's.
        else if (root.isEditorOpen)
            root.todos.cancelEditor();
        if (isAwaited)
            root.keyboardReturned();
    }
    /// Gives the keyboard to the row at `place` or, where the list ends before it, to the last.
    function focusRow(place: int): void {
        const row = Math.min(place, root.listModel.count - 1);
        if (row >= 0)
            root.reveal(row);
        lines.layOut();
        const item = lines.itemAtRow(row) as TodoRow;
        if (item !== null)
            item.takeKeyboard();
        else
            root.keyboardReturned();
    }
    /// Scrolls as little as is needed.
    function reveal(row: int): void {
        const rect = lines.rowRect(row);
        rows.contentY = Math.max(0, Math.min(rect.y, Math.max(rows.contentY,
                                                              rect.bottom - rows.height)));
    }
    /// Where the row of the todo lies, in the coordinates of the list; empty when it shows none.
    function rowRect(todoID: string): rect {
        const row = root.listModel.rowOf(todoID);
        const rect = row < 0 ? Qt.rect(0, 0, 0, 0) : lines.rowRect(row);
        return Qt.rect(rect.x, rect.y - rows.contentY, rect.width, rect.height);
    }
    /// A list that waits to be used for another goal is in no window, and takes none.
    function takeRequest(): void {
        if (root.Window.window !== null && root.todos?.takeEditorRequest(root.listID))
            root.focusEditor();
    }

    implicitHeight: Math.min(root.maximumHeight, root.wantedHeight)
    Component.onCompleted: root.takeRequest()
    onIsEditorOpenChanged: if (!root.isEditorOpen)
        root.isKeyboardAwaited = false

    Connections {
        target: root.todos

        function onEditorRequested(): void {
            root.takeRequest();
        }
        function onUnifiedTodoRestored(todoID: string): void {
            const row = root.listModel.rowOf(todoID);
            if (row < 0 || root.listID !== root.todos.unifiedListID)
                return;
            lines.layOut();
            root.reveal(row);
        }
        // What was written stays as a draft.
        function onEditorLeft(): void {
            root.isOwnEditorOpen = false;
        }
    }
    Flickable {
        id: rows

        /// Above and below what shows, so that the Tab key finds what follows.
        readonly property real reach: rows.interactive ? 2 * root.rowHeight : 0

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.bottomMargin: root.isEditorOpen ? Theme.todoHeight : 0
        boundsBehavior: Flickable.StopAtBounds
        contentHeight: lines.implicitHeight
        clip: rows.interactive
        interactive: root.wantedHeight > root.maximumHeight
        // Most lists never scroll.
        onInteractiveChanged: if (rows.interactive && T.ScrollBar.vertical === null)
            T.ScrollBar.vertical = scrollBarType.createObject(rows) as AppScrollBar

        WaterfallView {
            id: lines

            // Beside the scroll bar, which would lie on the handles.
            width: rows.width - (rows.interactive ? Theme.small : 0)
            height: implicitHeight
            fixedColumnCount: 1
            fixedItemHeight: root.rowHeight
            visibleFrom: rows.contentY - rows.reach + Math.max(0, root.visibleFrom)
            visibleTo: rows.contentY + rows.reach + Math.min(rows.height, root.visibleTo)
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
                    listID: root.listID
                    isEdited: root.editedTodoID === row.todoID
                    onActiveFocusChanged: if (row.activeFocus && rows.interactive)
                        root.reveal(root.listModel.rowOf(row.todoID))
                    onMenuRequested: (item, position) => {
                        root.menuRequested(row.todoID, row.columnID, item, position);
                    }
                    onEditRequested: root.editedTodoID = row.todoID
                    onEditEnded: if (row.isEdited)
                        root.editedTodoID = ""
                    onMoveRequested: isUp => {
                        if (root.todos.moveInList(row.todoID, root.listID, isUp ? -1 : 1))
                            root.reveal(root.listModel.rowOf(row.todoID));
                    }
                }
            }
        }
    }
    Component {
        id: scrollBarType

        AppScrollBar {}
    }
    // Once the list has all of its rows again.
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
    DragScroll {
        anchors.fill: rows
        isActive: rows.interactive && root.dragSource.isDragging
        reach: Theme.todoHeight
        speed: 500
        onScrolled: step => {
            rows.contentY = Math.max(0, Math.min(rows.contentY + step,
                                                 rows.contentHeight - rows.height));
        }
    }
    TodoEndDropArea {
        id: end

        anchors.left: parent.left
        anchors.right: parent.right
        y: Math.min(lines.implicitHeight, rows.height)
        height: root.height + root.roomBelow - y
        todos: root.todos
        dragSource: root.dragSource
        listID: root.listID

        DropLine {
            y: -height
            width: lines.width
            visible: end.isWelcoming
        }
    }
    AppText {
        id: empty

        width: parent.width
        height: visible ? Theme.todoHeight : 0
        leftPadding: Theme.columnTextX - Theme.small
        text: ViewSettings.copy.text(CopyKey.NoTodosYet)
        color: Theme.secondaryText
        visible: root.listModel.count === 0
        Accessible.ignored: !visible
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Repeater {
        id: adding

        model: root.isEditorOpen ? 1 : 0
        delegate: NewTodoField {
            anchors.left: root.left
            anchors.right: root.right
            anchors.bottom: root.bottom
            todos: root.todos
            listID: root.listID
            onAdded: root.reveal(root.listModel.count - 1)
            onClosed: returnsKeyboard => root.closeEditor(returnsKeyboard)
        }
    }
}
