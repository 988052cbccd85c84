pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls

/// The title of a todo and, unless it is empty, that of its goal below.
Column {
    id: root

    required property string title
    required property bool isDone
    required property string goalTitle

    readonly property bool isTruncated: titleText.truncated
    readonly property real titleWidth: titleText.contentWidth

    spacing: 1

    AppText {
        id: titleText

        width: root.width
        text: root.title
        color: root.isDone ? Theme.secondaryText : Theme.text
        font: root.isDone ? Theme.bodyDone : Theme.body
    }
    // Most rows show no goal.
    OptionalItem {
        isWanted: root.goalTitle.length > 0

        AppText {
            width: root.width
            text: root.goalTitle
            font: Theme.caption
            color: Theme.secondaryText
        }
    }
}
