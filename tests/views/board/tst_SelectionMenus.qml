import QtQuick
import QtTest
import Kelpa.Todos
import Kelpa.Windows
import Kelpa.Board
import "../cases"

/// The menu of whatever the arrow keys have selected.
Item {
    id: root

    width: 1100
    height: 700

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }

    BoardCase {
        name: "SelectionMenus"
        goalBoard: board

        function holder() {
            return root.Window.activeFocusItem;
        }
        function card(title) {
            return only(all(board, item => item instanceof WindowCard && item.visible
                                           && item.title === title));
        }
        function initTestCase() {
            world.board.goals.createGoal("First");
            world.board.goals.createGoal("Second");
            world.addWindow(7, "Report");
            world.addWindow(8, "Letter");
            world.board.windows.moveWindow(8, world.columnOfGoal("First"));
            tryVerify(() => card("Report") !== null && card("Letter") !== null);
        }
        function init() {
            world.clearSelection();
            root.forceActiveFocus();
            tryVerify(() => !isMoving());
        }

        function test_a_selected_window_has_its_menu() {
            world.board.windows.selectWindow(8);
            world.board.selectionMenuRequested();
            tryVerify(() => menuItems().some(item => item.text === "Unsorted"));
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
            tryVerify(() => holder() === card("Letter"));
        }
        function test_a_selected_goal_has_its_menu() {
            world.board.goals.goToColumn(world.columnOfGoal("Second"));
            world.board.selectionMenuRequested();
            tryVerify(() => menuItems().some(item => item.text === "Rename goal"));
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
            tryVerify(() => holder() === column("Second"));
        }
        function test_a_goal_is_worked_on_by_its_menu_or_a_key_and_back() {
            const goals = world.board.goals;
            const offers = text => menuItems().some(item => item.text === text && item.enabled);
            const openMenu = () => {
                world.board.selectionMenuRequested();
                tryVerify(() => offers("Rename goal"));
            };
            goals.goToColumn(world.columnOfGoal("Second"));
            openMenu();
            verify(!offers("Work on this goal"), "the goal has no window");
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);

            goals.goToColumn(world.columnOfGoal("First"));
            world.lack("minimizing");
            openMenu();
            verify(!menuItems().some(item => item.text === "Work on this goal"));
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
            world.lackNothing();

            openMenu();
            verify(!offers("Back"));
            choose("Work on this goal");
            tryVerify(() => menuItems().length === 0);
            verify(goals.canGoBack);
            world.lack("minimizing");
            openMenu();
            verify(!menuItems().some(item => item.text === "Back"));
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
            world.lackNothing();
            openMenu();
            choose("Back");
            tryVerify(() => menuItems().length === 0);
            verify(!goals.canGoBack);

            world.runPending();
            const before = world.calls().length;
            keyClick(Qt.Key_G, Qt.ControlModifier);
            verify(goals.canGoBack);
            keyClick(Qt.Key_G, Qt.ControlModifier | Qt.ShiftModifier);
            verify(!goals.canGoBack);
            world.runPending();
            const calls = world.calls().slice(before);
            for (const call of ["raise Letter", "minimize Report", "unminimize Report"])
                verify(calls.includes(call), call);
        }
        function test_what_has_no_menu_of_its_own_has_that_of_the_board() {
            for (const selected of [item => item instanceof UnifiedTodoColumn,
                                    item => item === column("Unsorted")]) {
                world.moveSelection(Qt.Key_Right);
                tryVerify(() => selected(holder()));
                world.board.selectionMenuRequested();
                tryVerify(() => menuItems().some(item => item.text === "New goal"));
                compare(menuItems().length, 11);
                keyClick(Qt.Key_Escape);
                tryVerify(() => menuItems().length === 0);
                tryVerify(() => selected(holder()));
            }
        }
    }
}
