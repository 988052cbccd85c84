pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene

/// The card of a target: it shows the beginning of its content, more where the board has room to spare,
/// and all of it while it is selected. Content that is cut off ends in the card's round corners.
ExpandableHeight {
    id: root

    property bool isSelected: false
    /// Whether the selection is within it.
    property bool isEntered: false
    property bool isAccepting: false
    /// Whether a drop would move another goal before it.
    property bool wouldInsertBefore: false
    /// The visible part of the board, in the card's own coordinates.
    property real visibleFrom: 0
    property real visibleTo: 0
    /// A card that is about to change its height stays with its goal.
    WaterfallDelegate.isPinned: root.isExpanded || root.isResizing
    /// Whether its content changes places all the time.
    property bool isRestless: false
    WaterfallDelegate.isRestless: root.isRestless
    default property alias content: body.data
    /// Whether it is about to change its height.
    readonly property bool isResizing: root.expansionProgress !== root.finalProgress

    readonly property color ground: root.isAccepting ? Qt.tint(Theme.column, Theme.accepting)
                                                     : Theme.column

    collapsedHeight: Theme.collapsedCardHeight
    shownNaturalHeight: root.naturalHeight
    grantedHeight: root.WaterfallDelegate.grantedHeight
    expansionProgress: root.finalProgress

    Behavior on expansionProgress {
        enabled: root.isExpanded || root.WaterfallDelegate.isGrantEased

        NumberAnimation {
            duration: Theme.mediumTime
            easing.type: Easing.OutCubic
        }
    }
    Behavior on shownNaturalHeight {
        enabled: !root.isRestless

        NumberAnimation {
            duration: Theme.mediumTime
            easing.type: Easing.OutCubic
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.columnRadius
        color: root.ground
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
                color: Qt.alpha(root.ground, 0)
            }
            GradientStop {
                position: 0.8
                color: root.ground
            }
        }
    }
    // Items are clipped to rectangles only: the content outside the lower corners is painted over
    // with the ground on which all cards lie.
    Item {
        id: corners

        /// The distance by which a corner of the rectangle extends beyond the round one.
        readonly property real reach: Math.ceil(Theme.columnRadius * (Math.SQRT2 - 1))

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: -corners.reach
        height: Theme.columnRadius + corners.reach
        clip: true
        visible: root.isCut

        Rectangle {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            height: root.height + 2 * corners.reach
            radius: Theme.columnRadius + corners.reach
            color: "transparent"
            border.width: corners.reach
            border.color: Theme.window
        }
    }
    Rectangle {
        anchors.fill: parent
        radius: Theme.columnRadius
        color: "transparent"
        border.width: 2
        // The window that the arrow keys have selected is highlighted instead.
        border.color: root.isEntered && !root.isAccepting ? Theme.enteredOutline : Theme.focus
        visible: root.isAccepting || root.isSelected
    }
    // Drawn between the card and its neighbour.
    Rectangle {
        x: -(Theme.targetSpacing + width) / 2
        width: 4
        height: root.height
        radius: 2
        color: Theme.focus
        visible: root.wouldInsertBefore
    }
}
