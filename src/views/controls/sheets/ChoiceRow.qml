pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// One of the things that a list of a sheet offers, with what is to be known of it below its title.
Item {
    id: root

    required property string title
    property string details
    property string note
    /// Whether it can be used; its details say why not.
    property bool isUsable: true
    property bool isChosen: false

    signal chosen
    signal confirmed

    height: lines.height + 2 * Theme.small
    Accessible.role: Accessible.ListItem
    Accessible.name: root.title
    Accessible.description: root.note === "" ? root.details : root.details + "\n" + root.note
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
            color: root.isUsable ? Theme.text : Theme.secondaryText
        }
        AppText {
            width: parent.width
            text: root.details
            font: Theme.caption
            color: root.isUsable ? Theme.secondaryText : Theme.destructive
            wrapMode: Text.Wrap
            visible: root.details !== ""
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
