pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Backups
import Kelpa.Transfer

/// What a file would bring: its goals, the first of its todos, and the lines that are left out.
Item {
    id: root

    required property ImportController importing

    readonly property bool hasLeftOut: root.importing.leftOutText.length > 0
    readonly property bool hasGoals: root.importing.goalTitles.length > 0

    Column {
        id: heading

        width: parent.width
        spacing: Theme.tiny

        AppText {
            width: parent.width
            text: root.importing.fileText
            font: Theme.bodyStrong
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        AppText {
            width: parent.width
            text: root.importing.counts
            color: Theme.secondaryText
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    GoalCountList {
        id: goals

        anchors.left: parent.left
        anchors.top: heading.bottom
        anchors.topMargin: Theme.small
        anchors.bottom: leftOut.visible ? leftOut.top : parent.bottom
        anchors.bottomMargin: leftOut.visible ? Theme.small : 0
        width: Math.round((parent.width - Theme.small) * 0.45)
        visible: root.hasGoals
        label: ViewSettings.copy.text(CopyKey.Goals)
        titles: root.importing.goalTitles
        counts: root.importing.goalCounts
    }
    LineList {
        anchors.left: root.hasGoals ? goals.right : parent.left
        anchors.leftMargin: root.hasGoals ? Theme.small : 0
        anchors.right: parent.right
        anchors.top: goals.top
        anchors.bottom: goals.bottom
        visible: root.importing.firstTodos.length > 0
        label: ViewSettings.copy.text(CopyKey.FirstTodos)
        lines: root.importing.firstTodos
    }
    LineList {
        id: leftOut

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: Math.min(Theme.grown(120), 34 + Theme.captionGrowth
                         + (22 + Theme.bodyGrowth) * root.importing.leftOut.length)
        visible: root.hasLeftOut
        label: root.importing.leftOutText
        lines: root.importing.leftOut
    }
}
