pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// The open todos of all goals and those that belong to none.
Item {
    id: root

    required property BoardController board
    required property BoardDragSource dragSource

    /// What the arrow keys have selected of it.
    function selectedPart(): Item {
        return root;
    }

    signal todoMenuRequested(todoID: string, columnID: string, row: Item, position: point)

    /// What is being written stays in its place.
    WaterfallDelegate.isPinned: list.isWriting

    /// As high as its todos, but no higher than two of the goals' cards one above the other.
    implicitHeight: Math.max(Theme.collapsedCardHeight,
                             Math.min(list.y + list.wantedHeight + Theme.medium,
                                      2 * Theme.collapsedCardHeight + Theme.targetSpacing))
    height: implicitHeight
    Accessible.role: Accessible.List
    Accessible.name: root.board.copy.text(CopyKey.AllTodos)
    Accessible.description: root.board.copy.text(CopyKey.AllTodosSubtitle)
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: root.board.todos.isUnifiedSelected

    Accessible.onPressAction: root.board.todos.goToColumn(root.board.todos.unifiedListID)

    MouseArea {
        anchors.fill: parent
        onClicked: root.board.todos.goToColumn(root.board.todos.unifiedListID)
    }
    Rectangle {
        anchors.fill: parent
        radius: Theme.columnRadius
        color: Theme.column
        border.width: root.board.todos.isUnifiedSelected ? 2 : 0
        border.color: Theme.focus
    }
    Item {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Theme.small
        height: 40

        AppIcon {
            id: icon

            x: Theme.columnSymbolX - header.x - width / 2
            anchors.verticalCenter: parent.verticalCenter
            name: "list-checks"
        }
        AppText {
            id: titleText

            anchors.left: parent.left
            anchors.leftMargin: Theme.columnTextX - header.x
            anchors.right: addButton.left
            anchors.verticalCenter: parent.verticalCenter
            text: root.board.copy.text(CopyKey.AllTodos)
            font: Theme.bodyStrong
            Accessible.ignored: !visible
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        AppText {
            anchors.left: titleText.left
            anchors.right: parent.right
            anchors.top: titleText.bottom
            anchors.topMargin: 1
            text: root.board.copy.text(CopyKey.AllTodosSubtitle)
            font: Theme.caption
            color: Theme.secondaryText
        }
        IconButton {
            id: addButton

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "lightbulb-plus"
            size: 28
            text: root.board.copy.text(CopyKey.AddTodo)
            onClicked: list.openEditor(addButton.visualFocus)
        }
    }
    TodoList {
        id: list

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.small
        anchors.rightMargin: Theme.small
        y: Theme.columnListY
        height: implicitHeight
        maximumHeight: 2 * Theme.collapsedCardHeight + Theme.targetSpacing - y - Theme.medium
        board: root.board
        dragSource: root.dragSource
        listID: root.board.todos.unifiedListID
        roomBelow: root.height - y - height
        onMenuRequested: (todoID, columnID, row, position) => {
            root.todoMenuRequested(todoID, columnID, row, position);
        }
        onKeyboardReturned: addButton.forceActiveFocus(Qt.TabFocusReason)
    }
}
