pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// Notices presses, and makes a drag of one that moves on.
MouseArea {
    id: root

    required property BoardDragSource dragSource
    /// Its picture follows the pointer.
    required property Item picture
    required property string text

    property point pressPosition
    property bool isLeaving: false

    // A scrolling view below must not take the press away.
    preventStealing: true
    onPressed: mouse => {
        root.pressPosition = Qt.point(mouse.x, mouse.y);
        root.isLeaving = false;
    }
    onPositionChanged: mouse => {
        const distance = Math.abs(mouse.x - root.pressPosition.x)
                       + Math.abs(mouse.y - root.pressPosition.y);
        if (!root.pressed || root.isLeaving || !(mouse.buttons & Qt.LeftButton)
                || distance < Application.styleHints.startDragDistance)
            return;
        root.isLeaving = true;
        const text = root.text;
        const source = root.dragSource;
        const held = root.mapToItem(root.picture, root.pressPosition);
        // The button may have been released by the time the picture is there.
        root.picture.grabToImage(picture => {
            if (root.pressed)
                source.drag(text, picture.url, held);
        });
    }
}
