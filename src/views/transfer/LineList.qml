pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Controls

/// Lines that cannot be chosen, below what they are. The arrow keys scroll them.
Rectangle {
    id: root

    required property string label
    required property var lines

    radius: Theme.controlRadius
    color: Theme.hover

    AppText {
        id: heading

        x: Theme.medium
        y: Theme.small
        width: parent.width - 2 * x
        text: root.label
        font: Theme.captionStrong
        color: Theme.secondaryText
    }
    ListView {
        id: view

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: heading.bottom
        anchors.bottom: parent.bottom
        anchors.leftMargin: Theme.medium
        anchors.topMargin: Theme.tiny
        anchors.bottomMargin: Theme.small
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        highlightMoveDuration: 0
        model: root.lines.length
        spacing: Theme.tiny
        T.ScrollBar.vertical: AppScrollBar {}
        Accessible.role: Accessible.List
        Accessible.name: root.label

        delegate: Item {
            id: line

            required property int index

            width: view.width - Theme.medium
            height: label.height
            Accessible.role: Accessible.ListItem
            Accessible.name: label.text

            AppText {
                id: label

                width: parent.width
                text: root.lines[line.index] ?? ""
            }
            FocusRing {
                radius: Theme.controlRadius
                margin: 2
            }
        }
    }
}
