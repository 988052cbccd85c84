pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// Takes todos that are dragged onto a row of their list. Anything but a todo goes to the column. A
/// todo that the row refuses must not go there: whoever drops it on a row wants to give it a place
/// among the others.
DropArea {
    id: root

    required property BoardController board
    required property BoardDragSource dragSource
    required property string listID
    required property string todoID

    property bool isTaking: false
    /// Whether it takes the todo and something would come to stand elsewhere.
    property bool isWelcoming: false

    keys: ["text/plain"]
    onEntered: drag => {
        const isTodo = root.dragSource.isDragging && root.board.todos.isTodoDrag(drag.text);
        root.isTaking = isTodo
                && root.board.todos.canDropOnRow(drag.text, root.listID, root.todoID);
        root.isWelcoming = root.isTaking
                && root.board.todos.wouldDropOnRowMove(drag.text, root.todoID);
        if (isTodo && !root.isTaking)
            drag.accept(Qt.IgnoreAction);
        else
            drag.accepted = isTodo;
    }
    // Each move asks anew.
    onPositionChanged: drag => {
        if (!root.isTaking)
            drag.accepted = false;
    }
    onExited: root.isWelcoming = false
    onDropped: drop => {
        root.isWelcoming = false;
        drop.accepted = root.dragSource.isDragging
                && root.board.todos.dropOnRow(drop.text, root.listID, root.todoID);
    }
}
