pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Controls
import Kelpa.Goals

/// Lies below everything in a column, whose other items come first: a drop on it is one on the column
/// as a whole, and a goal can be dragged by it as by its head.
ColumnDropArea {
    id: root

    required property GoalController goals
    /// Follows the pointer as a picture.
    required property Item picture
    required property bool isDraggable

    readonly property bool isDragged: area.isDragged

    DragArea {
        id: area

        anchors.fill: parent
        dragSource: root.dragSource
        picture: root.picture
        text: root.goals.columnDragText(root.columnID)
        isDraggable: root.isDraggable
        onClicked: if (!area.hasPassedDragDistance)
            root.goals.goToColumn(root.columnID)
    }
}
