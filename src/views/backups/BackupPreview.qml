pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Backups

/// The goals of the chosen backup, each with the number of its open todos.
Rectangle {
    id: root

    /// Null while none is chosen.
    required property BackupListRow row

    readonly property var titles: root.row?.goalTitles ?? []
    readonly property var counts: root.row?.goalCounts ?? []

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
        Accessible.name: root.row?.title ?? ""

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
