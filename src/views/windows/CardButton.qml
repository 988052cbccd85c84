pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// A small round button in an upper corner of a card, over its picture: it shows while the card has the
/// pointer, the keyboard or the selection. A finger on a button that does not show only reveals it.
PressButton {
    id: root

    required property string symbol
    required property bool isWanted
    /// The rotation with which round corners are drawn: see `WindowCard`.
    property real tilt: 0
    /// The ground while the pointer is over the button.
    property color hoveredGround: Theme.popup
    property color hoveredColor: Theme.text

    readonly property bool isShown: root.isWanted || root.hovered || root.visualFocus
    /// Whether the press under way began while nobody saw the button.
    property bool isPressedUnseen: false

    signal activated
    signal revealed

    anchors.top: parent.top
    anchors.margins: Theme.tiny
    implicitWidth: 22
    implicitHeight: 22
    // For the shadow.
    bottomInset: -1
    opacity: 0.9
    onPressed: root.isPressedUnseen = !root.isShown
    onCanceled: root.isPressedUnseen = false
    onClicked: {
        const isUnseen = root.isPressedUnseen;
        root.isPressedUnseen = false;
        if (isUnseen)
            root.revealed();
        else
            root.activated();
    }

    contentItem: AppIcon {
        name: root.symbol
        size: 14
        visible: root.isShown
        color: root.hovered ? root.hoveredColor : Theme.text
    }
    background: Item {
        visible: root.isShown
        rotation: root.tilt

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
