pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Todos

/// The actions on a todo, opened from one of its rows.
AppMenu {
    id: root

    required property TodoController todos
    required property GoalController goals

    property string todoID
    property string columnID
    /// The list of the row from which the menu was opened.
    property string listID
    /// That row, which may be destroyed or reused meanwhile, and whether a key opened the menu.
    property TodoRow row: null
    property bool isByKeyboard: false
    /// Whether keys act on the row once the menu has closed.
    property bool hasKeyboard: false
    /// Whether the todo is completed, like others that can be deleted with it.
    property bool isCompleted: false

    /// For the todo of `row`; `place` is in the coordinates of `owner`.
    function ask(todoID: string, columnID: string, owner: Item, place: rect): void {
        root.todoID = todoID;
        root.columnID = columnID;
        root.listID = root.row.listID;
        root.isByKeyboard = root.row.isMenuByKeyboard;
        root.hasKeyboard = root.row.hasKeyboard;
        root.isCompleted = root.row.status === "completed";
        // Items that are added while the menu opens would close it again.
        items.active = true;
        root.openBeside(owner, place);
        root.row.isMenuOpen = true;
    }

    /// Called before an action that may remove the row: the list moves the focus on from there.
    function returnKeyboard(): void {
        if (root.isByKeyboard && root.row?.todoID === root.todoID)
            root.row.takeKeyboard();
    }

    title: ViewSettings.copy.text(CopyKey.MoreTodoActions)
    onClosed: if (root.row !== null)
        root.row.isMenuOpen = false
    onAboutToShow: {
        up.enabled = root.todos.canMoveInList(root.todoID, root.listID, -1);
        down.enabled = root.todos.canMoveInList(root.todoID, root.listID, 1);
        first.enabled = up.enabled;
        last.enabled = down.enabled;
        // One of the columns holds the todo already.
        targets.enabled = items.count > 1;
    }

    AppMenu {
        id: targets

        isWithinMenu: true
        title: ViewSettings.copy.text(CopyKey.MoveToGoal)

        MoveTargetItems {
            id: items

            goals: root.goals
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
                                               : Theme.accentEdge(item.accent)
                enabled: item.isElsewhere
                visible: item.isElsewhere
                implicitHeight: item.isElsewhere ? 30 : 0
                onTriggered: {
                    root.returnKeyboard();
                    root.todos.move(root.todoID, root.columnID, item.columnID);
                }
            }
        }
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.EditTodo)
        symbol: "pencil"
        keys: root.hasKeyboard ? ViewSettings.copy.renameKeys() : ""
        onTriggered: if (root.row?.todoID === root.todoID)
            root.row.edit(root.isByKeyboard)
    }
    AppMenuItem {
        id: up

        text: ViewSettings.copy.text(CopyKey.MoveTodoUp)
        symbol: "arrow-up"
        keys: root.hasKeyboard ? ViewSettings.copy.moveUpKeys() : ""
        onTriggered: root.todos.moveInList(root.todoID, root.listID, -1)
    }
    AppMenuItem {
        id: down

        text: ViewSettings.copy.text(CopyKey.MoveTodoDown)
        symbol: "arrow-down"
        keys: root.hasKeyboard ? ViewSettings.copy.moveDownKeys() : ""
        onTriggered: root.todos.moveInList(root.todoID, root.listID, 1)
    }
    AppMenuItem {
        id: first

        text: ViewSettings.copy.text(CopyKey.MoveToBeginning)
        symbol: "arrow-up-to-line"
        onTriggered: root.todos.moveToEndOfList(root.todoID, root.listID, -1)
    }
    AppMenuItem {
        id: last

        text: ViewSettings.copy.text(CopyKey.MoveToEnd)
        symbol: "arrow-down-to-line"
        onTriggered: root.todos.moveToEndOfList(root.todoID, root.listID, 1)
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.DeleteTodo)
        symbol: "trash-2"
        keys: root.hasKeyboard ? ViewSettings.copy.deleteTodoKeys() : ""
        symbolColor: Theme.destructive
        foreground: Theme.destructive
        onTriggered: {
            root.returnKeyboard();
            root.todos.remove(root.todoID, root.columnID);
        }
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.DeleteCompletedTodos)
        isOffered: root.isCompleted
        symbol: "list-checks"
        symbolColor: Theme.destructive
        foreground: Theme.destructive
        onTriggered: {
            root.returnKeyboard();
            root.goals.deleteCompletedTodos(root.columnID);
        }
    }
}
