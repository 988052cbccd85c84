pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa

/// An item of a menu with a symbol before its text. A sign at its end shows the menu that it opens,
/// or that it is the chosen one of several.
T.MenuItem {
    id: root

    property string symbol
    property color symbolColor: Theme.secondaryText
    property color foreground: Theme.text
    /// Whether it is one of several of which one is chosen, and whether it is that one.
    property bool isChoice: false
    property bool isChosen: false

    readonly property string endSymbol: root.subMenu !== null ? "chevron-right"
                                      : root.isChosen && root.symbol !== "check" ? "check" : ""

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: 30
    leftPadding: 10
    rightPadding: root.endSymbol.length > 0 ? 36 : 14
    font: Theme.body
    focusPolicy: root.enabled ? Qt.StrongFocus : Qt.NoFocus
    opacity: root.enabled ? 1 : 0.45
    Accessible.name: root.text
    // The toolkit has no other word for one that cannot be pressed now.
    Accessible.focusable: root.enabled
    // A button tells assistive programs of its own check mark, which it has none of, once they come:
    // these are told anew whenever the item shows.
    Accessible.checkable: root.isChoice && root.visible
    Accessible.checked: root.isChosen && root.visible
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
        color: root.down ? Theme.press : root.highlighted ? Theme.accepting : "transparent"
    }

    AppIcon {
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        name: root.endSymbol
        size: 14
        visible: root.endSymbol.length > 0
    }
}
