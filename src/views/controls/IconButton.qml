pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// A button that shows only a symbol; its text is its accessible name and, unless it has a help of
/// its own, its tip.
PressButton {
    id: root

    required property string symbol
    property color color: Theme.secondaryText
    property int size: Theme.controlHeight
    property int symbolSize: Theme.symbolSize
    property string help
    /// What a press brings, below that; empty where it goes without saying.
    property string outcome
    /// A button that is not shown can still be reached by the keyboard and by assistive programs.
    property bool isShown: true
    /// Shows neither that the pointer is over it nor that it is pressed.
    property bool isPlain: false

    implicitWidth: root.size
    implicitHeight: root.size
    opacity: root.enabled ? 1 : 0.45
    Accessible.description: root.outcome.length > 0 ? root.help + "\n" + root.outcome : root.help

    contentItem: AppIcon {
        name: root.symbol
        size: root.symbolSize
        visible: root.isShown
        color: root.checked ? Theme.accentText : root.color
    }
    background: Rectangle {
        radius: Theme.controlRadius
        visible: root.isShown
        color: root.down && !root.isPlain ? Theme.press
               : root.hovered && !root.isPlain ? Theme.hover
               : root.checked ? Theme.accepting : "transparent"
    }

    FocusRing {}
    HoverTip {}
}
