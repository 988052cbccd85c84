pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// The title of a sheet, and what its choice means.
Column {
    id: root

    required property string title
    property string explanation

    spacing: Theme.small

    AppText {
        width: parent.width
        text: root.title
        font: Theme.heading
        Accessible.ignored: !visible
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    AppText {
        width: parent.width
        text: root.explanation
        color: Theme.secondaryText
        wrapMode: Text.Wrap
        visible: root.explanation.length > 0
        Accessible.ignored: !visible
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
