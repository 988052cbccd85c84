pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Todos

/// The row of a todo while its title is not edited: status button, title, buttons and handle. A
/// click on the title edits it, a drag moves the todo, and `TodoRowKeys` says what its keys do.
FocusableItem {
    id: root

    required property TodoController todos
    required property BoardDragSource dragSource
    required property TodoRowDropArea dropArea
    required property string todoID
    required property string columnID
    required property string title
    required property string status
    required property string statusSymbol
    required property bool isDone
    required property string goalTitle
    required property bool isUnified
    required property bool isHighlighted
    required property bool isFound
    required property bool isMenuOpen

    /// Whether a person moved the focus into the row by keyboard: a button that was clicked has the
    /// focus, too, without showing it.
    readonly property bool hasKeyboard: root.activeFocus || statusButton.visualFocus
                                        || handle.visualFocus
                                        || (root.menuButton?.visualFocus ?? false)
                                        || (root.goButton?.visualFocus ?? false)
    readonly property bool isDragged: area.isDragged || handle.isDragged

    property IconButton goButton: null
    property TodoMenuButton menuButton: null

    signal menuRequested(isByKeyboard: bool, place: rect)
    signal editRequested(isByKeyboard: bool)
    signal moveRequested(isUp: bool)

    function perform(action: int): void {
        switch (action) {
        case TodoRowKeys.Edit:
            root.editRequested(true);
            break;
        case TodoRowKeys.OpenMenu:
            root.menuRequested(true, Qt.rect(Theme.huge, root.height - Theme.tiny, 0, 0));
            break;
        case TodoRowKeys.Delete:
            root.todos.remove(root.todoID, root.columnID);
            break;
        case TodoRowKeys.MoveUp:
        case TodoRowKeys.MoveDown:
            root.moveRequested(action === TodoRowKeys.MoveUp);
            break;
        }
    }

    Accessible.role: Accessible.ListItem
    Accessible.ignored: !visible
    Accessible.name: root.title
    Accessible.description: root.isUnified
            ? root.goalTitle : ViewSettings.copy.statusName(root.status)
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: root.isHighlighted
    Accessible.onPressAction: root.editRequested(true)
    // The goal has a shortcut on this key, too.
    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_F2
    Keys.onPressed: event => {
        const action = TodoRowKeys.action(event.key, event.modifiers, event.isAutoRepeat);
        event.accepted = action !== TodoRowKeys.PassOn;
        root.perform(action);
    }

    Rectangle {
        id: rowGround

        anchors.fill: parent
        radius: Theme.controlRadius
        color: root.isDragged ? Theme.card
               : root.dropArea.wouldChangeBoard || root.isHighlighted ? Theme.accepting
               : root.isFound ? Theme.found
               : hover.hovered || root.isMenuOpen ? Theme.hover : "transparent"
    }
    OptionalItem {
        isWanted: root.dropArea.wouldChangeBoard

        DropLine {
            y: root.dropArea.isBehind ? root.height - height : 0
            width: root.width
        }
    }
    HoverHandler {
        id: hover
    }
    DragArea {
        id: area

        anchors.fill: parent
        dragSource: root.dragSource
        picture: root
        isPictureBesidePointer: true
        text: root.todos.dragText(root.todoID, root.columnID)
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        cursorShape: Qt.IBeamCursor
        onClicked: mouse => {
            if (mouse.button === Qt.RightButton)
                root.menuRequested(false, Qt.rect(mouse.x, mouse.y, 0, 0));
            else if (!area.hasPassedDragDistance)
                root.editRequested(false);
        }
    }
    IconButton {
        id: statusButton

        anchors.verticalCenter: parent.verticalCenter
        symbol: root.statusSymbol
        size: 28
        color: root.isDone ? Theme.done : Theme.secondaryText
        text: ViewSettings.copy.statusAccessibilityLabel(root.status)
        help: ViewSettings.copy.statusHelp(root.status)
        outcome: ViewSettings.copy.nextStatus(root.todos.nextStatus(root.status))
        onClicked: root.todos.toggle(root.todoID, root.columnID)
    }
    TodoRowTexts {
        id: texts

        anchors.left: statusButton.right
        anchors.leftMargin: 2
        anchors.right: root.goButton !== null ? root.goButton.left : handle.left
        anchors.verticalCenter: parent.verticalCenter
        title: root.title
        isDone: root.isDone
        goalTitle: root.isUnified ? root.goalTitle : ""
    }
    // Assistive programs and the keyboard reach it even while it is not shown.
    OptionalItem {
        isWanted: !ViewSettings.isStarting
        onItemChanged: root.menuButton = item as TodoMenuButton

        TodoMenuButton {
            id: menuButton

            anchors.right: root.goButton !== null ? root.goButton.left : handle.left
            anchors.verticalCenter: handle.verticalCenter
            ground: Qt.tint(Theme.column, rowGround.color)
            text: ViewSettings.copy.text(CopyKey.MoreTodoActions)
            isShown: (hover.hovered || root.hasKeyboard || root.isMenuOpen) && !root.isDragged
            onClicked: root.menuRequested(menuButton.visualFocus,
                                          Qt.rect(menuButton.x, menuButton.y, menuButton.width,
                                                  menuButton.height))
        }
    }
    OptionalItem {
        isWanted: root.isUnified
        onItemChanged: root.goButton = item as IconButton

        IconButton {
            id: goButton

            anchors.right: handle.left
            anchors.verticalCenter: handle.verticalCenter
            symbol: "arrow-right"
            size: 28
            symbolSize: 14
            text: ViewSettings.copy.text(CopyKey.GoToTodoInGoal)
            onClicked: root.todos.goToTodo(root.todoID, root.columnID, goButton.visualFocus)
        }
    }
    TodoHandle {
        id: handle

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        todos: root.todos
        dragSource: root.dragSource
        todoID: root.todoID
        columnID: root.columnID
        picture: root
        isPlain: root.isDragged
    }
    FocusRing {
        radius: Theme.controlRadius
        margin: 0
    }
    HoverTip {
        text: root.title
        isHovered: hover.hovered && !area.pressed
                   && (texts.isTruncated || texts.x + texts.titleWidth > (root.menuButton?.x ?? Infinity))
                   && !root.dragSource.isDragging
                   && !statusButton.hovered && !(root.menuButton?.hovered ?? false) && !handle.hovered
                   && !(root.goButton?.hovered ?? false)
    }
}
