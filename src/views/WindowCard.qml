pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kelpa

/// A window of another application. It can be dragged to another column, or moved by its menu.
Item {
    id: root

    required property BoardController board
    required property BoardDragSource dragSource
    required property int windowID
    required property string ownerName
    required property string title
    required property bool isMinimized
    required property bool isOnScreen
    required property bool isSelected

    readonly property string shownTitle: root.title.length > 0
            ? root.title : root.board.copy.text(CopyKey.Window)
    readonly property bool isRaised: hover.hovered || root.isSelected

    signal menuRequested(card: Item, position: point)

    implicitHeight: 56
    activeFocusOnTab: true
    Accessible.role: Accessible.ListItem
    Accessible.ignored: !root.visible
    Accessible.name: root.ownerName + ": " + root.shownTitle
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: root.isSelected
    Keys.onMenuPressed: root.openMenu()
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier);
        if (event.accepted)
            root.openMenu();
    }

    function openMenu(): void {
        root.menuRequested(root, Qt.point(Theme.medium, root.height - Theme.small));
    }

    HoverHandler {
        id: hover
    }

    Item {
        id: face

        anchors.fill: parent
        // Without a graphics device, scaled round corners show seams.
        scale: GraphicsInfo.api === GraphicsInfo.Software ? 1
               : area.pressed ? 0.985 : root.isRaised ? 1.012 : 1
        opacity: area.pressed ? 0.82 : 1

        Behavior on scale {
            NumberAnimation {
                duration: Theme.shortTime
                easing.type: Easing.OutCubic
            }
        }

        Rectangle {
            anchors.fill: parent
            anchors.topMargin: root.isRaised ? 2 : 1
            anchors.bottomMargin: root.isRaised ? -2 : -1
            radius: Theme.cardRadius
            color: Theme.shadow
        }
        Rectangle {
            anchors.fill: parent
            radius: Theme.cardRadius
            color: Theme.card
            border.width: root.isSelected ? 1.2 : 1
            border.color: root.isSelected ? Theme.focus : Theme.cardOutline
        }
        Rectangle {
            anchors.fill: parent
            radius: Theme.cardRadius
            color: Theme.accepting
            visible: root.isSelected
        }

        Item {
            id: iconPlace

            x: Theme.medium
            width: 20
            height: 20
            anchors.verticalCenter: parent.verticalCenter
            opacity: root.isMinimized || !root.isOnScreen ? 0.6 : 1

            Image {
                id: icon

                // Without an icon, the image is a single empty pixel.
                readonly property bool isThere: status === Image.Ready && implicitWidth > 1

                anchors.fill: parent
                asynchronous: true
                fillMode: Image.PreserveAspectFit
                source: "image://appicon/" + root.windowID
                sourceSize.width: 20 * Screen.devicePixelRatio
                sourceSize.height: 20 * Screen.devicePixelRatio
                visible: isThere
            }
            AppIcon {
                anchors.fill: parent
                size: 20
                name: "app-window"
                visible: !icon.isThere
            }
        }
        Column {
            anchors.left: iconPlace.right
            anchors.leftMargin: Theme.medium
            anchors.right: stateIcon.visible ? stateIcon.left : parent.right
            anchors.rightMargin: stateIcon.visible ? Theme.small : Theme.medium
            anchors.verticalCenter: parent.verticalCenter
            spacing: 1

            AppText {
                width: parent.width
                text: root.shownTitle
                color: root.isMinimized || !root.isOnScreen ? Theme.secondaryText : Theme.text
            }
            AppText {
                width: parent.width
                text: root.ownerName
                font: Theme.captionStrong
                color: Theme.secondaryText
            }
        }
        AppIcon {
            id: stateIcon

            anchors.right: parent.right
            anchors.rightMargin: Theme.medium
            anchors.verticalCenter: parent.verticalCenter
            name: "minus"
            size: 14
            visible: root.isMinimized
        }
    }

    DragArea {
        id: area

        anchors.fill: parent
        dragSource: root.dragSource
        picture: face
        text: root.board.windowDragText(root.windowID)
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: mouse => {
            if (mouse.button === Qt.RightButton)
                root.menuRequested(root, Qt.point(mouse.x, mouse.y));
        }
    }
    FocusRing {
        control: root
        radius: Theme.cardRadius + 2
    }
    HoverTip {
        text: root.shownTitle
        isHovered: hover.hovered && !area.pressed && !root.dragSource.isDragging
    }
}
