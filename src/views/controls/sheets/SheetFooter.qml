pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// The lower end of a sheet: why nothing happened, or what is under way, above the buttons.
Column {
    id: root

    /// Empty for nothing.
    property string problem
    property string progress
    default property alias buttons: row.data

    topPadding: Theme.medium
    spacing: Theme.small

    AppText {
        width: parent.width
        text: root.problem.length > 0 ? root.problem : root.progress
        color: root.problem.length > 0 ? Theme.destructive : Theme.secondaryText
        wrapMode: Text.Wrap
        visible: text.length > 0
        Accessible.ignored: !visible
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text

        Announcement {
            text: parent.text
        }
    }
    Row {
        id: row

        anchors.right: parent.right
        spacing: Theme.small
    }
}
