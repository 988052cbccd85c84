import QtQuick
import Kelpa.Appearance

/// The ground of a card and the rim of its shadow. It reaches a little beyond the card, so that a
/// picture of it holds the shadow, too.
Item {
    id: root

    required property bool isRaised
    required property bool isSelected
    required property color color
    /// Whether it is drawn as a picture of itself.
    required property bool isPictured

    /// The space for the shadow outside the card.
    readonly property int room: 2

    anchors.fill: parent
    anchors.margins: -root.room
    layer.enabled: root.isPictured
    layer.smooth: true

    // Only its rim is visible; blending all of it with the ground would take most of the card's
    // drawing time.
    Rectangle {
        anchors.fill: parent
        anchors.margins: root.room
        anchors.topMargin: root.room + (root.isRaised ? 2 : 1)
        anchors.bottomMargin: root.room - (root.isRaised ? 2 : 1)
        radius: Theme.cardRadius
        color: "transparent"
        border.width: 4
        border.color: root.isRaised ? Theme.raisedShadow : Theme.shadow
    }
    Rectangle {
        anchors.fill: parent
        anchors.margins: root.room
        radius: Theme.cardRadius
        color: root.color
        border.width: root.isSelected ? 1.2 : 1
        border.color: root.isSelected ? Theme.selectedCardOutline : Theme.cardOutline
    }
}
