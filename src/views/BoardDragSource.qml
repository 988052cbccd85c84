pragma ComponentBehavior: Bound

import QtQuick

/// The one item from which every drag of the board goes out. Cards and headers come and go with
/// the desktop's windows, also during a drag; this one stays.
Item {
    id: root

    readonly property bool isDragging: Drag.active

    Drag.dragType: Drag.Automatic
    Drag.supportedActions: Qt.MoveAction
    Drag.proposedAction: Qt.MoveAction

    /// Drags `text` under a picture of it; `hotSpot` is where in the picture the pointer holds it.
    /// Returns when the drag has ended.
    function drag(text: string, picture: url, hotSpot: point): void {
        root.Drag.mimeData = {
            "text/plain": text
        };
        root.Drag.imageSource = picture;
        root.Drag.hotSpot = hotSpot;
        root.Drag.active = true;
        root.Drag.active = false;
    }
}
