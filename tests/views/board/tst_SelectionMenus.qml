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
        function test_what_has_no_menu_of_its_own_has_that_of_the_board() {
            for (const selected of [item => item instanceof UnifiedTodoColumn,
                                    item => item === column("Unsorted")]) {
                world.moveSelection(Qt.Key_Right);
                tryVerify(() => selected(holder()));
                world.board.selectionMenuRequested();
                tryVerify(() => menuItems().some(item => item.text === "New goal"));
                compare(menuItems().length, 6);
                keyClick(Qt.Key_Escape);
                tryVerify(() => menuItems().length === 0);
                tryVerify(() => selected(holder()));
            }
        }
    }
}
