pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa

/// The columns side by side, with the menus that they share.
FocusScope {
    id: root

    required property BoardController board

    signal renameRequested(columnID: string, title: string)

    function showTodoMenu(todoID: string, columnID: string, row: Item, position: point): void {
        todoMenu.todoID = todoID;
        todoMenu.columnID = columnID;
        todoMenu.isPrepared = true;
        todoMenu.popup(row, position.x, position.y);
    }

    function showSelection(): void {
        if (root.board.selectedColumn === -1)
            columns.positionViewAtBeginning();
        else if (root.board.selectedColumn >= 0)
            columns.positionViewAtIndex(root.board.selectedColumn, ListView.Contain);
    }

    BoardDragSource {
        id: source
    }
    Connections {
        target: root.board
        function onSelectedColumnChanged(): void {
            selectionScroll.restart();
        }
    }
    // A held arrow key scrolls once, after its last step.
    Timer {
        id: selectionScroll

        interval: 45
        onTriggered: root.showSelection()
    }

    ScrollNote {
        board: root.board
        view: columns
    }
    ListView {
        id: columns

        anchors.fill: parent
        anchors.topMargin: Theme.large
        anchors.bottomMargin: Theme.large
        // With room for the column that is not of the model.
        leftMargin: Theme.huge + unified.width + spacing
        rightMargin: Theme.huge
        orientation: ListView.Horizontal
        boundsBehavior: Flickable.StopAtBounds
        spacing: Theme.large
        cacheBuffer: 2 * Theme.columnWidth
        model: root.board.columns
        Accessible.role: Accessible.Pane
        Accessible.name: root.board.copy.text(CopyKey.Board)
        T.ScrollBar.horizontal: AppScrollBar {
            parent: root
            x: Theme.huge
            y: root.height - height - Theme.tiny
            width: root.width - 2 * Theme.huge
        }

        delegate: GoalColumn {
            required property int index

            // Assistive programs read the columns in this order.
            z: index
            height: columns.height
            board: root.board
            dragSource: source
            onWindowMenuRequested: (windowID, card, position) => {
                windowMenu.windowID = windowID;
                windowMenu.columnID = columnID;
                windowMenu.popup(card, position.x, position.y);
            }
            onColumnMenuRequested: button => {
                columnMenu.columnID = columnID;
                columnMenu.columnTitle = title;
                columnMenu.popup(button, 0, button.height + Theme.tiny);
            }
            onPriorityMenuRequested: button => {
                priorityMenu.columnID = columnID;
                priorityMenu.priority = priority;
                priorityMenu.popup(button, 0, button.height + Theme.tiny);
            }
            onTodoMenuRequested: (todoID, todoColumnID, row, position) => {
                root.showTodoMenu(todoID, todoColumnID, row, position);
            }
        }
    }

    WindowMenu {
        id: windowMenu

        board: root.board
    }
    UnifiedTodoColumn {
        id: unified

        // Before the columns also for assistive programs.
        z: -1
        parent: columns.contentItem
        x: columns.originX - width - columns.spacing
        width: Theme.columnWidth
        height: columns.height
        board: root.board
        dragSource: source
        onTodoMenuRequested: (todoID, columnID, row, position) => {
            root.showTodoMenu(todoID, columnID, row, position);
        }
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
