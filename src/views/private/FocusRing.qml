pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// Shows that the control which it surrounds has the keyboard.
Rectangle {
    id: root

    required property Item control
    property bool isShown: root.control.activeFocus

    anchors.fill: root.control
    anchors.margins: -2
    radius: Theme.controlRadius + 2
    color: "transparent"
    border.width: 2
    border.color: Theme.focus
    visible: root.isShown
    Accessible.ignored: true
}
