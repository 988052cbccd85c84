pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls

/// Replaces the picture of what is dragged over a place that would take it: names the place, and hangs
/// beside the pointer, so that it does not cover it. It has no shadow: it is drawn anew at each move.
Rectangle {
    id: root

    required property BoardDragSource dragSource

    /// Right below the pointer, or above it where there is no room; within the parent.
    function placeBeside(pointer: point): point {
        const below = pointer.y + Theme.huge;
        const fits = below + root.height <= root.parent.height;
        return Qt.point(Math.max(Theme.tiny, Math.min(pointer.x + Theme.medium,
                                                      root.parent.width - root.width - Theme.tiny)),
                        fits ? below : pointer.y - Theme.large - root.height);
    }
    function follow(): void {
        if (!root.visible)
            return;
        const place = root.placeBeside(root.parent.mapFromItem(null, root.dragSource.pointer));
        root.x = place.x;
        root.y = place.y;
    }

    width: Math.min(label.implicitWidth, Theme.grown(280)) + 2 * Theme.medium
    height: Theme.controlHeight
    radius: Theme.controlRadius
    color: Theme.accent
    visible: root.dragSource.isDragging && root.dragSource.destination.length > 0
    Accessible.role: Accessible.StaticText
    Accessible.ignored: !visible
    Accessible.name: root.dragSource.destination
    onVisibleChanged: root.follow()
    onWidthChanged: root.follow()

    Connections {
        target: root.dragSource

        function onPointerChanged(): void {
            root.follow();
        }
    }
    AppText {
        id: label

        anchors.fill: parent
        anchors.leftMargin: Theme.medium
        anchors.rightMargin: Theme.medium
        verticalAlignment: Text.AlignVCenter
        text: root.dragSource.destination
        font: Theme.bodyStrong
        color: Theme.textOnAccent
    }
}
