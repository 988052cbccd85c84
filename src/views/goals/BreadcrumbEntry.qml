pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Goals

/// The entry of a goal in the rail. What lies beside it, its dot, is within the margin of the rail.
PressButton {
    id: root

    required property GoalController goals
    required property DropController drops
    required property BoardDragSource dragSource
    /// The list that the entry belongs to.
    required property ListView list
    required property string columnID
    required property string title
    required property string accent
    required property bool isSelected
    required property int index

    /// How far down the rail the entry is, from 0 to 1: the rail's colour there is its ground.
    readonly property real depth: Math.max(0, Math.min(1, (root.y - root.list.contentY)
                                                          / root.list.height))
    readonly property bool isDraggedOver: root.dropArea !== null && root.dropArea.containsDrag
    readonly property bool wouldReceive: root.dropArea !== null && root.dropArea.wouldReceive
    /// Points; what the whole title needs.
    readonly property alias titleWidth: entryTitle.implicitWidth
    /// Only a selected title moves, and fades into its ground.
    readonly property color ground: root.isSelected
            ? Qt.tint(Qt.tint(Theme.railTop, Qt.alpha(Theme.railBottom, root.depth)), Theme.accepting)
            : "transparent"

    // A pooled entry, which will be reused for another goal, is not reached by the Tab key.
    property bool isPooled: false
    /// Null until the first frame is shown.
    property ColumnDropArea dropArea: null

    ListView.onPooled: root.isPooled = true
    ListView.onReused: root.isPooled = false
    visible: !root.isPooled
    z: root.index
    x: 12
    width: root.list.width - root.x
    height: 18 + Theme.captionGrowth
    text: root.title
    opacity: root.isSelected || root.hovered || root.wouldReceive ? 1 : Theme.restingOpacity
    Accessible.role: Accessible.ListItem
    Accessible.selectable: true
    Accessible.selected: root.isSelected
    onClicked: root.goals.showColumn(root.columnID)
    onActiveFocusChanged: if (root.activeFocus)
        root.list.positionViewAtIndex(root.index, ListView.Contain)

    background: Rectangle {
        radius: 7
        color: root.down ? Theme.press
               : root.isSelected || root.wouldReceive ? Theme.accepting
               : root.hovered ? Theme.hover : "transparent"
        border.width: root.wouldReceive ? 2 : 0
        border.color: Theme.focus
    }
    Rectangle {
        x: -9
        anchors.verticalCenter: parent.verticalCenter
        width: 6
        height: 6
        radius: 3
        color: Theme.accentColor(root.accent)
        border.width: 1
        border.color: Theme.accentEdge(root.accent)
    }
    MarqueeGoalTitle {
        id: entryTitle

        // Unlike anchors, it gives the text its width before it is laid out.
        x: 3
        width: root.width - 2 * x
        height: root.height
        text: root.title
        isEmphasized: root.isSelected
        ground: root.ground
        isAllowedToMove: root.isSelected
        isOnScreen: root.y < root.list.contentY + root.list.height
                    && root.y + root.height > root.list.contentY
    }
    // The first frame has nothing of that.
    OptionalItem {
        isWanted: !ViewSettings.isStarting

        Item {
            anchors.fill: root

            // Reaches to the next entry's drop area, so that no gap is left.
            ColumnDropArea {
                id: entryDrop

                anchors.fill: parent
                anchors.topMargin: -root.list.spacing / 2
                anchors.bottomMargin: -root.list.spacing / 2
                drops: root.drops
                dragSource: root.dragSource
                columnID: root.columnID
                isSmall: true
                Component.onCompleted: root.dropArea = entryDrop
            }
            OptionalItem {
                isWanted: entryDrop.wouldInsertBefore

                DropLine {
                    y: -(root.list.spacing + height) / 2
                    width: root.width
                }
            }
            FocusRing {
                radius: 7
                margin: 0
                isShown: root.visualFocus
            }
            HoverTip {
                text: root.title
                isHovered: root.hovered && entryTitle.isPartlySeen
            }
        }
    }
}
