pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Goals

/// The items of a menu for the columns to which something can be moved, in the order of the board.
/// A board may have many goals: nothing is created before the menu is first opened, and the created
/// items follow the board.
Instantiator {
    id: root

    required property GoalController goals
    required property T.Menu menu
    /// The number of items in the menu before these.
    property int place: 0

    // The Instantiator reports insertions and removals, but not moves.
    readonly property Connections moves: Connections {
        target: root.model
        enabled: root.active

        function onRowsMoved(parent, first: int, last: int, destination, row: int): void {
            // The model reports the place before the row was removed, the menu expects the one
            // after.
            root.menu.moveItem(root.place + first, root.place + (row > first ? row - 1 : row));
        }
    }

    active: false
    model: root.goals.moveTargets
    onObjectAdded: (index, object) => root.menu.insertItem(root.place + index, object)
    onObjectRemoved: (index, object) => root.menu.removeItem(object)
}
