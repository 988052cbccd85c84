pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// A todo in a list. A click on its title edits it in place; it can be dragged within its list and
/// to another column. Alt with the up or down arrow moves it by one row.
FocusScope {
    id: root

    required property BoardController board
    required property BoardDragSource dragSource
    required property string listID
    required property string todoID
    required property string columnID
    required property string title
    required property string status
    required property string statusSymbol
    required property bool isDone
    required property string goalTitle
    required property bool isEdited

    readonly property bool isUnified: root.listID === root.board.todos.unifiedListID
    readonly property bool isHighlighted: !root.isUnified
                                          && root.board.todos.highlightedTodoID === root.todoID
    /// Whether a person went here with the keyboard. A button that was clicked has it too, but
    /// nobody knows.
    readonly property bool hasKeyboard: face.activeFocus || statusButton.visualFocus
                                        || menuButton.visualFocus || handle.visualFocus
                                        || (root.goButton?.visualFocus ?? false)
    readonly property bool isDragged: area.isDragged || handle.isDragged
    /// What is being written stays with its todo.
    WaterfallDelegate.isPinned: root.isEdited

    property IconButton goButton: null
    /// Whether the keyboard comes back here when the edit has ended, or after the menu.
    property bool isEditedByKeyboard: false
    property bool isMenuByKeyboard: false

    signal menuRequested(row: Item, position: point)
    signal editRequested
    signal editEnded
    signal moveRequested(isUp: bool)

    function takeKeyboard(): void {
        face.forceActiveFocus(Qt.TabFocusReason);
    }
    function openMenu(isByKeyboard: bool, position: point): void {
        root.isMenuByKeyboard = isByKeyboard;
        root.menuRequested(root, position);
    }
    function openMenuByKeyboard(): void {
        root.openMenu(true, Qt.point(Theme.huge, root.height - Theme.tiny));
    }
    function edit(isByKeyboard: bool): void {
        root.isEditedByKeyboard = isByKeyboard;
        root.editRequested();
    }
    /// One that is held has done its work: it has ended an edit.
    function takeReturn(event: KeyEvent): void {
        if (!event.isAutoRepeat)
            root.edit(true);
    }
    /// After a click, the keys are the board's again.
    function endEdit(): void {
        root.editEnded();
        if (root.isEditedByKeyboard)
            root.takeKeyboard();
    }

    /// A row that waits to be used for another todo is in no window, and takes none.
    function takeRequest(): void {
        if (root.Window.window !== null && root.board !== null && !root.isUnified
                && root.board.todos.takeTodoRequest(root.todoID))
            root.takeKeyboard();
    }

    Component.onCompleted: root.takeRequest()
    // Around the face, whose picture follows the pointer as it is.
    opacity: root.isDragged ? 0.6 : 1
    implicitHeight: root.isUnified ? Theme.todoHeight + 12 : Theme.todoHeight

    Connections {
        target: root.board.todos

        function onTodoRequested(): void {
            root.takeRequest();
        }
    }
    FocusableItem {
        id: face

        anchors.fill: parent
        visible: !root.isEdited
        focus: true
        Accessible.role: Accessible.ListItem
        Accessible.ignored: !visible
        Accessible.name: root.title
        Accessible.description: root.isUnified
                ? root.goalTitle : root.board.copy.statusName(root.status)
        Accessible.focusable: true
        Accessible.selectable: true
        Accessible.selected: root.isHighlighted
        Accessible.onPressAction: root.edit(true)
        // Before the goal, which has this key too.
        Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_F2
        Keys.onMenuPressed: root.openMenuByKeyboard()
        Keys.onReturnPressed: event => root.takeReturn(event)
        Keys.onEnterPressed: event => root.takeReturn(event)
        Keys.onPressed: event => {
            event.accepted = true;
            if (event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier))
                root.openMenuByKeyboard();
            else if (event.key === Qt.Key_F2)
                root.edit(true);
            else if (event.key === Qt.Key_Delete && event.modifiers === Qt.NoModifier)
                // One that is held would delete what follows as well.
                event.isAutoRepeat || root.board.todos.remove(root.todoID, root.columnID);
            else if (event.key === Qt.Key_Up && (event.modifiers & Qt.AltModifier))
                root.moveRequested(true);
            else if (event.key === Qt.Key_Down && (event.modifiers & Qt.AltModifier))
                root.moveRequested(false);
            else
                event.accepted = false;
        }

        Rectangle {
            id: rowGround

            anchors.fill: parent
            radius: Theme.controlRadius
            color: root.isDragged ? Theme.card
                   : dropArea.isWelcoming || root.isHighlighted ? Theme.accepting
                   : hover.hovered ? Theme.hover : "transparent"
        }
        DropLine {
            y: dropArea.isBehind ? parent.height - height : 0
            width: parent.width
            visible: dropArea.isWelcoming
        }
        HoverHandler {
            id: hover
        }
        DragArea {
            id: area

            anchors.fill: parent
            dragSource: root.dragSource
            picture: face
            isHeldBeside: true
            text: root.board.todos.dragText(root.todoID, root.columnID)
            acceptedButtons: Qt.LeftButton | Qt.RightButton
            cursorShape: Qt.IBeamCursor
            onClicked: mouse => {
                if (mouse.button === Qt.RightButton)
                    root.openMenu(false, Qt.point(mouse.x, mouse.y));
                else if (!area.isLeaving)
                    root.edit(false);
            }
        }
        IconButton {
            id: statusButton

            anchors.verticalCenter: parent.verticalCenter
            symbol: root.statusSymbol
            size: 28
            color: root.isDone ? Theme.done : Theme.secondaryText
            text: root.board.copy.statusAccessibilityLabel(root.status)
            help: root.board.copy.statusHelp(root.status)
            onClicked: root.board.todos.toggle(root.todoID, root.columnID)
        }
        TodoRowTexts {
            id: texts

            anchors.left: statusButton.right
            anchors.leftMargin: 2
            anchors.right: menuButton.right
            anchors.verticalCenter: parent.verticalCenter
            title: root.title
            isDone: root.isDone
            place: root.isUnified ? root.goalTitle : ""
        }
        // Assistive programs and the keyboard always reach it.
        TodoMenuButton {
            id: menuButton

            anchors.right: root.goButton !== null ? root.goButton.left : handle.left
            anchors.verticalCenter: parent.verticalCenter
            ground: Qt.tint(Theme.column, rowGround.color)
            text: root.board.copy.text(CopyKey.MoreTodoActions)
            isShown: (hover.hovered || root.hasKeyboard) && !root.isDragged
            onClicked: root.openMenu(menuButton.visualFocus,
                                     Qt.point(menuButton.x, root.height - Theme.tiny))
        }
        Repeater {
            model: root.isUnified ? 1 : 0
            delegate: IconButton {
                id: goButton

                anchors.right: handle.left
                anchors.verticalCenter: handle.verticalCenter
                symbol: "arrow-right"
                size: 28
                symbolSize: 14
                text: root.board.copy.text(CopyKey.GoToTodoInGoal)
                onClicked: root.board.todos.goToTodo(root.todoID, root.columnID,
                                                      goButton.visualFocus)
            }
            onItemAdded: (index, item) => root.goButton = item as IconButton
            onItemRemoved: root.goButton = null
        }
        TodoHandle {
            id: handle

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            board: root.board
            dragSource: root.dragSource
            todoID: root.todoID
            columnID: root.columnID
            picture: face
            isPlain: root.isDragged
        }
        FocusRing {
            radius: Theme.controlRadius
            margin: 0
        }
        HoverTip {
            text: root.title
            isHovered: hover.hovered && !area.pressed
                       && (texts.isTruncated || texts.x + texts.titleWidth > menuButton.x)
                       && !root.dragSource.isDragging
                       && !statusButton.hovered && !menuButton.hovered && !handle.hovered
                       && !(root.goButton?.hovered ?? false)
        }
    }
    // A field is made for the row that is edited alone.
    Repeater {
        model: root.isEdited ? 1 : 0
        delegate: TodoTitleField {
            anchors.left: root.left
            anchors.right: root.right
            anchors.verticalCenter: root.verticalCenter
            board: root.board
            todoID: root.todoID
            columnID: root.columnID
            symbol: root.statusSymbol
            onEnded: root.endEdit()
            onAbandoned: root.editEnded()
        }
        onItemAdded: (index, item) => (item as TodoField).takeWhole()
    }
    TodoRowDropArea {
        id: dropArea

        anchors.fill: parent
        board: root.board
        dragSource: root.dragSource
        listID: root.listID
        todoID: root.todoID
    }
}
