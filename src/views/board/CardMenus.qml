pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Goals
import Kelpa.Todos
import Kelpa.Windows
import Kelpa.Board

/// The menus that all cards share, and that of the board, loaded by its file on first use. Each menu
/// opens beside a place in the item that asks for it, and stays there, even when that item moves or is
/// removed.
Item {
    id: root

    required property BoardController board

    property WindowMenu windowMenu: null
    property PriorityMenu priorityMenu: null
    property TodoMenu todoMenu: null
    property ColumnMenu columnMenu: null
    property BoardMenu boardMenu: null

    function openWindowMenu(windowID: real, columnID: string, card: Item, place: rect): void {
        if (root.windowMenu === null)
            root.windowMenu = windowMenuType.createObject(root) as WindowMenu;
        root.windowMenu.ask(windowID, columnID, root, card.mapToItem(root, place));
    }
    function openTodoMenu(todoID: string, columnID: string, row: Item, place: rect): void {
        if (root.todoMenu === null)
            root.todoMenu = todoMenuType.createObject(root) as TodoMenu;
        root.todoMenu.row = row as TodoRow;
        root.todoMenu.ask(todoID, columnID, root, row.mapToItem(root, place));
    }
    /// Keys act on the goal where it is selected, or move it where it has the keyboard.
    function openColumnMenu(columnID: string, isSelected: bool, hasKeyboard: bool, button: Item): void {
        if (root.columnMenu === null)
            root.columnMenu = columnMenuType.createObject(root) as ColumnMenu;
        root.columnMenu.ask(columnID, isSelected, hasKeyboard, root, root.placeOf(button));
    }
    function openPriorityMenu(columnID: string, priority: string, button: Item): void {
        if (root.priorityMenu === null)
            root.priorityMenu = priorityMenuType.createObject(root) as PriorityMenu;
        root.priorityMenu.columnID = columnID;
        root.priorityMenu.priority = priority;
        root.priorityMenu.openBeside(root, root.placeOf(button));
    }
    function openBoardMenu(item: Item, place: rect): void {
        if (root.boardMenu === null)
            root.boardMenu = boardMenuType.createObject(root) as BoardMenu;
        root.boardMenu.openBeside(root, item.mapToItem(root, place));
    }
    function placeOf(button: Item): rect {
        return button.mapToItem(root, 0, 0, button.width, button.height);
    }

    Component {
        id: windowMenuType

        WindowMenu {
            windows: root.board.windows
            goals: root.board.goals
        }
    }
    Component {
        id: priorityMenuType

        PriorityMenu {
            goals: root.board.goals
        }
    }
    Component {
        id: todoMenuType

        TodoMenu {
            todos: root.board.todos
            goals: root.board.goals
        }
    }
    Component {
        id: boardMenuType

        BoardMenu {
            board: root.board
        }
    }
    Component {
        id: columnMenuType

        ColumnMenu {
            goals: root.board.goals
        }
    }
}
