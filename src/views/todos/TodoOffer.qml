pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// A button below a field, with the key that does the same while the field has the keyboard.
Item {
    id: root

    required property string text
    required property bool isKeyFree

    readonly property bool hasFocus: button.activeFocus

    signal taken

    implicitHeight: 30 + Theme.captionGrowth
    Accessible.role: Accessible.AlertMessage
    Accessible.name: root.text + " " + keys.text

    Announcement {
        text: root.Accessible.name
    }
    Shortcut {
        sequences: ["Ctrl+Return", "Ctrl+Enter"]
        enabled: root.isKeyFree
        autoRepeat: false
        onActivated: root.taken()
    }
    PressButton {
        id: button

        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, root.width)
        implicitWidth: label.implicitWidth + keys.implicitWidth + 3 * Theme.small
        implicitHeight: 24 + Theme.captionGrowth
        text: root.text
        font: Theme.captionStrong
        focusPolicy: Qt.TabFocus
        onClicked: root.taken()

        background: Rectangle {
            radius: Theme.smallRadius
            color: button.down ? Theme.press : button.hovered ? Theme.hover : Theme.accepting
        }

        AppText {
            id: label

            anchors.left: parent.left
            anchors.leftMargin: Theme.small
            anchors.right: keys.left
            anchors.rightMargin: Theme.small
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            font: Theme.captionStrong
            color: Theme.accentText
        }
        AppText {
            id: keys

            anchors.right: parent.right
            anchors.rightMargin: Theme.small
            anchors.verticalCenter: parent.verticalCenter
            text: ViewSettings.copy.makeTodosKeys()
            font: Theme.caption
            color: Theme.secondaryText
        }
        FocusRing {
            radius: Theme.smallRadius
            margin: 0
        }
    }
}
