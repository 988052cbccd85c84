pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// What can be done with a todo.
AppMenu {
    id: root

    required property BoardController board

    property string todoID
    property string columnID
    /// The list in whose row the menu opens.
    property string listID

    /// Opens it for a todo of a column, as a list shows it.
    function ask(todoID: string, columnID: string, listID: string, owner: Item,
                 position: point): void {
        root.todoID = todoID;
        root.columnID = columnID;
        root.listID = listID;
        // Items that come while the menu opens would close it again.
        items.active = true;
        root.popup(owner, position.x, position.y);
    }

    title: root.board.copy.text(CopyKey.EditTodo)
    onAboutToShow: {
        up.enabled = root.board.todos.canMoveInList(root.todoID, root.listID, -1);
        down.enabled = root.board.todos.canMoveInList(root.todoID, root.listID, 1);
    }

    AppMenu {
        id: targets

        title: root.board.copy.text(CopyKey.MoveToGoal)

        MoveTargetItems {
            id: items

            board: root.board
            menu: targets
            delegate: AppMenuItem {
                id: item

                required property string columnID
                required property string title
                required property string accent
                required property bool isUnassigned

                readonly property bool isElsewhere: item.columnID !== root.columnID

                text: item.title
                symbol: "circle"
                symbolColor: item.isUnassigned ? Theme.secondaryText
                                               : Theme.accentColor(item.accent)
                enabled: item.isElsewhere
                visible: item.isElsewhere
                implicitHeight: item.isElsewhere ? 30 : 0
                onTriggered: root.board.todos.move(root.todoID, root.columnID, item.columnID)
            }
        }
    }
    AppMenuItem {
        text: root.board.copy.text(CopyKey.DeleteTodo)
        symbol: "trash-2"
        symbolColor: Theme.destructive
        foreground: Theme.destructive
        onTriggered: root.board.todos.remove(root.todoID, root.columnID)
    }
    AppMenuSeparator {}
    AppMenuItem {
        id: up

        text: root.board.copy.text(CopyKey.MoveTodoUp)
        symbol: "arrow-up"
        onTriggered: root.board.todos.moveInList(root.todoID, root.listID, -1)
    }
    AppMenuItem {
        id: down

        text: root.board.copy.text(CopyKey.MoveTodoDown)
        symbol: "arrow-down"
        onTriggered: root.board.todos.moveInList(root.todoID, root.listID, 1)
    }
}
