pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// A number beside a symbol that says what a press adds to it.
PressButton {
    id: root

    required property int count
    required property string symbol
    /// What the number counts.
    required property string label

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.badgeHeight
    Accessible.description: root.label

    leftPadding: 6
    rightPadding: 6
    contentItem: Row {
        spacing: 4

        AppIcon {
            name: root.symbol
            size: 13
            anchors.verticalCenter: parent.verticalCenter
        }
        AppText {
            text: root.count
            font: Theme.captionStrong
            color: Theme.secondaryText
            anchors.verticalCenter: parent.verticalCenter
        }
    }
    background: Rectangle {
        radius: height / 2
        color: root.down ? Theme.press : Theme.hover
        border.width: root.hovered ? 1 : 0
        border.color: Theme.outline
    }

    FocusRing {
        radius: root.height / 2 + 2
    }
    HoverTip {}
}
