pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// One backup of the list: when, how much, and why it was made.
Item {
    id: root

    required property string title
    required property string counts
    required property string note
    required property var goalTitles
    required property var goalCounts
    required property bool isReadable
    required property bool isChosen

    signal chosen
    signal confirmed

    height: lines.height + 2 * Theme.small
    Accessible.role: Accessible.ListItem
    Accessible.name: root.title
    Accessible.description: root.note === "" ? root.counts : root.counts + "\n" + root.note
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: root.isChosen
    Accessible.onPressAction: root.chosen()

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: root.isChosen ? Theme.accepting : hover.hovered ? Theme.hover : "transparent"
    }
    HoverHandler {
        id: hover
    }
    MouseArea {
        anchors.fill: parent
        onClicked: root.chosen()
        onDoubleClicked: root.confirmed()
    }
    Column {
        id: lines

        anchors.left: parent.left
        anchors.leftMargin: Theme.small
        anchors.right: parent.right
        anchors.rightMargin: Theme.small
        anchors.verticalCenter: parent.verticalCenter

        AppText {
            width: parent.width
            text: root.title
            font: Theme.bodyStrong
            color: root.isReadable ? Theme.text : Theme.secondaryText
        }
        AppText {
            width: parent.width
            text: root.counts
            font: Theme.caption
            color: root.isReadable ? Theme.secondaryText : Theme.destructive
        }
        AppText {
            width: parent.width
            text: root.note
            font: Theme.caption
            color: Theme.secondaryText
            visible: root.note !== ""
        }
    }
    FocusRing {
        radius: Theme.controlRadius
        margin: 0
    }
}
