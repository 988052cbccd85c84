pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// A short message over the board.
Rectangle {
    id: root

    required property string message

    /// The last message stays readable while it fades.
    property string shownMessage

    onMessageChanged: if (root.message.length > 0)
        root.shownMessage = root.message

    implicitWidth: Math.min(420, label.implicitWidth + 2 * Theme.large)
    implicitHeight: 36
    radius: height / 2
    color: Theme.text
    opacity: root.message.length > 0 ? 1 : 0
    visible: root.opacity > 0
    Accessible.role: Accessible.AlertMessage
    Accessible.ignored: !root.visible
    Accessible.name: root.shownMessage

    Behavior on opacity {
        NumberAnimation {
            duration: Theme.mediumTime
        }
    }

    AppText {
        id: label

        anchors.fill: parent
        anchors.leftMargin: Theme.large
        anchors.rightMargin: Theme.large
        horizontalAlignment: Text.AlignHCenter
        text: root.shownMessage
        color: Theme.window
    }
}
