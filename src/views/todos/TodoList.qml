pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Todos

/// The todos of a column or of the whole board and, below them, the field for a new todo. A goal's
/// field is opened by the store, that of any other list by the list itself.
Item {
    id: root

    required property TodoController todos
    required property BoardDragSource dragSource
    required property string listID
    /// Points; rows that do not fit are scrolled.
    property real maximumHeight: Infinity
    /// The part of the list that is visible, in its own coordinates.
    property real visibleFrom: 0
    property real visibleTo: root.height
    /// Points below the list where todos are dropped at its end, too.
    property real roomBelow: 0

    property string editedTodoID
    /// Whether this list, not the store, opened the field for a new todo.
    property bool isOwnEditorOpen: false
    /// Whether the focus returns to where it came from when the field for a new todo closes.
    property bool returnsFocusOnClose: false

    readonly property TodoListModel listModel: TodoListModel {
        todos: root.todos
        listID: root.listID
        // A todo that is gone is not edited any more.
        onCountChanged: if (root.listModel.rowOf(root.editedTodoID) < 0)
            root.editedTodoID = ""
    }
    /// Whether a field is open, whose text must not get lost.
    readonly property bool isWriting: root.isEditorOpen || root.editedTodoID.length > 0
    readonly property bool isEditorOpen: root.isOwnEditorOpen
                                         || root.todos.editorColumnID === root.listID
    readonly property real editorHeight: root.isEditorOpen
                                         ? (editors.itemAt(0)?.height ?? Theme.todoHeight) : 0
    readonly property bool isUnified: root.listID === root.todos.unifiedListID
    /// The lower end, in the list's coordinates, of whatever in it has the keyboard or is written in;
    /// 0 for nothing.
    readonly property real keyboardEnd: root.isEditorOpen ? root.height : rows.keyboardEnd
    readonly property real wantedHeight: Math.max(rows.contentHeight, empty.height)
                                         + root.editorHeight

    signal menuRequested(todoID: string, columnID: string, row: Item, place: rect)
    /// The list had the focus and has nothing left that could have it.
    signal focusReturned

    function openEditor(isByKeyboard: bool): void {
        root.returnsFocusOnClose = isByKeyboard;
        root.isOwnEditorOpen = true;
        root.focusEditor();
    }
    function focusEditor(): void {
        if (editors.count > 0)
            (editors.itemAt(0) as TodoField).focusField();
    }
    /// `returnsKeyboard` is false where the focus has gone elsewhere already.
    function closeEditor(returnsKeyboard: bool): void {
        const isAwaited = returnsKeyboard && root.returnsFocusOnClose;
        if (root.isOwnEditorOpen)
            root.isOwnEditorOpen = false;
        // By now the store's editor may be another goal's.
        else if (root.isEditorOpen)
            root.todos.cancelEditor();
        if (isAwaited)
            root.focusReturned();
    }
    /// The rectangle of the todo's row in the coordinates of the list; empty when it has no row.
    function rowRect(todoID: string): rect {
        return rows.rowRect(todoID);
    }
    /// A pooled list is in no window and takes no request.
    function takeRequest(): void {
        if (root.Window.window !== null && root.todos?.takeEditorRequest(root.listID))
            root.focusEditor();
    }

    implicitHeight: Math.min(root.maximumHeight, root.wantedHeight)
    Component.onCompleted: root.takeRequest()
    onIsEditorOpenChanged: if (!root.isEditorOpen)
        root.returnsFocusOnClose = false

    Connections {
        target: root.todos

        function onEditorRequested(): void {
            root.takeRequest();
        }
        function onUnifiedTodoRestored(todoID: string): void {
            if (!root.isUnified || root.listModel.rowOf(todoID) < 0)
                return;
            rows.layOut();
            rows.revealTodo(todoID);
        }
        // The text stays as a draft.
        function onEditorLeft(): void {
            root.isOwnEditorOpen = false;
        }
    }
    TodoListView {
        id: rows

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.bottomMargin: root.editorHeight
        interactive: root.wantedHeight > root.maximumHeight
        todos: root.todos
        dragSource: root.dragSource
        listModel: root.listModel
        editedTodoID: root.editedTodoID
        rowHeight: Theme.todoHeight + (root.isUnified ? 12 + Theme.captionGrowth : 0)
        visibleFrom: root.visibleFrom
        visibleTo: root.visibleTo
        onMenuRequested: (todoID, columnID, row, place) => {
            root.menuRequested(todoID, columnID, row, place);
        }
        onEditRequested: todoID => root.editedTodoID = todoID
        onEditEnded: root.editedTodoID = ""
        onFocusReturned: root.focusReturned()
    }
    Repeater {
        model: rows.interactive && !rows.atYEnd ? 1 : 0
        delegate: TodoFade {
            y: rows.y + rows.height - height
            width: rows.rowsWidth
        }
    }
    DragScroll {
        anchors.fill: rows
        isActive: rows.interactive && root.dragSource.isDragging
        reach: Theme.todoHeight
        speed: 500
        onScrolled: step => rows.scrollBy(step)
    }
    TodoEndDropArea {
        id: end

        anchors.left: parent.left
        anchors.right: parent.right
        y: Math.min(rows.rowsHeight, rows.height)
        // A card that is not yet as high as its list ends before it.
        height: Math.max(0, root.height + root.roomBelow - y)
        todos: root.todos
        dragSource: root.dragSource
        listID: root.listID

        DropLine {
            y: -height
            width: rows.rowsWidth
            visible: end.wouldChangeBoard
        }
    }
    AppText {
        id: empty

        width: parent.width - (completed.item?.width ?? 0)
        height: visible ? Theme.todoHeight : 0
        leftPadding: Theme.columnTextX - Theme.small
        text: ViewSettings.copy.text(root.listModel.onlyCompletedCount > 0 ? CopyKey.NoOpenTodos
                                                                           : CopyKey.NoTodosYet)
        color: Theme.secondaryText
        visible: root.listModel.count === 0
        Accessible.ignored: !visible
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    // They are kept, although the card of the goal shows none of them.
    OptionalItem {
        id: completed

        isWanted: root.listModel.onlyCompletedCount > 0

        AppText {
            anchors.right: root.right
            anchors.baseline: empty.baseline
            height: Theme.todoHeight
            rightPadding: Theme.small
            text: ViewSettings.copy.completedTodoCount(root.listModel.onlyCompletedCount)
            font: Theme.caption
            color: Theme.secondaryText
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    Repeater {
        id: editors

        model: root.isEditorOpen ? 1 : 0
        delegate: NewTodoField {
            anchors.left: root.left
            anchors.right: root.right
            anchors.bottom: root.bottom
            todos: root.todos
            listID: root.listID
            onAdded: rows.reveal(root.listModel.count - 1)
            onClosed: returnsKeyboard => root.closeEditor(returnsKeyboard)
        }
    }
}
