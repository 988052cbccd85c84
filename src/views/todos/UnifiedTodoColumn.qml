pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Todos

/// The list of the whole board: the open todos of all goals and the unassigned ones.
Item {
    id: root

    required property TodoController todos
    required property BoardDragSource dragSource

    /// The focus goes on from here to what is selected next.
    readonly property bool yieldsFocus: true

    signal todoMenuRequested(todoID: string, columnID: string, row: Item, place: rect)

    readonly property real naturalHeight: Math.max(Theme.collapsedCardHeight,
                                                   list.y + list.wantedHeight + Theme.medium)
    /// By how much the column is higher than it has to be, where the board has room to spare.
    property real growth: Math.max(0, Math.min(root.WaterfallDelegate.grantedHeight,
                                               root.naturalHeight) - root.implicitHeight)

    /// Keeps the item, with what is typed.
    WaterfallDelegate.isPinned: list.isWriting
    WaterfallDelegate.restHeight: root.implicitHeight
    WaterfallDelegate.fullHeight: root.naturalHeight

    Behavior on growth {
        enabled: root.WaterfallDelegate.isGrantEased

        NumberAnimation {
            duration: Theme.mediumTime
            easing.type: Easing.OutCubic
        }
    }

    // As high as its todos, up to the height of two goals' cards one above the other.
    implicitHeight: Math.min(root.naturalHeight,
                             2 * Theme.collapsedCardHeight + Theme.targetSpacing)
    height: root.implicitHeight + root.growth
    Accessible.role: Accessible.List
    Accessible.name: ViewSettings.copy.text(CopyKey.AllTodos)
    Accessible.description: ViewSettings.copy.text(CopyKey.AllTodosSubtitle)
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: root.todos.isUnifiedSelected

    Accessible.onPressAction: root.todos.goToUnified()

    MouseArea {
        anchors.fill: parent
        onClicked: root.todos.goToUnified()
    }
    Rectangle {
        anchors.fill: parent
        radius: Theme.columnRadius
        color: Theme.column
        border.width: root.todos.isUnifiedSelected ? 2 : 0
        border.color: Theme.focus
    }
    Item {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Theme.small
        height: 40 + Theme.bodyGrowth

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
            text: ViewSettings.copy.text(CopyKey.AllTodos)
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
            text: ViewSettings.copy.text(CopyKey.AllTodosSubtitle)
            font: Theme.caption
            color: Theme.secondaryText
        }
        IconButton {
            id: addButton

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "lightbulb-plus"
            size: 28
            text: ViewSettings.copy.text(CopyKey.AddTodo)
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
        maximumHeight: root.height - y - Theme.medium
        todos: root.todos
        dragSource: root.dragSource
        listID: root.todos.unifiedListID
        roomBelow: root.height - y - height
        onMenuRequested: (todoID, columnID, row, place) => {
            root.todoMenuRequested(todoID, columnID, row, place);
        }
        onFocusReturned: addButton.forceActiveFocus(Qt.TabFocusReason)
    }
}
