pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Scene
import Kelpa.Goals

/// Accepts drops on a column, both on its card and on its entry of the rail.
DropArea {
    id: root

    required property DropController drops
    required property BoardDragSource dragSource
    required property string columnID

    /// Whether a drop would put the window or todo into the column.
    readonly property bool wouldReceive: root.wouldChangeBoard && !root.isGoal
    /// Whether a drop would move the dragged goal before the column.
    readonly property bool wouldInsertBefore: root.wouldChangeBoard && root.isGoal

    /// Whether a drop would change the board.
    property bool wouldChangeBoard: false
    property bool isGoal: false

    keys: ["text/plain"]
    // Only Kelpa's own drags: reading the text of another program's would mean waiting for it.
    onEntered: drag => {
        drag.accepted = root.dragSource.isDragging && root.drops.canDrop(drag.text, root.columnID);
        root.isGoal = drag.accepted && root.drops.isGoalDrag(drag.text);
        root.wouldChangeBoard = drag.accepted && root.drops.wouldDropMove(drag.text, root.columnID);
    }
    onExited: root.wouldChangeBoard = false
    onDropped: drop => {
        root.wouldChangeBoard = false;
        drop.accepted = root.dragSource.isDragging && root.drops.drop(drop.text, root.columnID);
    }
}
