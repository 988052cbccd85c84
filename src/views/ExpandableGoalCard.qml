pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// The card of a target: it shows the beginning of its content and, while it is selected, all of
/// it. What stands in it keeps clear of the card's round corners by its margins.
ExpandableHeight {
    id: root

    property bool isSelected: false
    /// Whether the selection is on something within it.
    property bool isEntered: false
    property bool isAccepting: false
    /// The part of the board that is seen, in the card's own coordinates.
    property real visibleFrom: 0
    property real visibleTo: 0
    /// A card that is about to change its height stays with its goal.
    property bool isPinned: root.expansionProgress > 0
    default property alias content: body.data

    collapsedHeight: Theme.collapsedCardHeight
    shownNaturalHeight: root.naturalHeight
    expansionProgress: root.isExpanded ? 1 : 0

    Behavior on expansionProgress {
        NumberAnimation {
            duration: Theme.mediumTime
            easing.type: Easing.OutCubic
        }
    }
    Behavior on shownNaturalHeight {
        NumberAnimation {
            duration: Theme.mediumTime
            easing.type: Easing.OutCubic
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.columnRadius
        color: Theme.column
    }
    Rectangle {
        anchors.fill: parent
        radius: Theme.columnRadius
        color: Theme.accepting
        visible: root.isAccepting
    }
    Item {
        id: body

        anchors.fill: parent
        clip: root.isCut
    }
    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: Theme.fadeHeight
        radius: Theme.columnRadius
        visible: root.isCut
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Qt.alpha(Theme.column, 0)
            }
            GradientStop {
                position: 0.8
                color: Theme.column
            }
        }
    }
    Rectangle {
        anchors.fill: parent
        radius: Theme.columnRadius
        color: "transparent"
        border.width: 2
        // Where the arrow keys are is what stands out.
        border.color: root.isEntered && !root.isAccepting ? Theme.enteredOutline : Theme.focus
        visible: root.isAccepting || root.isSelected
    }
}
