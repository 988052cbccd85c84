pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// The title of a todo and, below it, where it lives, unless that is empty.
Column {
    id: root

    required property string title
    required property bool isDone
    required property string place

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
    // Most rows have none.
    Repeater {
        model: root.place.length > 0 ? 1 : 0
        delegate: AppText {
            width: root.width
            text: root.place
            font: Theme.caption
            color: Theme.secondaryText
        }
    }
}
