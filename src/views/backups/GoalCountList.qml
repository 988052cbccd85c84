pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Controls

/// Goals that are not on the board, each with the number of its open todos.
Rectangle {
    id: root

    required property string label
    required property var titles
    required property var counts

    radius: Theme.controlRadius
    color: Theme.hover

    ListView {
        id: view

        anchors.fill: parent
        anchors.margins: Theme.medium
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        highlightMoveDuration: 0
        model: root.titles.length
        spacing: Theme.tiny
        T.ScrollBar.vertical: AppScrollBar {}
        Accessible.role: Accessible.List
        Accessible.name: root.label

        delegate: Item {
            id: line

            required property int index

            width: view.width - Theme.medium
            height: Math.max(goalTitle.height, goalCount.height)
            Accessible.role: Accessible.ListItem
            Accessible.name: goalTitle.text
            Accessible.description: ViewSettings.copy.openTodoCount(goalCount.text)

            AppText {
                id: goalTitle

                anchors.left: parent.left
                anchors.right: goalCount.left
                anchors.rightMargin: Theme.small
                text: root.titles[line.index] ?? ""
            }
            AppText {
                id: goalCount

                anchors.right: parent.right
                text: root.counts[line.index] ?? ""
                color: Theme.secondaryText
            }
            FocusRing {
                radius: Theme.controlRadius
                margin: 2
            }
        }
    }
}
