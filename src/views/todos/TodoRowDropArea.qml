pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Scene
import Kelpa.Todos

/// Accepts todos that are dragged onto a row of their list: they move before the row's todo or, on
/// the lower half of the last row, behind it, as nothing else leads to the end of a list. Anything
/// but a todo is passed on to the column.
DropArea {
    id: root

    required property TodoController todos
    required property BoardDragSource dragSource
    required property string listID
    required property string todoID

    property int answer: TodoDrops.PassOn
    /// Whether dropping the todo here changes the order.
    property bool wouldChangeBoard: false
    property bool isLastRow: false
    /// Whether the todo moves behind the row's instead of before it.
    property bool isBehind: false

    function updatePlace(text: string, y: real): void {
        root.isBehind = root.isLastRow && y >= root.height / 2;
        root.wouldChangeBoard = root.isBehind
                ? root.todos.drops.wouldMoveAtEnd(text, root.listID)
                : root.todos.drops.wouldMoveOnRow(text, root.todoID);
    }

    keys: ["text/plain"]
    onEntered: drag => {
        root.answer = !root.dragSource.isDragging ? TodoDrops.PassOn
                : root.todos.drops.answerOnRow(drag.text, root.listID, root.todoID);
        drag.accepted = root.answer === TodoDrops.Accept;
        if (root.answer === TodoDrops.Refuse)
            drag.accept(Qt.IgnoreAction);
        if (root.answer !== TodoDrops.Accept)
            return;
        root.isLastRow = !root.todos.canMoveInList(root.todoID, root.listID, 1);
        root.updatePlace(drag.text, drag.y);
    }
    // Every move is accepted by default.
    onPositionChanged: drag => {
        if (root.answer !== TodoDrops.Accept)
            drag.accepted = false;
        else if (root.isLastRow)
            root.updatePlace(drag.text, drag.y);
    }
    onExited: root.wouldChangeBoard = false
    onDropped: drop => {
        root.wouldChangeBoard = false;
        drop.accepted = root.dragSource.isDragging
                && (root.isBehind
                    ? root.todos.drops.dropAtEnd(drop.text, root.listID)
                    : root.todos.drops.dropOnRow(drop.text, root.listID, root.todoID));
    }
}
