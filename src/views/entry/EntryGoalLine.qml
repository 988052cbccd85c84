pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// A goal by its title, with a dot in its colour; "Unsorted" has a ring.
Item {
    id: root

    required property string title
    /// Empty for "Unsorted".
    required property string accent

    readonly property bool isOfGoal: root.accent !== ""

    implicitWidth: label.x + label.implicitWidth
    implicitHeight: label.implicitHeight
    Accessible.ignored: true

    Rectangle {
        id: dot

        anchors.verticalCenter: parent.verticalCenter
        width: 10
        height: 10
        radius: 5
        color: root.isOfGoal ? Theme.accentColor(root.accent) : "transparent"
        border.width: 1
        border.color: root.isOfGoal ? Theme.accentEdge(root.accent) : Theme.secondaryText
    }
    AppText {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        x: dot.width + Theme.small
        width: root.width - x
        text: root.title
        Accessible.ignored: true
    }
}
