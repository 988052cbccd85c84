pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// The menus that all cards of the board share. They stay where they opened: cards, rows and buttons
/// move away below them, or go.
Item {
    id: root

    required property BoardController board

    signal renameRequested(columnID: string, title: string)

    function openWindowMenu(windowID: real, columnID: string, card: Item, position: point): void {
        windowMenu.ask(windowID, columnID, root, card.mapToItem(root, position));
    }
    function openTodoMenu(todoID: string, columnID: string, row: Item, position: point): void {
        todoMenu.ask(todoID, columnID, row as TodoRow, root, row.mapToItem(root, position));
    }
    function openColumnMenu(columnID: string, button: Item): void {
        columnMenu.columnID = columnID;
        columnMenu.columnTitle = root.board.goalTitle(columnID);
        root.openBelow(columnMenu, button);
    }
    function openPriorityMenu(columnID: string, priority: string, button: Item): void {
        priorityMenu.columnID = columnID;
        priorityMenu.priority = priority;
        root.openBelow(priorityMenu, button);
    }
    function openBelow(menu: AppMenu, button: Item): void {
        menu.popup(root, button.mapToItem(root, 0, button.height + Theme.tiny));
    }

    WindowMenu {
        id: windowMenu

        board: root.board
    }
    PriorityMenu {
        id: priorityMenu

        board: root.board
    }
    TodoMenu {
        id: todoMenu

        board: root.board
    }
    ColumnMenu {
        id: columnMenu

        board: root.board
        onRenameRequested: root.renameRequested(columnMenu.columnID, columnMenu.columnTitle)
    }
}
