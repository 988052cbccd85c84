pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Todos

/// The handle of a row: a click copies the todo's title, a drag moves the todo.
IconButton {
    id: root

    required property TodoController todos
    required property BoardDragSource dragSource
    required property string todoID
    required property string columnID
    /// Follows the pointer as a picture.
    required property Item picture

    readonly property bool isDragged: area.isDragged

    symbol: "menu"
    size: Theme.todoButtonSize
    symbolSize: Theme.smallSymbolSize
    text: ViewSettings.copy.text(CopyKey.CopyAndDragTodo)
    help: ViewSettings.copy.text(CopyKey.CopyAndDragTodoHelp)
    onClicked: root.todos.copyTodo(root.todoID, root.columnID)

    DragArea {
        id: area

        anchors.fill: parent
        dragSource: root.dragSource
        picture: root.picture
        isPictureBesidePointer: true
        text: root.todos.dragText(root.todoID, root.columnID)
        cursorShape: Qt.OpenHandCursor
        onClicked: if (!area.hasPassedDragDistance)
            root.clicked()
    }
}
