pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance

/// An item of a menu with a symbol before its text. A sign at its end shows that it opens another
/// menu. The chosen one of several has a mark before its text, in place of a symbol or before it.
T.MenuItem {
    id: root

    property string symbol
    property color symbolColor: Theme.secondaryText
    property color foreground: Theme.text
    /// The keys that do the same; empty for none.
    property string keys
    /// Whether it is one of several alternatives, and whether it is the chosen one.
    property bool isChoice: false
    property bool isChosen: false
    /// Whether it has a symbol of its own, before which the mark is placed.
    property bool hasMarkPlace: false
    /// Why choosing it has no other effect than that this is said; empty where it has its effect.
    property string hindrance
    /// Whether the menu has it at the moment.
    property bool isOffered: true

    readonly property bool isOpener: root.subMenu !== null

    // What the menu does not have makes it no wider.
    implicitWidth: !root.isOffered ? 0
                   : implicitContentWidth + leftPadding + rightPadding
                     + (root.keys.length > 0 ? keysMetrics.advanceWidth + Theme.huge : 0)
    implicitHeight: root.isOffered ? 30 + Theme.bodyGrowth : 0
    visible: root.isOffered
    leftPadding: root.hasMarkPlace ? 34 : 10
    rightPadding: root.isOpener ? 36 : 14
    font: Theme.body
    focusPolicy: root.enabled ? Qt.StrongFocus : Qt.NoFocus
    opacity: root.enabled && root.hindrance.length === 0 ? 1 : 0.45
    Accessible.name: root.text
    Accessible.description: root.hindrance
    // The toolkit has no other property for an item that cannot be pressed now.
    Accessible.focusable: root.enabled
    // When assistive programs connect, a button of the toolkit reports its own check mark, which is
    // never set: these are reported again whenever the item shows.
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

    TextMetrics {
        id: keysMetrics

        font: Theme.caption
        text: root.keys
    }
    // Most items have none.
    Repeater {
        model: root.keys.length > 0 ? 1 : 0
        delegate: AppText {
            anchors.right: root.right
            anchors.rightMargin: 14
            anchors.verticalCenter: root.verticalCenter
            text: root.keys
            font: Theme.caption
            color: Theme.secondaryText
        }
    }
    AppIcon {
        x: root.isOpener ? root.width - width - 10 : 10
        anchors.verticalCenter: parent.verticalCenter
        name: root.isOpener ? "chevron-right" : "check"
        size: root.isOpener ? 14 : Theme.symbolSize
        visible: root.isOpener || (root.hasMarkPlace && root.isChosen)
    }
}
