pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance

/// Shows whether something is chosen, or that it cannot be chosen because it is there already.
Item {
    id: root

    required property bool isChosen
    required property bool isSettled

    implicitWidth: 20
    implicitHeight: 20

    AppIcon {
        anchors.centerIn: parent
        name: "square"
        size: 20
        visible: !root.isChosen && !root.isSettled
    }
    // As large as the outline within its symbol.
    Rectangle {
        anchors.centerIn: parent
        width: 17
        height: 17
        radius: root.isSettled ? width / 2 : 3
        color: root.isSettled ? Theme.secondaryText : Theme.accent
        visible: root.isChosen || root.isSettled

        AppIcon {
            anchors.centerIn: parent
            name: "check"
            size: 13
            color: root.isSettled ? Theme.popup : Theme.textOnAccent
        }
    }
}
