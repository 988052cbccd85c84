pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Goals

/// One short entry for each visible goal: the number of its open todos, and its title. A click goes
/// to the goal, and a drop on the entry acts as a drop on its card.
FocusScope {
    id: root

    required property GoalController goals
    required property DropController drops
    required property BoardDragSource dragSource

    implicitWidth: Theme.railWidth
    Accessible.role: Accessible.List
    Accessible.name: ViewSettings.copy.text(CopyKey.Goals)

    Rectangle {
        anchors.fill: parent
        radius: Theme.columnRadius
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Theme.railTop
            }
            GradientStop {
                position: 1
                color: Theme.railBottom
            }
        }
    }
    ReadingOrder {
        container: entries.contentItem
    }
    ListView {
        id: entries

        anchors.fill: parent
        anchors.margins: 14
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        spacing: Theme.tiny
        currentIndex: -1
        keyNavigationEnabled: false
        reuseItems: true
        // Extends beyond the visible part, so that the Tab key finds the next entries.
        cacheBuffer: 100
        model: root.goals.breadcrumbs
        T.ScrollBar.vertical: AppScrollBar {
            parent: root
            x: root.width - width - 2
            y: entries.y
            height: entries.height
        }

        delegate: PressButton {
            id: entry

            required property string columnID
            required property string title
            required property bool isSelected
            required property int index

            /// How far down the rail the entry is, from 0 to 1: the rail's colour there is its ground.
            readonly property real depth: Math.max(0, Math.min(1, (entry.y - entries.contentY + 14)
                                                                  / root.height))
            readonly property color ground: Qt.tint(Qt.tint(Theme.railTop,
                                                            Qt.alpha(Theme.railBottom, entry.depth)),
                                                    Theme.accepting)

            // A pooled entry, which will be reused for another goal, is not reached by the Tab key.
            property bool isPooled: false

            ListView.onPooled: entry.isPooled = true
            ListView.onReused: entry.isPooled = false
            visible: !entry.isPooled
            z: index
            width: entries.width
            height: 18
            text: entry.title
            opacity: entry.isSelected || entryDrop.wouldReceive ? 1 : 0.65
            Accessible.role: Accessible.ListItem
            Accessible.selectable: true
            Accessible.selected: entry.isSelected
            onClicked: root.goals.showColumn(entry.columnID)
            onActiveFocusChanged: if (entry.activeFocus)
                entries.positionViewAtIndex(entry.index, ListView.Contain)

            background: Rectangle {
                radius: 7
                color: entry.down ? Theme.press
                       : entry.isSelected || entryDrop.wouldReceive ? Theme.accepting
                       : entry.hovered ? Theme.hover : "transparent"
                border.width: entryDrop.wouldReceive ? 2 : 0
                border.color: Theme.focus
            }
            // Reaches to the next entry's drop area, so that no gap is left.
            ColumnDropArea {
                id: entryDrop

                anchors.fill: parent
                anchors.topMargin: -entries.spacing / 2
                anchors.bottomMargin: -entries.spacing / 2
                drops: root.drops
                dragSource: root.dragSource
                columnID: entry.columnID
            }
            DropLine {
                y: -(entries.spacing + height) / 2
                width: parent.width
                visible: entryDrop.wouldInsertBefore
            }

            MarqueeGoalTitle {
                id: entryTitle

                anchors.fill: parent
                anchors.leftMargin: 5
                anchors.rightMargin: 5
                text: entry.title
                isEmphasized: entry.isSelected
                ground: entry.ground
                isAllowedToMove: entry.isSelected
                isOnScreen: entry.y < entries.contentY + entries.height
                            && entry.y + entry.height > entries.contentY
            }
            FocusRing {
                radius: 7
                margin: 0
            }
            HoverTip {
                text: entry.title
                isHovered: entry.hovered && entryTitle.isPartlySeen
            }
        }
    }
    DragScroll {
        anchors.fill: entries
        isActive: entries.contentHeight > entries.height && root.dragSource.isDragging
        reach: Theme.todoHeight
        speed: 300
        onScrolled: step => {
            const last = entries.originY + entries.contentHeight - entries.height;
            entries.contentY = Math.max(entries.originY, Math.min(entries.contentY + step, last));
        }
    }
    // Keeps the entry of the selected goal in view, wherever the selection comes from.
    Connections {
        target: root.goals

        function onSelectionChanged(): void {
            if (root.goals.selectedBreadcrumb >= 0)
                entries.positionViewAtIndex(root.goals.selectedBreadcrumb, ListView.Contain);
        }
    }
}
