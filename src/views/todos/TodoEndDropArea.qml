pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Scene
import Kelpa.Todos

/// Takes todos that are dragged below the last row of their list, which they then follow. Anything
/// else goes to the column.
DropArea {
    id: root

    required property TodoController todos
    required property BoardDragSource dragSource
    required property string listID

    /// Whether something would come to stand elsewhere.
    property bool isWelcoming: false

    keys: ["text/plain"]
    onEntered: drag => {
        drag.accepted = root.dragSource.isDragging
                && root.todos.canDropAtEnd(drag.text, root.listID);
        root.isWelcoming = drag.accepted
                && root.todos.wouldDropAtEndMove(drag.text, root.listID);
    }
    onExited: root.isWelcoming = false
    onDropped: drop => {
        root.isWelcoming = false;
        drop.accepted = root.dragSource.isDragging
                && root.todos.dropAtEnd(drop.text, root.listID);
    }
}
