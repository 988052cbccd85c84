pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Todos

/// The row of a todo while its title is not edited: status button, title, buttons and handle. A
/// click on the title edits it, a drag moves the todo, and `TodoRowKeys` says what its keys do. In
/// the first frame it only shows them.
FocusableItem {
    id: root

    required property TodoController todos
    required property BoardDragSource dragSource
    /// Null until the first frame is shown.
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
    readonly property bool hasKeyboard: root.activeFocus
                                        || (root.controls !== null && root.controls.hasKeyboard)
    readonly property bool isDragged: root.controls !== null && root.controls.isDragged
    readonly property bool isDropPlace: root.dropArea !== null && root.dropArea.wouldChangeBoard

    /// Null until the first frame is shown.
    property TodoRowControls controls: null

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
               : root.isDropPlace || root.isHighlighted ? Theme.accepting
               : root.isFound ? Theme.found
               : root.isMenuOpen || (root.controls !== null && root.controls.isHovered)
                 ? Theme.hover : "transparent"
    }
    TodoRowTexts {
        id: texts

        x: Theme.todoButtonSize + 2
        width: root.width - x - (root.isUnified ? 2 : 1) * Theme.todoButtonSize
        anchors.verticalCenter: parent.verticalCenter
        title: root.title
        isDone: root.isDone
        goalTitle: root.isUnified ? root.goalTitle : ""
    }
    // What the buttons show, before there are buttons.
    AppIcon {
        id: statusIcon

        width: Theme.todoButtonSize
        height: width
        anchors.verticalCenter: parent.verticalCenter
        name: root.statusSymbol
        size: Theme.symbolSize
        color: root.isDone ? Theme.done : Theme.secondaryText
        visible: root.controls === null
    }
    AppIcon {
        x: root.width - 2 * width
        y: statusIcon.y
        width: Theme.todoButtonSize
        height: width
        name: root.isUnified ? "arrow-right" : ""
        size: Theme.smallSymbolSize
        visible: root.controls === null
    }
    AppIcon {
        x: root.width - width
        y: statusIcon.y
        width: Theme.todoButtonSize
        height: width
        name: "menu"
        size: Theme.smallSymbolSize
        visible: root.controls === null
    }
    // Nobody can use them before they are shown.
    OptionalItem {
        isWanted: !ViewSettings.isStarting
        onItemChanged: root.controls = item as TodoRowControls

        TodoRowControls {
            id: controls

            property IconButton goButton: null

            anchors.fill: root
            isHovered: hover.hovered
            isDragged: area.isDragged || handle.isDragged
            hasKeyboard: statusButton.visualFocus || handle.visualFocus || menuButton.visualFocus
                         || (controls.goButton?.visualFocus ?? false)

            OptionalItem {
                isWanted: root.isDropPlace

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
                size: Theme.todoButtonSize
                color: root.isDone ? Theme.done : Theme.secondaryText
                text: ViewSettings.copy.statusAccessibilityLabel(root.status)
                help: ViewSettings.copy.statusHelp(root.status)
                outcome: ViewSettings.copy.nextStatus(root.todos.nextStatus(root.status))
                onClicked: root.todos.toggle(root.todoID, root.columnID)
            }
            // Assistive programs and the keyboard reach it even while it is not shown.
            TodoMenuButton {
                id: menuButton

                anchors.right: controls.goButton !== null ? controls.goButton.left : handle.left
                anchors.verticalCenter: handle.verticalCenter
                ground: Qt.tint(Theme.column, rowGround.color)
                text: ViewSettings.copy.text(CopyKey.MoreTodoActions)
                isShown: (hover.hovered || root.hasKeyboard || root.isMenuOpen) && !root.isDragged
                onClicked: root.menuRequested(menuButton.visualFocus,
                                              Qt.rect(menuButton.x, menuButton.y, menuButton.width,
                                                      menuButton.height))
            }
            OptionalItem {
                isWanted: root.isUnified
                onItemChanged: controls.goButton = item as IconButton

                IconButton {
                    id: goButton

                    anchors.right: handle.left
                    anchors.verticalCenter: handle.verticalCenter
                    symbol: "arrow-right"
                    size: Theme.todoButtonSize
                    symbolSize: Theme.smallSymbolSize
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
                isShown: root.visualFocus
            }
            HoverTip {
                text: root.title
                isHovered: hover.hovered && !area.pressed
                           && (texts.isTruncated || texts.x + texts.titleWidth > menuButton.x)
                           && !root.dragSource.isDragging
                           && !statusButton.hovered && !menuButton.hovered && !handle.hovered
                           && !(controls.goButton?.hovered ?? false)
            }
        }
    }
}
