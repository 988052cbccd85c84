pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// Says quietly in a goal how many windows it had that are not there, and opens the list of them.
PressButton {
    id: root

    required property int count
    /// Otherwise some were closed just now.
    required property bool areFromLastTime

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: 24 + Theme.captionGrowth
    leftPadding: Theme.tiny
    rightPadding: Theme.small
    font: Theme.caption
    text: root.areFromLastTime ? ViewSettings.copy.windowsFromLastTime(root.count)
                               : ViewSettings.copy.closedWindows(root.count)

    contentItem: SymbolLabel {
        symbol: "rotate-cw"
        symbolColor: Theme.secondaryText
        text: root.text
        font: root.font
        color: root.hovered || root.visualFocus ? Theme.text : Theme.secondaryText
    }
    background: Rectangle {
        radius: Theme.smallRadius
        color: root.down ? Theme.press : root.hovered ? Theme.hover : "transparent"
    }

    FocusRing {
        radius: Theme.smallRadius
        margin: 0
    }
}
