pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Todos

/// A todo in a list: its content or, while its title is edited, a field; and the area where other
/// todos are dropped.
FocusScope {
    id: root

    required property TodoController todos
    required property BoardDragSource dragSource
    required property string listID
    required property string todoID
    required property string columnID
    required property string title
    required property string status
    required property string statusSymbol
    required property bool isDone
    required property string goalTitle
    required property bool isFound
    required property bool isMissed
    required property bool isEdited

    readonly property bool isUnified: root.listID === root.todos.unifiedListID
    readonly property bool isHighlighted: !root.isUnified
                                          && root.todos.highlightedTodoID === root.todoID
    readonly property bool hasKeyboard: content.hasKeyboard
    /// Keeps the item for this todo, with what is typed.
    WaterfallDelegate.isPinned: root.isEdited

    /// Whether the focus returns to the row when the edit ends, or after the menu.
    property bool isEditedByKeyboard: false
    property bool isMenuByKeyboard: false
    /// Whether the menu that is open belongs to the row.
    property bool isMenuOpen: false
    /// Null until the first frame is shown.
    property TodoRowDropArea dropArea: null

    signal menuRequested(row: Item, place: rect)
    signal editRequested
    signal editEnded
    signal moveRequested(isUp: bool)

    function takeKeyboard(): void {
        content.forceActiveFocus(Qt.TabFocusReason);
    }
    function edit(isByKeyboard: bool): void {
        root.isEditedByKeyboard = isByKeyboard;
        root.editRequested();
    }
    /// After a click, the keys belong to the board again.
    function endEdit(): void {
        root.editEnded();
        if (root.isEditedByKeyboard)
            root.takeKeyboard();
    }
    /// A pooled row is in no window and takes no request.
    function takeRequest(): void {
        if (root.Window.window !== null && root.todos !== null && !root.isUnified
                && root.todos.takeTodoRequest(root.todoID))
            root.takeKeyboard();
    }

    Component.onCompleted: root.takeRequest()
    // A row that is reused is another todo's.
    onTodoIDChanged: root.isMenuOpen = false
    // Not the opacity of the content, which follows the pointer as an opaque picture.
    opacity: content.isDragged ? 0.6 : root.isMissed ? Theme.recedingOpacity : 1
    implicitHeight: Theme.todoHeight + (root.isUnified ? 12 + Theme.captionGrowth : 0)

    Connections {
        target: root.todos

        function onTodoRequested(): void {
            root.takeRequest();
        }
    }
    TodoRowContent {
        id: content

        // Unlike anchors, it gives the texts their width before they are laid out.
        width: root.width
        height: root.height
        visible: !root.isEdited
        focus: true
        todos: root.todos
        dragSource: root.dragSource
        dropArea: root.dropArea
        todoID: root.todoID
        columnID: root.columnID
        title: root.title
        status: root.status
        statusSymbol: root.statusSymbol
        isDone: root.isDone
        goalTitle: root.goalTitle
        isUnified: root.isUnified
        isHighlighted: root.isHighlighted
        isFound: root.isFound
        isMenuOpen: root.isMenuOpen
        onMenuRequested: (isByKeyboard, place) => {
            root.isMenuByKeyboard = isByKeyboard;
            root.menuRequested(root, place);
        }
        onEditRequested: isByKeyboard => root.edit(isByKeyboard)
        onMoveRequested: isUp => root.moveRequested(isUp)
    }
    // Before the first frame nothing is edited and nothing is dragged.
    OptionalItem {
        isWanted: !ViewSettings.isStarting
        onItemChanged: root.dropArea = item as TodoRowDropArea

        TodoRowDropArea {
            id: rowDropArea

            anchors.fill: root
            todos: root.todos
            dragSource: root.dragSource
            listID: root.listID
            todoID: root.todoID

            // Only the row that is edited has a field.
            Repeater {
                model: root.isEdited ? 1 : 0
                delegate: TodoTitleField {
                    anchors.left: rowDropArea.left
                    anchors.right: rowDropArea.right
                    anchors.verticalCenter: rowDropArea.verticalCenter
                    todos: root.todos
                    todoID: root.todoID
                    columnID: root.columnID
                    symbol: root.statusSymbol
                    onEnded: root.endEdit()
                    onAbandoned: root.editEnded()
                }
                onItemAdded: (index, item) => (item as TodoField).focusAndSelectAll()
            }
        }
    }
}
