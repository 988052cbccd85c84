pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Scene
import Kelpa.Todos

/// Takes todos that are dragged onto a row of their list. Anything but a todo goes to the column. A
/// todo that the row refuses must not go there: whoever drops it on a row wants to give it a place
/// among the others. It comes to stand before that of the row or, as nothing else leads to the end of
/// a list, behind it on the lower half of the last row.
DropArea {
    id: root

    required property TodoController todos
    required property BoardDragSource dragSource
    required property string listID
    required property string todoID

    property bool isTaking: false
    /// Whether it takes the todo and something would come to stand elsewhere.
    property bool isWelcoming: false
    /// Whether the row is the last one, and whether the todo would come to stand behind it.
    property bool isLast: false
    property bool isBehind: false

    function look(text: string, y: real): void {
        root.isBehind = root.isLast && y >= root.height / 2;
        root.isWelcoming = root.isBehind
                ? root.todos.wouldDropAtEndMove(text, root.listID)
                : root.todos.wouldDropOnRowMove(text, root.todoID);
    }

    keys: ["text/plain"]
    onEntered: drag => {
        const isTodo = root.dragSource.isDragging && root.todos.isTodoDrag(drag.text);
        root.isTaking = isTodo
                && root.todos.canDropOnRow(drag.text, root.listID, root.todoID);
        if (root.isTaking) {
            root.isLast = !root.todos.canMoveInList(root.todoID, root.listID, 1);
            root.look(drag.text, drag.y);
        }
        if (isTodo && !root.isTaking)
            drag.accept(Qt.IgnoreAction);
        else
            drag.accepted = isTodo;
    }
    // Each move asks anew.
    onPositionChanged: drag => {
        if (!root.isTaking)
            drag.accepted = false;
        else if (root.isLast)
            root.look(drag.text, drag.y);
    }
    onExited: root.isWelcoming = false
    onDropped: drop => {
        root.isWelcoming = false;
        drop.accepted = root.dragSource.isDragging
                && (root.isBehind
                    ? root.todos.dropAtEnd(drop.text, root.listID)
                    : root.todos.dropOnRow(drop.text, root.listID, root.todoID));
    }
}
