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
    Accessible.role: Accessible.Pane
    Accessible.name: root.row?.title ?? ""

    Flickable {
        id: view

        anchors.fill: parent
        anchors.margins: Theme.medium
        contentHeight: lines.height
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        T.ScrollBar.vertical: AppScrollBar {}

        Column {
            id: lines

            width: view.width - Theme.medium
            spacing: Theme.tiny

            Repeater {
                model: root.titles.length
                delegate: Item {
                    id: line

                    required property int index

                    width: lines.width
                    height: Math.max(goalTitle.height, goalCount.height)
                    Accessible.role: Accessible.StaticText
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
                }
            }
        }
    }
}
