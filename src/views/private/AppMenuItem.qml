pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa

/// An item of a menu with a symbol before its text.
T.MenuItem {
    id: root

    property string symbol
    property color symbolColor: Theme.secondaryText
    property color foreground: Theme.text

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: 30
    leftPadding: 10
    rightPadding: 14
    font: Theme.body
    Accessible.name: root.text
    Accessible.onPressAction: if (root.enabled)
        root.clicked()

    contentItem: SymbolLabel {
        symbol: root.symbol
        symbolColor: root.symbolColor
        text: root.text
        color: root.foreground
        spacing: 10
        isKeepingPlace: true
    }
    background: Rectangle {
        radius: Theme.smallRadius
        color: root.down ? Theme.press : root.highlighted ? Theme.hover : "transparent"
    }
}
