import QtQuick
import QtQuick.Templates as T
import QtTest
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Todos
import Kelpa.Windows
import Kelpa.Board
import "../cases/Search.js" as Search

/// Every item that a key or a press can reach has a name and a kind for assistive programs, and
/// reports what it is to the code that routes keys.
Item {
    id: root

    width: 1100
    height: 700

    BoardHeader {
        id: header

        width: parent.width
        board: world.board
    }
    GoalBoard {
        id: board

        anchors.fill: parent
        anchors.topMargin: header.height
        board: world.board
    }
    TitleSheet {
        id: titleSheet

        goals: world.board.goals
        title: "Create"
        explanation: ""
        placeholder: ""
        fieldLabel: "Goal name"
        confirmLabel: "Create"
    }
    WindowSelectionSheet {
        id: windowSheet

        windows: world.board.windows
    }
    Toast {
        id: toast

        message: "Goal deleted"
        actionText: "Undo"
    }

    TestCase {
        name: "AccessibleNames"
        when: windowShown

        function initTestCase() {
            world.board.goals.createGoal("Home");
            world.board.goals.createGoal("Work");
            world.addWindow(1, "Letter");
            world.addWindow(2, "Figures");
            world.board.windows.moveWindow(1, world.columnOfGoal("Home"));
            world.board.todos.add("Write", world.columnOfGoal("Home"));
            world.board.todos.add("Collect", "kelpa-unassigned");
            tryVerify(() => columns().length === 3 && cards().length === 2 && rows().length === 4);
        }
        function cleanup() {
            for (const menu of all(item => item instanceof AppMenuItem && item.visible))
                menu.menu.dismiss();
            titleSheet.close();
            world.board.windows.picker.close();
            tryVerify(() => all(item => item instanceof AppMenuItem && item.visible).length === 0
                            && !titleSheet.visible && !windowSheet.visible);
        }

        /// Everything in the window, also in menus and sheets.
        function all(accepts) {
            let top = root as Item;
            while (top.parent !== null)
                top = top.parent;
            return Search.all(top, accepts);
        }
        function columns() {
            return all(item => item instanceof GoalColumn && item.visible);
        }
        function cards() {
            return all(item => item instanceof WindowCard && item.visible);
        }
        function rows() {
            return all(item => item instanceof TodoRow && item.visible);
        }
        function isReached(item) {
            return (item instanceof T.AbstractButton || item instanceof TextInput
                    || item instanceof FocusableItem) && item.visible;
        }
        /// The keys of the board go by these, wherever the type comes from.
        function tellsKeys(item) {
            if (item instanceof TextInput)
                return typeof item.isComposing === "boolean" && typeof item.canUndo === "boolean"
                        && typeof item.canRedo === "boolean";
            // A menu has its keys to itself.
            return typeof item.visualFocus === "boolean"
                    && (item instanceof T.MenuItem
                        || (item instanceof T.AbstractButton) === (item.isButton === true));
        }
        function nameOf(item) {
            return item.Accessible.name.trim();
        }
        /// Of what can be reached now; the names of `wanted` are among theirs.
        function verifyNames(wanted) {
            tryVerify(() => wanted.every(name => all(isReached).some(each => nameOf(each) === name)),
                      5000, wanted.join());
            for (const item of all(isReached)) {
                verify(nameOf(item).length > 0, item + " " + item.text);
                verify(tellsKeys(item), item + " " + nameOf(item));
                verify(!item.Accessible.ignored, item + " " + nameOf(item));
                // A control of the toolkit has a kind of its own.
                verify(!(item instanceof FocusableItem)
                       || item.Accessible.role !== Accessible.NoRole, item + " " + nameOf(item));
            }
        }
        function column(title) {
            return columns().find(each => each.title === title);
        }
        function button(name, around) {
            return Search.all(around, item => item instanceof T.AbstractButton && item.visible
                                              && item.Accessible.name === name)[0];
        }

        function test_the_board() {
            verifyNames(["Refresh windows", "New goal", "App 1000: Letter", "Write", "Add todo",
                         "Search windows or apps", "Add goal", "Undo", "(1)Home"]);
        }
        function test_menus_data() {
            return [{tag: "goal", opener: "More goal actions", entry: "Delete goal"},
                    {tag: "priority", opener: "Priority: P2", entry: "P0"},
                    {tag: "todo", opener: "More todo actions", entry: "Delete todo"},
                    {tag: "window", opener: "Move to goal", entry: "Unsorted"}];
        }
        function test_menus(data) {
            button(data.opener, column("Home")).clicked();
            verifyNames([data.entry]);
            for (const item of all(each => each instanceof AppMenuItem && each.visible))
                verify(item.menu.title.length > 0, item.text);
        }
        function test_the_language_menu() {
            button("Language", header).clicked();
            verifyNames(["English", "Deutsch"]);
        }
        function test_sheets() {
            titleSheet.ask("");
            verifyNames(["Goal name", "Create", "Cancel"]);
            titleSheet.close();
            world.board.goals.requestWindows(world.columnOfGoal("Home"));
            verifyNames(["Add 0 windows", "Cancel"]);
        }
        function test_what_cannot_be_pressed_is_not_gone_to() {
            titleSheet.ask("");
            tryVerify(() => titleSheet.opened);
            const create = button("Create", titleSheet.contentItem);
            verify(!create.Accessible.focusable);
            titleSheet.ask("Sail");
            verify(create.Accessible.focusable);
        }
        function test_a_todo_that_is_written() {
            rows().find(each => each.title === "Write" && !each.isUnified).edit(false);
            verifyNames(["Edit todo", "Cancel"]);
            keyClick(Qt.Key_Escape);
            tryVerify(() => all(item => item instanceof TodoField).length === 0);
            button("Add todo", column("Home")).clicked();
            tryVerify(() => all(item => item instanceof TodoField).length === 1);
            verifyNames(["Add todo", "Cancel"]);
            keyClick(Qt.Key_Escape);
            tryVerify(() => all(item => item instanceof TodoField).length === 0);
        }
    }
}
