pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
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

    /// Whether the picture of what is dragged would cover it: then the drag names it even where a
    /// drop changes nothing.
    property bool isSmall: false
    /// Whether a drop would change the board.
    property bool wouldChangeBoard: false
    property bool isGoal: false

    function leave(): void {
        root.wouldChangeBoard = false;
        root.dragSource.leaveDestination(root);
    }

    keys: ["text/plain"]
    // Only Kelpa's own drags: reading the text of another program's would mean waiting for it.
    onEntered: drag => {
        drag.accepted = root.dragSource.isDragging && root.drops.canDrop(drag.text, root.columnID);
        root.isGoal = drag.accepted && root.drops.isGoalDrag(drag.text);
        root.wouldChangeBoard = drag.accepted && root.drops.wouldDropMove(drag.text, root.columnID);
        if (!root.wouldChangeBoard && !(drag.accepted && root.isSmall))
            return;
        const title = root.drops.columnTitle(root.columnID);
        root.dragSource.nameDestination(root, root.isGoal ? ViewSettings.copy.dropBefore(title)
                                                          : ViewSettings.copy.dropInto(title));
    }
    onExited: root.leave()
    onDropped: drop => {
        root.leave();
        drop.accepted = root.dragSource.isDragging && root.drops.drop(drop.text, root.columnID);
    }
}
