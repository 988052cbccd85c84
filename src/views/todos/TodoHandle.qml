pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// The handle of a row: a click copies the todo's title, a drag moves the todo.
IconButton {
    id: root

    required property BoardController board
    required property BoardDragSource dragSource
    required property string todoID
    required property string columnID
    /// Follows the pointer as a picture.
    required property Item picture

    readonly property bool isDragged: area.isDragged

    symbol: "menu"
    size: 28
    symbolSize: 14
    text: root.board.copy.text(CopyKey.CopyAndDragTodo)
    help: root.board.copy.text(CopyKey.CopyAndDragTodoHelp)
    onClicked: root.board.todos.copyTodo(root.todoID, root.columnID)

    DragArea {
        id: area

        anchors.fill: parent
        dragSource: root.dragSource
        picture: root.picture
        isHeldBeside: true
        text: root.board.todos.dragText(root.todoID, root.columnID)
        cursorShape: Qt.OpenHandCursor
        onClicked: if (!area.isLeaving)
            root.clicked()
    }
}
