pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene

/// Starts a drag when a press moves further than a click may.
MouseArea {
    id: root

    required property BoardDragSource dragSource
    /// The item whose picture follows the pointer.
    required property Item picture
    required property string text
    property bool isDraggable: true
    /// Whether the picture hangs below the pointer, beside it, so that it does not cover the place
    /// between others at which it would be inserted.
    property bool isPictureBesidePointer: false

    property point pressPosition
    property bool hasPassedDragDistance: false
    /// Whether the pressed item is being dragged, or its picture is being made.
    readonly property bool isDragged: root.hasPassedDragDistance && root.pressed

    // A scrolling view below must not take the press away.
    preventStealing: root.isDraggable
    onPressed: mouse => {
        root.pressPosition = Qt.point(mouse.x, mouse.y);
        root.hasPassedDragDistance = false;
    }
    onPositionChanged: mouse => {
        const distance = Math.abs(mouse.x - root.pressPosition.x)
                       + Math.abs(mouse.y - root.pressPosition.y);
        if (!root.isDraggable || !root.pressed || root.hasPassedDragDistance || !(mouse.buttons & Qt.LeftButton)
                || distance < Application.styleHints.startDragDistance)
            return;
        root.hasPassedDragDistance = true;
        const text = root.text;
        const source = root.dragSource;
        // A picture that hangs beside the pointer is held at its edge.
        const place = root.mapToItem(root.picture, root.pressPosition);
        const held = root.isPictureBesidePointer
                ? Qt.point(-Theme.large, -Theme.large)
                : Qt.point(Math.max(0, Math.min(place.x, root.picture.width)),
                           Math.max(0, Math.min(place.y, root.picture.height)));
        // Grabs as many pixels as the screen shows.
        const ratio = root.Screen.devicePixelRatio;
        const size = Qt.size(Math.ceil(root.picture.width * ratio),
                             Math.ceil(root.picture.height * ratio));
        // By the time the picture is there, the button may have been released, and pressed again,
        // or this item may have been destroyed.
        root.picture.grabToImage(picture => {
            if (root?.isDragged)
                source.drag(text, picture.image, ratio, held);
        }, size);
    }
}
