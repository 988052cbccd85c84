pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa

/// A goal, or what belongs to none, with its todos and its window cards.
FocusScope {
    id: root

    required property BoardController board
    required property BoardDragSource dragSource
    required property string columnID
    required property bool isUnassigned
    required property string title
    required property string accent
    required property string priority
    required property int openTodoCount
    required property int windowCount
    required property bool isSelected
    required property WindowListModel windows

    signal windowMenuRequested(windowID: real, card: Item, position: point)
    signal columnMenuRequested(button: Item)
    signal priorityMenuRequested(button: Item)
    signal todoMenuRequested(todoID: string, todoColumnID: string, row: Item, position: point)

    implicitWidth: Theme.columnWidth
    Accessible.role: Accessible.List
    Accessible.name: root.title
    Accessible.selected: root.isSelected

    Rectangle {
        anchors.fill: parent
        radius: Theme.columnRadius
        color: Theme.column
    }
    Rectangle {
        anchors.fill: parent
        radius: Theme.columnRadius
        color: dropArea.containsDrag ? Theme.accepting : "transparent"
        border.width: dropArea.containsDrag || root.isSelected ? 2 : 0
        border.color: Theme.focus
    }

    MouseArea {
        anchors.fill: parent
        onClicked: root.board.todos.goToColumn(root.columnID)
    }

    // Below everything else: the rows of todos come first.
    DropArea {
        id: dropArea

        anchors.fill: parent
        keys: ["text/plain"]
        // Only Kelpa's own drags: reading the text of another program's would mean waiting for it.
        onEntered: drag => {
            drag.accepted = root.dragSource.isDragging
                    && root.board.canDrop(drag.text, root.columnID);
        }
        onDropped: drop => {
            drop.accepted = root.dragSource.isDragging
                    && root.board.drop(drop.text, root.columnID);
        }
    }

    ColumnHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Theme.small
        board: root.board
        dragSource: root.dragSource
        columnID: root.columnID
        isUnassigned: root.isUnassigned
        title: root.title
        accent: root.accent
        priority: root.priority
        openTodoCount: root.openTodoCount
        windowCount: root.windowCount
        onMenuRequested: button => root.columnMenuRequested(button)
        onPriorityMenuRequested: button => root.priorityMenuRequested(button)
        onAddTodoRequested: root.isUnassigned ? todos.openEditor()
                                              : root.board.todos.requestEditor(root.columnID)
    }
    AppText {
        id: hint

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.leftMargin: Theme.medium
        anchors.rightMargin: Theme.medium
        text: root.board.copy.text(CopyKey.UnsortedHint)
        color: Theme.secondaryText
        font: Theme.caption
        height: visible ? implicitHeight + Theme.small : 0
        verticalAlignment: Text.AlignTop
        visible: root.isUnassigned
        Accessible.ignored: !visible
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    ScrollNote {
        board: root.board
        view: cards
    }
    TodoList {
        id: todos

        readonly property real room: root.height - y - Theme.medium

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: hint.visible ? hint.bottom : header.bottom
        anchors.leftMargin: Theme.small
        anchors.rightMargin: Theme.small
        height: implicitHeight
        // The windows keep half of the column, or what tells that there are none its place.
        maximumHeight: root.windowCount > 0 ? room / 2 : room - emptyPlace.height - Theme.small
        board: root.board
        dragSource: root.dragSource
        listID: root.columnID
        onMenuRequested: (todoID, todoColumnID, row, position) => {
            root.todoMenuRequested(todoID, todoColumnID, row, position);
        }
    }
    ReadingOrder {
        container: cards.contentItem
    }
    // Two columns, as the arrow keys walk them.
    GridView {
        id: cards

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: todos.bottom
        anchors.leftMargin: Theme.medium
        anchors.topMargin: Theme.small
        anchors.rightMargin: Theme.medium - Theme.small
        anchors.bottom: parent.bottom
        cellWidth: Math.floor(width / 2)
        cellHeight: Theme.windowCardHeight + Theme.small
        topMargin: 2
        bottomMargin: Theme.medium
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        model: root.windows
        T.ScrollBar.vertical: AppScrollBar {}

        delegate: WindowCard {
            required property int index

            z: index
            width: cards.cellWidth - Theme.small
            board: root.board
            dragSource: root.dragSource
            onMenuRequested: (card, position) => {
                root.windowMenuRequested(windowID, card, position);
            }
        }
    }
    Item {
        id: emptyPlace

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: cards.top
        anchors.leftMargin: Theme.medium
        anchors.rightMargin: Theme.medium
        height: 92
        visible: root.windowCount === 0

        Rectangle {
            anchors.fill: parent
            radius: Theme.cardRadius
            color: "transparent"
            border.width: 1
            border.color: Theme.outline
        }
        AppText {
            anchors.fill: parent
            anchors.margins: Theme.medium
            horizontalAlignment: Text.AlignHCenter
            text: root.board.copy.text(CopyKey.DragWindowHere)
            color: Theme.secondaryText
            wrapMode: Text.Wrap
            Accessible.ignored: !visible
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
