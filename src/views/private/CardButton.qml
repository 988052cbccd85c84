pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa

/// Quits the application of a card's window. Assistive programs and the keyboard always reach it.
T.Button {
    id: root

    /// Whether it is to be seen.
    required property bool isShown

    implicitWidth: 22
    implicitHeight: 22
    focusPolicy: Qt.TabFocus
    Accessible.name: root.text
    Accessible.ignored: !root.visible
    Accessible.onPressAction: root.clicked()
    onPressed: tip.dismiss()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: Item {
        AppIcon {
            anchors.centerIn: parent
            name: "x"
            size: 14
            color: root.hovered ? Theme.textOnAccent : Theme.text
            visible: root.isShown
        }
    }
    background: Item {
        opacity: 0.9
        visible: root.isShown

        Rectangle {
            anchors.fill: parent
            anchors.topMargin: 1
            anchors.bottomMargin: -1
            radius: width / 2
            color: Theme.shadow
        }
        Rectangle {
            anchors.fill: parent
            radius: width / 2
            color: root.hovered ? Theme.closing : Theme.card
            border.width: root.hovered ? 0 : 1
            border.color: Theme.outline
        }
        Rectangle {
            anchors.fill: parent
            radius: width / 2
            color: Theme.press
            visible: root.down
        }
    }

    FocusRing {
        control: root
        radius: width / 2
        isShown: root.visualFocus
    }
    HoverTip {
        id: tip

        text: root.text
        isHovered: root.hovered
    }
}
