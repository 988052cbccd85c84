pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Windows

/// A window that a goal had: its icon, its title and when it was there, with buttons that open it again
/// and forget it.
Item {
    id: root

    required property WindowMemoryController memory
    required property real windowID
    required property string applicationID
    required property string ownerName
    required property string title
    required property string lastSeen
    /// Whether the keys of the list are for this row.
    required property bool isCurrent

    Accessible.role: Accessible.ListItem
    Accessible.name: ViewSettings.copy.windowName(root.ownerName, root.title)
    Accessible.description: root.lastSeen
    Accessible.focusable: true
    Accessible.onPressAction: root.memory.reopen(root.windowID)

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: hover.hovered ? Theme.hover : "transparent"
        border.width: root.isCurrent ? 2 : 0
        border.color: Theme.accentText
    }
    HoverHandler {
        id: hover
    }
    Item {
        id: iconPlace

        x: Theme.small
        width: 24
        height: 24
        anchors.verticalCenter: parent.verticalCenter

        Image {
            id: icon

            // Without an icon, the image is a single empty pixel.
            readonly property bool isThere: status === Image.Ready && implicitWidth > 1

            anchors.fill: parent
            asynchronous: true
            fillMode: Image.PreserveAspectFit
            source: "image://appicon/0/" + encodeURIComponent(root.applicationID)
            sourceSize.width: 24 * Screen.devicePixelRatio
            sourceSize.height: 24 * Screen.devicePixelRatio
            visible: icon.isThere
        }
        AppIcon {
            anchors.centerIn: parent
            size: 20
            name: "app-window"
            visible: !icon.isThere
        }
    }
    Column {
        anchors.left: iconPlace.right
        anchors.leftMargin: Theme.medium
        anchors.right: again.left
        anchors.rightMargin: Theme.small
        anchors.verticalCenter: parent.verticalCenter

        AppText {
            id: titleText

            width: parent.width
            text: root.memory.titleLengths(root.title)
        }
        AppText {
            width: parent.width
            text: root.ownerName
            font: Theme.caption
            color: Theme.secondaryText
        }
        AppText {
            width: parent.width
            text: root.lastSeen
            font: Theme.caption
            color: Theme.secondaryText
        }
    }
    // The keys of the list do what its buttons do.
    AppButton {
        id: again

        anchors.right: forget.left
        anchors.rightMargin: Theme.tiny
        anchors.verticalCenter: parent.verticalCenter
        text: ViewSettings.copy.text(CopyKey.OpenAgain)
        focusPolicy: Qt.NoFocus
        onClicked: root.memory.reopen(root.windowID)
    }
    IconButton {
        id: forget

        anchors.right: parent.right
        anchors.rightMargin: Theme.tiny
        anchors.verticalCenter: parent.verticalCenter
        symbol: "x"
        text: ViewSettings.copy.text(CopyKey.ForgetWindow)
        focusPolicy: Qt.NoFocus
        onClicked: root.memory.forget(root.windowID)
    }
    HoverTip {
        text: root.title
        isHovered: hover.hovered && !forget.hovered
                   && (titleText.truncated || titleText.implicitWidth > titleText.width)
    }
}
