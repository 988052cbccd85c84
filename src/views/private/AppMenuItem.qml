pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa

/// An item of a menu with a symbol before its text.
T.MenuItem {
    id: root

    property string symbol
    property color symbolColor: Theme.secondaryText
    property color foreground: Theme.text

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: 30
    leftPadding: 10
    rightPadding: 14
    spacing: 10
    font: Theme.body
    Accessible.name: root.text

    contentItem: Item {
        implicitWidth: symbolPlace.width + root.spacing + label.implicitWidth
        implicitHeight: label.implicitHeight

        Item {
            id: symbolPlace

            width: Theme.symbolSize
            height: parent.height

            AppIcon {
                anchors.centerIn: parent
                name: root.symbol
                color: root.symbolColor
                visible: root.symbol.length > 0
            }
        }
        AppText {
            id: label

            anchors.left: symbolPlace.right
            anchors.leftMargin: root.spacing
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            color: root.foreground
        }
    }
    background: Rectangle {
        radius: Theme.smallRadius
        color: root.down ? Theme.press : root.highlighted ? Theme.hover : "transparent"
    }
}
