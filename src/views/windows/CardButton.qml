pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// A small round button in an upper corner of a card; muted until the card has the pointer or the
/// keyboard.
PressButton {
    id: root

    required property string symbol
    property bool isMuted: false
    /// Whether it is drawn as a picture of itself.
    property bool isPictured: false
    /// The ground while the pointer is over the button.
    property color hoveredGround: Theme.popup
    property color hoveredColor: Theme.text

    anchors.top: parent.top
    anchors.margins: Theme.tiny
    implicitWidth: 22
    implicitHeight: 22
    // For the shadow.
    bottomInset: -1
    opacity: 0.9

    contentItem: AppIcon {
        name: root.symbol
        size: 14
        color: root.hovered ? root.hoveredColor
               : root.isMuted && !root.visualFocus ? Theme.secondaryText : Theme.text
    }
    background: Item {
        layer.enabled: root.isPictured
        layer.smooth: true

        Rectangle {
            anchors.fill: parent
            anchors.topMargin: 1
            radius: width / 2
            color: Theme.shadow
        }
        Rectangle {
            anchors.fill: parent
            anchors.bottomMargin: 1
            radius: width / 2
            color: root.hovered ? root.hoveredGround : Theme.card
            border.width: 1
            border.color: Theme.outline
        }
        Rectangle {
            anchors.fill: parent
            anchors.bottomMargin: 1
            radius: width / 2
            color: Theme.press
            visible: root.down
        }
    }

    FocusRing {
        radius: 13
    }
    HoverTip {}
}
