pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// Shows a goal's priority in a capsule of its colour, and opens the menu that changes it.
PressButton {
    id: root

    required property string symbol
    required property color color

    implicitWidth: 30
    implicitHeight: Theme.badgeHeight
    Accessible.role: Accessible.ButtonMenu

    contentItem: AppIcon {
        name: root.symbol
        size: 14
        color: root.color
    }
    background: Rectangle {
        radius: height / 2
        color: Qt.alpha(root.color, root.down ? 0.3 : root.hovered ? 0.22 : 0.13)
    }

    FocusRing {
        radius: root.height / 2 + 2
    }
    HoverTip {}
}
