pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// The head of a column; a goal's can be dragged onto another column while goals have their own
/// order.
Item {
    id: root

    required property BoardController board
    required property BoardDragSource dragSource
    required property string columnID
    required property bool isUnassigned
    required property string title
    required property string accent
    required property int windowCount

    signal menuRequested(button: Item)

    implicitHeight: 40

    // The ground of the picture that follows the pointer.
    Rectangle {
        anchors.fill: parent
        radius: Theme.cardRadius
        color: Theme.card
        visible: dragArea.pressed && dragArea.isLeaving
    }
    DragArea {
        id: dragArea

        anchors.fill: parent
        dragSource: root.dragSource
        picture: root
        text: root.board.columnDragText(root.columnID)
        enabled: !root.isUnassigned && !root.board.isAutoSortingGoals
        cursorShape: enabled ? Qt.OpenHandCursor : Qt.ArrowCursor
    }

    Rectangle {
        id: dot

        x: Theme.tiny
        width: 10
        height: 10
        radius: 5
        anchors.verticalCenter: parent.verticalCenter
        color: root.isUnassigned ? "transparent" : Theme.accentColor(root.accent)
        border.width: root.isUnassigned ? 2 : 0
        border.color: Theme.secondaryText
    }
    AppText {
        id: titleText

        anchors.left: dot.right
        anchors.leftMargin: Theme.small
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, badge.parent.width - x - badge.width - Theme.small
                                       - (menuButton.visible ? menuButton.width : 0))
        text: root.title
        font: Theme.bodyStrong
    }
    Rectangle {
        id: badge

        anchors.left: titleText.right
        anchors.leftMargin: Theme.small
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(height, count.implicitWidth + 12)
        height: 20
        radius: 10
        color: Theme.hover
        Accessible.role: Accessible.StaticText
        Accessible.name: root.board.copy.windowCount(root.windowCount)

        AppText {
            id: count

            anchors.centerIn: parent
            text: root.windowCount
            font: Theme.captionStrong
            color: Theme.secondaryText
        }
    }
    IconButton {
        id: menuButton

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        symbol: "ellipsis"
        size: 28
        text: root.board.copy.text(CopyKey.MoreGoalActions)
        visible: !root.isUnassigned
        Accessible.role: Accessible.ButtonMenu
        onClicked: root.menuRequested(menuButton)
    }
}
