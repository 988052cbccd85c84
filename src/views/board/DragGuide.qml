pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Board

/// Helps a drag to its end: names the place that would take what is dragged, and scrolls the board at
/// its edges, so that a card finds the goals beyond them.
Item {
    id: root

    required property BoardDragSource dragSource
    required property BoardView view

    DragScroll {
        x: root.view.x
        width: root.view.width
        height: root.height
        isActive: root.dragSource.isDragging
        onScrolled: step => root.view.scrollBy(step)
    }
    DragChip {
        dragSource: root.dragSource
    }
}
