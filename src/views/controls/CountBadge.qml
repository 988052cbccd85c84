pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// A number beside a symbol that says what it counts.
Rectangle {
    id: root

    required property int count
    required property string symbol
    required property string label

    implicitWidth: content.implicitWidth + 12
    implicitHeight: Theme.badgeHeight
    radius: root.height / 2
    color: Theme.hover
    Accessible.role: Accessible.StaticText
    Accessible.name: root.label
    Accessible.ignored: !root.visible

    Row {
        id: content

        anchors.centerIn: parent
        spacing: 4

        AppIcon {
            name: root.symbol
            size: 12
            anchors.verticalCenter: parent.verticalCenter
        }
        AppText {
            text: root.count
            font: Theme.captionStrong
            color: Theme.secondaryText
            anchors.verticalCenter: parent.verticalCenter
        }
    }
    HoverHandler {
        id: hover
    }
    HoverTip {
        text: root.label
        isHovered: hover.hovered
    }
}
