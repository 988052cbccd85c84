pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Scene
import Kelpa.Todos

/// Accepts todos that are dragged below the last row of their list: they move to its end. Anything
/// else is passed on to the column.
DropArea {
    id: root

    required property TodoController todos
    required property BoardDragSource dragSource
    required property string listID

    /// Whether dropping the todo here changes the order.
    property bool wouldChangeBoard: false

    keys: ["text/plain"]
    onEntered: drag => {
        drag.accepted = root.dragSource.isDragging
                && root.todos.drops.canDropAtEnd(drag.text, root.listID);
        root.wouldChangeBoard = drag.accepted
                && root.todos.drops.wouldMoveAtEnd(drag.text, root.listID);
    }
    onExited: root.wouldChangeBoard = false
    onDropped: drop => {
        root.wouldChangeBoard = false;
        drop.accepted = root.dragSource.isDragging
                && root.todos.drops.dropAtEnd(drop.text, root.listID);
    }
}
