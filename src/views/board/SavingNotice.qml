pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// Says that a slow disk has not taken the last changes yet. Presses go through it.
FloatingGround {
    id: root

    readonly property string text: ViewSettings.copy.text(CopyKey.StillSaving)
    property bool isComplete: false

    implicitWidth: label.implicitWidth + 2 * Theme.large
    implicitHeight: 36 + Theme.bodyGrowth
    radius: height / 2
    Accessible.role: Accessible.AlertMessage
    // An item that is created as part of what is read is announced by the toolkit as well.
    Accessible.ignored: !root.visible || !root.isComplete
    Accessible.name: root.text
    Component.onCompleted: root.isComplete = true

    Announcement {
        text: root.text
    }

    AppText {
        id: label

        anchors.fill: parent
        anchors.leftMargin: Theme.large
        anchors.rightMargin: Theme.large
        horizontalAlignment: Text.AlignHCenter
        text: root.text
    }
}
