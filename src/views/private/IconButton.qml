pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa

/// A button that shows only a symbol; its text is its accessible name and, unless it has a help of
/// its own, its tip.
T.Button {
    id: root

    required property string symbol
    property color color: Theme.secondaryText
    property int size: Theme.controlHeight
    property int symbolSize: Theme.symbolSize
    property string help
    /// One that is not to be seen is still there for the keyboard and for assistive programs.
    property bool isShown: true

    implicitWidth: root.size
    implicitHeight: root.size
    focusPolicy: Qt.StrongFocus
    opacity: root.enabled ? 1 : 0.45
    Accessible.name: root.text
    Accessible.description: root.help
    Accessible.ignored: !root.visible
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

    contentItem: Item {
        AppIcon {
            anchors.centerIn: parent
            name: root.symbol
            size: root.symbolSize
            visible: root.isShown
            color: root.checked ? Theme.accentText : root.color
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius
        visible: root.isShown
        color: root.down ? Theme.press
               : root.hovered ? Theme.hover
               : root.checked ? Theme.accepting : "transparent"
    }

    FocusRing {
        control: root
        isShown: root.visualFocus
    }
    HoverTip {
        id: tip

        text: root.help.length > 0 ? root.help : root.text
        isHovered: root.hovered
    }
}
