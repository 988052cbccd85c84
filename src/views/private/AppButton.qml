pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa

/// A button with a text and, if wanted, a symbol before it.
T.Button {
    id: root

    property string symbol
    property bool isPrimary: false
    property string help

    readonly property color foreground: root.isPrimary ? Theme.textOnAccent : Theme.text

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.controlHeight
    leftPadding: root.symbol.length > 0 ? 10 : 14
    rightPadding: 14
    font: Theme.body
    focusPolicy: Qt.StrongFocus
    opacity: root.enabled ? 1 : 0.45
    Accessible.name: root.text
    Accessible.ignored: !root.visible
    Accessible.description: root.help
    Accessible.onPressAction: if (root.enabled)
        root.clicked()
    onPressed: tip.dismiss()
    // A key that is held presses the button once.
    Keys.onReturnPressed: event => {
        if (!event.isAutoRepeat)
            root.clicked();
    }
    Keys.onEnterPressed: event => {
        if (!event.isAutoRepeat)
            root.clicked();
    }
    Keys.onReleased: event => event.accepted = event.isAutoRepeat

    contentItem: SymbolLabel {
        symbol: root.symbol
        text: root.text
        font: root.isPrimary ? Theme.bodyStrong : Theme.body
        color: root.foreground
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: root.isPrimary ? (root.hovered && root.enabled ? Theme.accentHover : Theme.accent)
                              : Theme.field
        border.width: root.isPrimary ? 0 : 1
        border.color: Theme.outline

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: root.down ? Theme.press : Theme.hover
            visible: root.down || (root.hovered && !root.isPrimary)
        }
        // What is switched on stands out.
        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: Theme.accepting
            visible: root.checked
        }
    }

    FocusRing {
        control: root
        isShown: root.visualFocus
    }
    HoverTip {
        id: tip

        text: root.help
        isHovered: root.hovered
    }
}
