import QtQuick
import Kelpa.Appearance

/// The ground of a card and the rim of its shadow.
Item {
    id: root

    required property bool isRaised
    required property bool isSelected
    required property color color
    /// The rotation with which round corners are drawn: see `WindowCard`.
    required property real tilt

    anchors.fill: parent
    rotation: root.tilt

    // Only its rim is visible; blending all of it with the ground would take most of the card's
    // drawing time.
    Rectangle {
        anchors.fill: parent
        anchors.topMargin: root.isRaised ? 2 : 1
        anchors.bottomMargin: root.isRaised ? -2 : -1
        radius: Theme.cardRadius
        color: "transparent"
        border.width: 4
        border.color: root.isRaised ? Theme.raisedShadow : Theme.shadow
    }
    Rectangle {
        anchors.fill: parent
        radius: Theme.cardRadius
        color: root.color
        border.width: root.isSelected ? 1.2 : 1
        border.color: root.isSelected ? Theme.selectedCardOutline : Theme.cardOutline
    }
}
