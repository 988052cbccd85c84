pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// A button with a text and, if wanted, a symbol before it.
PressButton {
    id: root

    property string symbol
    property bool isPrimary: false
    property string help
    /// Looks switched on. This is not the toolkit's `checked`: the text says what a press would do,
    /// so assistive programs must not report the button as checked.
    property bool isOn: false
    /// Points; the minimum width of the text, so that the neighbours stay in place when it changes.
    property real minimumTextWidth: 0
    /// Shows only its symbol, where there is no room for its text.
    property bool isCompact: false

    readonly property real textWidth: (root.contentItem as SymbolLabel)?.textWidth ?? 0
    readonly property real slack: Math.max(0, root.minimumTextWidth - root.textWidth)
    /// The width of the button with its text.
    readonly property real fullWidth: root.implicitContentWidth + root.slack + 14
                                      + (root.symbol.length > 0 ? 10 : 14)
    readonly property color foreground: root.isPrimary ? Theme.textOnAccent : Theme.text

    implicitWidth: root.isCompact ? Theme.controlHeight : root.fullWidth
    implicitHeight: Theme.controlHeight
    leftPadding: root.isCompact ? (Theme.controlHeight - Theme.symbolSize) / 2
                                : (root.symbol.length > 0 ? 10 : 14) + Math.floor(root.slack / 2)
    rightPadding: root.isCompact ? 0 : 14
    font: Theme.body
    opacity: root.enabled ? 1 : 0.45
    Accessible.description: root.help

    contentItem: SymbolLabel {
        isTextShown: !root.isCompact
        symbol: root.symbol
        text: root.text
        font: root.isPrimary ? Theme.bodyStrong : Theme.body
        color: root.foreground
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: !root.isPrimary ? Theme.field : root.down ? Theme.accentPress
               : root.hovered && root.enabled ? Theme.accentHover : Theme.accent
        border.width: root.isPrimary ? 0 : Math.floor(Screen.devicePixelRatio) / Screen.devicePixelRatio
        border.color: Theme.outline

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: root.down ? Theme.press : Theme.hover
            visible: !root.isPrimary && (root.down || root.hovered)
        }
        // Highlights a button that is switched on.
        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: Theme.accepting
            visible: root.isOn
        }
    }

    FocusRing {
        // Keeps a distance from a ground of its own colour.
        margin: root.isPrimary ? 4 : 2
    }
    HoverTip {
        text: root.help.length > 0 || !root.isCompact ? root.help : root.text
    }
}
