pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Goals

/// One short entry for each visible goal: its colour, the number of its open todos, and its title. A
/// click goes to the goal, and a drop on the entry acts as a drop on its card. Under the pointer the rail
/// grows over the board, until it shows its titles.
FocusScope {
    id: root

    required property GoalController goals
    required property DropController drops
    required property BoardDragSource dragSource

    /// Points; the widest title of an entry since the rail last began to grow.
    property real widestTitle: 0
    /// The last entry that something was dragged over; null for none.
    property BreadcrumbEntry draggedOver: null

    /// Whether the pointer has been on no part of the rail since a drag, except on what has grown.
    property bool isLeftByDrag: false

    /// Whether the pointer is where the rail always is, or beside its entries: what has grown below
    /// them only covers the board.
    readonly property bool isPointedAt: hover.point.position.x < Theme.railWidth
            || hover.point.position.y < entries.y + entries.contentHeight + Theme.tiny

    readonly property bool isWanted: (hover.hovered && root.isPointedAt && !root.isLeftByDrag)
                                     || (root.dragSource.isDragging
                                         && (root.draggedOver?.isDraggedOver ?? false))
    /// Points between the rail and a title in it, on both sides.
    readonly property real titleMargins: 28 + 6
    readonly property real greatestWidth: Theme.grown(240)

    function measure(): void {
        let widest = 0;
        const items = entries.contentItem.children;
        for (let i = 0; i < items.length; ++i) {
            const entry = items[i] as BreadcrumbEntry;
            if (entry !== null && !entry.isPooled)
                widest = Math.max(widest, entry.titleWidth);
        }
        root.widestTitle = widest;
    }

    function notePointer(): void {
        if (!hover.hovered || hover.point.position.x < Theme.railWidth)
            root.isLeftByDrag = false;
    }

    // Not while it is grown, which would take titles from under the pointer.
    onIsWantedChanged: if (root.isWanted)
        root.measure()
    implicitWidth: root.isWanted
                   ? Math.max(Theme.railWidth, Math.min(root.greatestWidth,
                                                        root.widestTitle + root.titleMargins))
                   : Theme.railWidth
    Accessible.role: Accessible.List
    Accessible.name: ViewSettings.copy.text(CopyKey.Goals)

    Behavior on implicitWidth {
        NumberAnimation {
            duration: Theme.shortTime
            easing.type: Easing.OutCubic
        }
    }

    HoverHandler {
        id: hover

        blocking: true
        onHoveredChanged: root.notePointer()
        onPointChanged: root.notePointer()
    }
    Connections {
        target: root.dragSource

        function onIsDraggingChanged(): void {
            root.isLeftByDrag = !root.dragSource.isDragging;
        }
    }
    // Cards that the rail covers take no presses and no wheel through it.
    MouseArea {
        anchors.fill: parent
        enabled: root.width > Theme.railWidth
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }
    SmoothGradient {
        anchors.fill: parent
        radius: Theme.columnRadius
        topColor: Theme.railTop
        bottomColor: Theme.railBottom
    }
    Rectangle {
        anchors.fill: parent
        radius: Theme.columnRadius
        color: "transparent"
        border.width: 1
        border.color: Theme.fieldOutline
        visible: root.width > Theme.railWidth
    }
    ReadingOrder {
        container: entries.contentItem
    }
    ListView {
        id: entries

        anchors.fill: parent
        anchors.margins: 14
        // For the dots beside the entries.
        anchors.leftMargin: 2
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        spacing: Theme.tiny
        currentIndex: -1
        keyNavigationEnabled: false
        reuseItems: true
        // Extends beyond the visible part, so that the Tab key finds the next entries.
        cacheBuffer: ViewSettings.isStarting ? 0 : 100
        model: root.goals.breadcrumbs
        T.ScrollBar.vertical: AppScrollBar {
            parent: root
            x: root.width - width - 2
            y: entries.y
            height: entries.height
        }

        delegate: BreadcrumbEntry {
            id: entry

            goals: root.goals
            drops: root.drops
            dragSource: root.dragSource
            list: entries
            onTitleWidthChanged: root.widestTitle = Math.max(root.widestTitle, entry.titleWidth)
            Component.onCompleted: root.widestTitle = Math.max(root.widestTitle, entry.titleWidth)
            onIsDraggedOverChanged: if (entry.isDraggedOver)
                root.draggedOver = entry
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
